// The window's own variables: the settings its handlers read from the
// controls and menus, and the state of a run or a practice in hand. What the
// components need they own themselves.
//
// A variable nobody has written reads as 0 (an "empty" value), so everything
// starts at zero and Form_Activate sets the start-up values.
#pragma once

#include "construction/page_geometry.h"
#include "display/run_pages.h"
#include "patterns/puzzle_maker.h"

namespace quill {

// Where a run stands in its pages. Ordinary squares until its first page is
// printed; from then on each page is made from a key square, never placed,
// whose corner gives the starting numbers of the continuation squares that
// fill the page, the last of them ending it.
class PagePhase {
 public:
  bool ordinary() const { return stage_ == Stage::Ordinary; }
  bool keySquare() const { return stage_ == Stage::KeySquare; }
  bool continuation() const { return stage_ == Stage::Continuation; }
  bool lastContinuation() const { return continuation() && number_ == page::kContinuationSquares; }

  void startRun() { *this = {}; }
  void startKeySquare() {
    stage_ = Stage::KeySquare;
    number_ = 0;
  }
  // The next square: after the key square its first continuation square, and so on.
  void advance() {
    if (ordinary()) return;
    stage_ = Stage::Continuation;
    ++number_;
  }

 private:
  enum class Stage { Ordinary, KeySquare, Continuation };
  Stage stage_ = Stage::Ordinary;
  int number_ = 0;  // of the continuation square, from 1
};

struct WindowState {
  // Settings of the square and the run.
  int squareSize = 0;
  double startNumber = 0;
  double distance = 0;
  double baseStartNumber = 0;
  double firstStartNumber = 0;
  PrintChoice printChoice = PrintChoice::Squares;
  PrintChoice savedPrintChoice = PrintChoice::Squares;
  int highlightAnswers = 0;
  // blankTarget, difficultyLevel and the line choices.
  PuzzleSettings puzzle;

  // Run and practice control.
  double runTotal = 0;
  int runDone = 0;
  PagePhase pagePhase;
  int practiceActive = 0;
  int createWasDisabled = 0;
  int correctCount = 0;
  int incorrectCount = 0;

  // The pixel corner of the cell a practice click selected, where an
  // accepted number is drawn.
  int cursorX = 0, cursorY = 0;

  // Practice: blanks still empty, plus 1.
  int blanksLeft = 0;
};

}  // namespace quill
