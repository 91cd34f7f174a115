// The window-level variables every procedure and handler shares.
//
// A variable nobody has written reads as 0 (an "empty" value), so everything
// starts at zero and Form_Activate sets the start-up values. Grids are indexed
// [x][y] (column, row) from 1; index 0 exists but is not used.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "construction/page_geometry.h"
#include "construction/square.h"
#include "patterns/puzzle_maker.h"

namespace quill {

constexpr int kPageCells = 30;    // page buffers: indexes 0..29
constexpr int kKeyCells = 6;      // key square corner: indexes 0..5

using PageGrid = GridOf<kPageCells>;
using KeyGrid = GridOf<kKeyCells>;

struct WindowState {
  // Settings of the square and the run.
  int squareSize = 0;
  double startNumber = 0;
  double distance = 0;
  double baseStartNumber = 0;
  double firstStartNumber = 0;
  int printChoice = 0;  // 0 squares, 1 puzzles, 2 puzzles and answers
  int savedPrintChoice = 0;
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
  int pagePrinted = 0;
  int practiceActive = 0;
  int createWasDisabled = 0;
  int correctCount = 0;
  int incorrectCount = 0;

  // The pixel corner of the cell a practice click selected, where an
  // accepted number is drawn.
  int cursorX = 0, cursorY = 0;

  // Practice: blanks still empty, plus 1.
  int blanksLeft = 0;

  // Drawing and pages.
  page::Placement placement;  // where the next square goes
  PageGrid pagePuzzle{};
  PageGrid pageAnswers{};
  int keyColumn = 0, keyRow = 0;
  KeyGrid keyNumbers{};
  KeyGrid keyRanks{};

  // Practice cell entry.
  int prevOriginX = 0;
};

}  // namespace quill
