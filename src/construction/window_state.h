// The window-level variables every procedure and handler shares.
//
// A variable nobody has written reads as 0 (an "empty" value), so everything
// starts at zero and Form_Activate sets the start-up values. Grids are indexed
// [x][y] (column, row) from 1; index 0 exists but is not used.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "construction/run_pages.h"
#include "construction/square.h"
#include "patterns/puzzle_maker.h"

namespace quill {


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
  std::string magicTotalText;
  double sizeEntry = 0;
  double trialDivisor = 0;

  // Run and practice control.
  double runTotal = 0;
  int runDone = 0;
  int pagePhase = 0;
  int practiceActive = 0;
  int createWasDisabled = 0;
  int correctCount = 0;
  int incorrectCount = 0;

  // The pixel corner of the cell a practice click selected, where an
  // accepted number is drawn.
  int cursorX = 0, cursorY = 0;

  // Practice: blanks still empty, plus 1.
  int blanksLeft = 0;

  // Practice cell entry.
  int prevOriginX = 0;
};

}  // namespace quill
