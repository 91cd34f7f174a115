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

namespace quill {

constexpr int kMaxSquareSize = 101;
constexpr int kGridExtent = 104;  // indexes 0..103
constexpr int kPageCells = 30;    // page buffers: indexes 0..29
constexpr int kKeyCells = 6;      // key square corner: indexes 0..5
constexpr int kPatternEntries = 1001;
// The dependency queue never holds more entries than there are blanks, so it
// is sized for the largest square rather than the 10,000 of the old design.
constexpr int kQueueEntries = kMaxSquareSize * kMaxSquareSize + 2;
constexpr int kLineTypes = 24;

// A cell of the square at or above this value is blank: the unfilled marker
// during construction, and the blank markers of a puzzle (1E+200, 1E+201, ...).
constexpr double kBlankMarker = 1e200;
constexpr bool isBlank(double cell) { return cell >= kBlankMarker; }

template <int Extent>
using GridOf = std::array<std::array<double, Extent>, Extent>;
using SquareGrid = GridOf<kGridExtent>;
using PageGrid = GridOf<kPageCells>;
using KeyGrid = GridOf<kKeyCells>;
// Per line type 1..24 (index 0 unused).
using LineFlags = std::array<int, kLineTypes + 1>;

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
  int difficultyLevel = 0;  // 1 easy, 3 challenging
  double blankTarget = 0;
  int mainLinesChoice = 0;
  int allDiagonalsChoice = 0;
  int crossDiagonalChoice = 0;  // 0 off, 1 only main, 2 all
  int crossLineChoice = 0;
  int scatteredCrossDiagonalChoice = 0;
  int scatteredCrossLineChoice = 0;
  std::string magicTotalText;
  int numberChars = 0;
  std::int16_t entryMaxLength = 0;
  int cellWidth = 0;
  int visibleColumns = 0;
  int visibleRows = 0;
  double sizeEntry = 0;
  double trialDivisor = 0;

  // Run and practice control.
  int runState = 0;  // -1 abort or quit, -7 new practice square, 2 puzzle in hand
  double runTotal = 0;
  int runDone = 0;
  int pagePhase = 0;
  int pagePrinted = 0;
  int practiceActive = 0;
  int createWasDisabled = 0;
  int correctCount = 0;
  int incorrectCount = 0;

  // The square.
  SquareGrid squareNumbers{};
  SquareGrid squareRanks{};
  std::array<double, kPatternEntries> patternRank{};
  std::array<int, kPatternEntries> patternX{};
  std::array<int, kPatternEntries> patternY{};
  int cursorX = 0, cursorY = 0;
  int cellX = 0, cellY = 0;
  int prevX = 0, prevY = 0;
  int rankCounter = 0;
  int patternIndex = 0;
  int moveKind = 0, previousMoveKind = 0;
  int drawnValue = 0;
  int searchIndex = 0;

  // The puzzle maker.
  int lineType = 0;
  int lineAccepted = 0;
  int lineStep = 0;
  int reservedX = 0, reservedY = 0, reservedType = 0;
  int reservedWalkX = 0, reservedWalkY = 0;
  int reservedLineChosen = 0;  // 1 once this puzzle's reserved line is fixed
  int originX = 0, originY = 0;
  std::array<int, kQueueEntries> queueX{};
  std::array<int, kQueueEntries> queueY{};
  std::array<std::int16_t, kQueueEntries> queueType{};
  int queueCount = 0, queueHead = 0, queueScan = 0;
  int blanksLeft = 0;
  LineFlags lineUsable{};
  LineFlags lineTally{};
  LineFlags lineFailed{};
  int lineBlankTally = 0;
  int bestBlankTally = 0;
  int patternFound = 0;

  // Drawing and pages.
  page::Placement placement;  // where the next square goes
  int showAnswers = 0;
  PageGrid pagePuzzle{};
  PageGrid pageAnswers{};
  int keyColumn = 0, keyRow = 0;
  KeyGrid keyNumbers{};
  KeyGrid keyRanks{};

  // Practice cell entry.
  int prevOriginX = 0;
};

}  // namespace quill
