// The puzzle maker's procedures, for every index of blanks it is made with.
//
// Each attempt draws a cell and scores the lines through it; a line is drawn
// among the usable ones (the difficulty decides which) and kept when the
// dependency check passes. When n² attempts have gone by, a scan pass walks
// the cells in reading order from a random one and blanks the first that
// any line allows.
#pragma once

#include <algorithm>

#include "construction/page_geometry.h"
#include "patterns/puzzle_maker.h"

namespace quill {

namespace maker_detail {

template <class Flags>
bool allOne(const Flags& flags) {
  return std::all_of(flags.begin() + 1, flags.end(), [](int flag) { return flag == 1; });
}

// The work of one call: what a puzzle's making keeps from attempt to
// attempt, made afresh for every call.
template <class Blanks>
class PuzzleWork {
 public:
  PuzzleWork(const Square& grid, Square* puzzle, const PuzzleSettings* settings, FailedLines* failed,
             const PuzzleSteps& steps)
      : grid_(&grid), puzzle_(puzzle), settings_(settings), lineFailed(*failed), steps_(steps), n_(grid.n) {}

  std::optional<PuzzleMade> makePuzzle();
  bool acceptsBlank(int x, int y, int type);
  void blankKeyCell(const ReservedLine& reserved);

 private:
  // Looks along the line of `type` anchored at the cell: whether a blank is
  // already tied to it, and how many blanks it holds.
  struct LineWalk {
    bool taken = false;
    int blanks = 0;
  };

  // One step of the reserved line's walk, and of the walk of the line of
  // lineType anchored at (cellX, cellY).
  void findline1();
  void findline2();
  bool reservedLineMeets(int x, int y);
  // Walks a line from its anchor with its stepper, the anchor first and each
  // cell once, in (walkX, walkY), until `look` at a cell says stop; true then.
  template <class Step, class Look>
  bool walkFrom(int& walkX, int& walkY, Position anchor, Step step, Look look);
  LineWalk walkLine(int type);

  // The pattern families: trying to blank the cell through one of the
  // family's lines, and scoring the family's lines for the cell.
  void d1scross() { tryFamily(kFamilyFirstType[0], settings_->crossDiagonalChoice); }
  void d1scross2() { tryFamily(kFamilyFirstType[1], settings_->scatteredCrossDiagonalChoice); }
  void d1scline() { tryFamily(kFamilyFirstType[2], settings_->crossLineChoice); }
  void d1scline2() { tryFamily(kFamilyFirstType[3], settings_->scatteredCrossLineChoice); }
  void d2scross() { scoreFamily(kFamilyFirstType[0], settings_->crossDiagonalChoice); }
  void d2scross2() { scoreFamily(kFamilyFirstType[1], settings_->scatteredCrossDiagonalChoice); }
  void d2scline() { scoreFamily(kFamilyFirstType[2], settings_->crossLineChoice); }
  void d2scline2() { scoreFamily(kFamilyFirstType[3], settings_->scatteredCrossLineChoice); }
  void tryFamily(int firstType, int choice);
  void scoreFamily(int firstType, int choice);
  bool tryLine(int type);
  void scoreLine(int type, bool placed);

  // lineAccepted = 1 when blanking (cellX, cellY) through lineType keeps
  // every blank solvable. The check's own first step selects the cell it
  // tests; a scoring attempt checks its drawn line from the second step on,
  // leaving the selection where it was.
  void makeblanks();
  void checkDependencies();
  void markBlank(int type);
  bool scanPass();
  bool scanCell();
  bool scoringAttempt();
  int drawLineType();

  const Square* grid_;      // the square the maker reads
  Square* puzzle_;          // and the one it blanks, while it makes a puzzle
  const PuzzleSettings* settings_;
  FailedLines& lineFailed;  // the caller's: the pattern lines' flags outlive a puzzle
  const PuzzleSteps& steps_;
  Blanks blanks_;
  // The index is kept up to date only while a puzzle is being made; a check
  // outside reads the grid afresh.
  bool blanksLive_ = false;

  int n_ = 0;
  int cellX = 0, cellY = 0;
  int cursorX = 0, cursorY = 0;
  int rankCounter_ = 0;
  int attemptCounter = 0;
  int lineType = 0;
  int lineAccepted = 0;
  int lineStep = 0;
  int reservedX = 0, reservedY = 0, reservedType = 0;
  int reservedWalkX = 0, reservedWalkY = 0;
  int reservedLineChosen = 0;  // 1 once this puzzle's reserved line is fixed
  using LineFlags = std::array<int, kLineTypes + 1>;
  LineFlags lineUsable{};
  LineFlags lineTally{};
  int lineBlankTally = 0;
  int bestBlankTally = 0;
  int patternFound = 0;
};


// Walking a line: from its anchor, step by step on the torus, until the walk
// is back at the anchor.

template <class Blanks>
void PuzzleWork<Blanks>::findline1() {
  if (!isPattern(reservedType) || lineStep > 4) return;
  const Position next = stepAlong(reservedType, {reservedX, reservedY}, {reservedWalkX, reservedWalkY}, lineStep);
  reservedWalkX = next.x;
  reservedWalkY = next.y;
}

template <class Blanks>
void PuzzleWork<Blanks>::findline2() {
  const Position next = stepAlong(lineType, {cellX, cellY}, {cursorX, cursorY}, lineStep);
  cursorX = next.x;
  cursorY = next.y;
}

template <class Blanks>
template <class Step, class Look>
bool PuzzleWork<Blanks>::walkFrom(int& walkX, int& walkY, Position anchor, Step step, Look look) {
  walkX = anchor.x;
  walkY = anchor.y;
  lineStep = 0;
  do {
    if (look(walkX, walkY)) return true;
    step();
    ++lineStep;
    walkX = wrap(walkX, n_);
    walkY = wrap(walkY, n_);
  } while (walkX != anchor.x || walkY != anchor.y);
  return false;
}

template <class Blanks>
typename PuzzleWork<Blanks>::LineWalk PuzzleWork<Blanks>::walkLine(int type) {
  if (isStraight(type)) {
    // The n cells of a straight line are known by their blanks.
    const auto survey = blanks_.survey(type, cellX, cellY);
    return {survey.taken, survey.blanks};
  }
  const SquareGrid& numbers = grid_->squareNumbers;
  LineWalk walk;
  lineType = type;
  walk.taken = walkFrom(cursorX, cursorY, {cellX, cellY}, [this] { findline2(); }, [&](int x, int y) {
    const double cell = numbers[x][y];
    if (cell == kLineMarker[type]) return true;  // taken: the walk stops here
    if (isBlank(cell)) ++walk.blanks;
    return false;
  });
  return walk;
}

template <class Blanks>
bool PuzzleWork<Blanks>::reservedLineMeets(int x, int y) {
  if (isStraight(reservedType)) {
    return straightLineNumber(reservedType, reservedX, reservedY, n_) == straightLineNumber(reservedType, x, y, n_);
  }
  return walkFrom(reservedWalkX, reservedWalkY, {reservedX, reservedY}, [this] { findline1(); },
                  [&](int walkX, int walkY) { return walkX == x && walkY == y; });
}

// The four pattern families, each with a trying procedure (blank the cell
// through the first of the family's lines that is free and keeps the blanks
// free of cycles) and a scoring procedure.

template <class Blanks>
void PuzzleWork<Blanks>::tryFamily(int firstType, int choice) {
  for (int type = firstType; type < firstType + kFamilySize; ++type) {
    if (choice != family::all && !insidePlacement(type, cellX, cellY, n_)) continue;
    if (tryLine(type)) {
      patternFound = 1;
      return;
    }
  }
}

template <class Blanks>
void PuzzleWork<Blanks>::scoreFamily(int firstType, int choice) {
  for (int type = firstType; type < firstType + kFamilySize; ++type) {
    scoreLine(type, choice == family::all || insidePlacement(type, cellX, cellY, n_));
  }
}

template <class Blanks>
bool PuzzleWork<Blanks>::tryLine(int type) {
  if (walkLine(type).taken) return false;
  lineType = type;
  makeblanks();
  if (lineAccepted != 1) return false;
  markBlank(type);
  return true;
}

// The difficulty rule rests on this scoring: a usable line's tally is its
// blank count when that count was the best so far, so after every line of
// the cell is scored the lines whose tally equals bestBlankTally are the
// usable ones holding the most blanks.
template <class Blanks>
void PuzzleWork<Blanks>::scoreLine(int type, bool placed) {
  if (placed) {
    const LineWalk walk = walkLine(type);
    lineBlankTally += walk.blanks;
    if (!walk.taken) lineUsable[type] = 1;
  }
  if (lineBlankTally >= bestBlankTally && lineUsable[type] == 1) {
    bestBlankTally = lineBlankTally;
    lineTally[type] = bestBlankTally;
  }
  if (lineUsable[type] != 1) lineFailed[type] = 1;
  lineBlankTally = 0;
}

template <class Blanks>
int PuzzleWork<Blanks>::drawLineType() {
  for (;;) {
    // Each enabled family widens the draw to its two kinds; the last one drawn counts.
    const PuzzleSettings& s = *settings_;
    int kind = steps_.randomWhole(4);
    if (s.crossDiagonalChoice != family::off) kind = steps_.randomWhole(6);
    if (s.scatteredCrossDiagonalChoice != family::off) kind = steps_.randomWhole(8);
    if (s.crossLineChoice != family::off) kind = steps_.randomWhole(10);
    if (s.scatteredCrossLineChoice != family::off) kind = steps_.randomWhole(12);
    const int type = kind <= 4 ? kind : kFamilyFirstType[(kind - 5) / 2] + steps_.randomWhole(kFamilySize) - 1;
    const bool mostBlanks = lineTally[type] == bestBlankTally;
    if (lineUsable[type] == 1 && (mostBlanks || s.difficultyLevel == Difficulty::Easy)) return type;
  }
}

// The new blank would wait on the blanks of its line, on those of their
// lines, and so on; it may not wait on itself.
template <class Blanks>
void PuzzleWork<Blanks>::makeblanks() {
  if (steps_.checkingCell) steps_.checkingCell(cellX, cellY);
  checkDependencies();
}

template <class Blanks>
void PuzzleWork<Blanks>::checkDependencies() {
  if (!blanksLive_) blanks_.rebuild(grid_->squareNumbers, n_, false);
  lineAccepted = blanks_.closesCycle(cellX, cellY, lineType) ? 0 : 1;
}

template <class Blanks>
bool PuzzleWork<Blanks>::acceptsBlank(int x, int y, int type) {
  cellX = x;
  cellY = y;
  lineType = type;
  makeblanks();
  return lineAccepted == 1;
}

template <class Blanks>
void PuzzleWork<Blanks>::markBlank(int type) {
  puzzle_->squareNumbers[cellX][cellY] = kLineMarker[type];
  if (blanksLive_) blanks_.mark(cellX, cellY, type);
}

template <class Blanks>
std::optional<PuzzleMade> PuzzleWork<Blanks>::makePuzzle() {
  const int n = n_;
  for (int type = 1; type <= 4; ++type) lineFailed[type] = 0;
  blanks_.rebuild(puzzle_->squareNumbers, n, true);
  blanksLive_ = true;

  for (;;) {
    if (!steps_.yieldGoesOn()) return std::nullopt;
    if (++attemptCounter > n * n) {
      attemptCounter = 0;
      if (!scanPass()) break;
    } else if (!scoringAttempt()) {
      continue;
    }
    // Only an exact count ends it: a fractional target is never met, and the
    // maker then goes on until no cell takes a blank.
    if (++rankCounter_ == settings_->blankTarget + 1) break;
  }
  // The first choice reserves a line rather than making a blank; when the
  // scan pass made it instead, every choice was a blank. Either way the
  // counter ends one above the blanks, which the practice counts down.
  if (reservedLineChosen == 0) ++rankCounter_;
  PuzzleMade made{rankCounter_, std::nullopt};
  if (reservedLineChosen != 0) made.reservedLine = ReservedLine{reservedType, reservedX, reservedY};
  return made;
}

template <class Blanks>
bool PuzzleWork<Blanks>::scanPass() {
  cellX = steps_.randomWhole(n_);
  cellY = steps_.randomWhole(n_);
  const int startX = cellX, startY = cellY;
  do {
    if (scanCell()) return true;
    if (++cellX > n_) {
      cellX = 1;
      if (++cellY > n_) cellY = 1;
    }
  } while (cellX != startX || cellY != startY);
  return false;
}

template <class Blanks>
bool PuzzleWork<Blanks>::scanCell() {
  const PuzzleSettings& s = *settings_;
  const int x = cellX, y = cellY;
  if (reservedLineChosen != 0 && reservedLineMeets(x, y)) return false;
  if (isBlank(grid_->squareNumbers[x][y])) return false;
  if (s.mainLinesChoice == 1 && (tryLine(1) || tryLine(2))) return true;

  const bool onUpDiagonal = x + y == n_ + 1;
  const bool onDownDiagonal = x == y;
  const bool allDiagonals = s.allDiagonalsChoice != 0;
  if (!(s.mainLinesChoice == 1 && (onUpDiagonal || onDownDiagonal)) && !allDiagonals) return false;
  if ((onUpDiagonal || allDiagonals) && tryLine(3)) return true;
  if ((onDownDiagonal || allDiagonals) && tryLine(4)) return true;

  patternFound = 0;
  if (s.crossDiagonalChoice != family::off) d1scross();
  if (s.scatteredCrossDiagonalChoice != family::off) d1scross2();
  if (s.crossLineChoice != family::off) d1scline();
  if (s.scatteredCrossLineChoice != family::off) d1scline2();
  return patternFound == 1;
}

template <class Blanks>
bool PuzzleWork<Blanks>::scoringAttempt() {
  const PuzzleSettings& s = *settings_;
  if (maker_detail::allOne(lineFailed)) lineFailed.fill(0);
  cellX = steps_.randomWhole(n_);
  cellY = steps_.randomWhole(n_);
  if (steps_.scoringCell) steps_.scoringCell();
  lineUsable.fill(0);
  lineTally.fill(0);
  lineBlankTally = 0;
  bestBlankTally = 0;
  const int x = cellX, y = cellY;
  if (isBlank(grid_->squareNumbers[x][y])) return false;

  const bool allDiagonals = s.allDiagonalsChoice != 0;
  const bool diagonals = (s.mainLinesChoice == 1 && (x == y || x + y == n_ + 1)) || allDiagonals;
  if (s.mainLinesChoice == 1) {
    scoreLine(1, true);
    scoreLine(2, true);
  }
  if (diagonals) scoreLine(3, x + y == n_ + 1 || allDiagonals);
  if (diagonals && (x == y || allDiagonals)) scoreLine(4, true);
  if (s.crossDiagonalChoice != family::off) d2scross();
  if (s.scatteredCrossDiagonalChoice != family::off) d2scross2();
  if (s.crossLineChoice != family::off) d2scline();
  if (s.scatteredCrossLineChoice != family::off) d2scline2();
  if (std::none_of(lineUsable.begin() + 1, lineUsable.end(), [](int flag) { return flag == 1; })) return false;
  if (maker_detail::allOne(lineFailed)) return false;

  const int type = drawLineType();
  lineType = type;
  if (rankCounter_ == 0) {
    // The first choice keeps its number: its line is the one left whole.
    reservedType = type;
    reservedX = x;
    reservedY = y;
    reservedLineChosen = 1;
  } else {
    const bool onReservedLine = reservedLineChosen != 0 && reservedLineMeets(x, y);
    if (!onReservedLine) checkDependencies();
    if (onReservedLine || lineAccepted != 1) {
      lineFailed[type] = 1;
      return false;
    }
    markBlank(type);
  }
  lineFailed.fill(0);
  return true;
}

template <class Blanks>
void PuzzleWork<Blanks>::blankKeyCell(const ReservedLine& reserved) {
  // The extra blank lies on the reserved line, in the key corner; without
  // such a cell there is none.
  reservedType = reserved.reservedType;
  reservedX = reserved.reservedX;
  reservedY = reserved.reservedY;
  bool crossesCorner = false;
  for (int c = 1; c <= page::kKeyCorner && !crossesCorner; ++c) {
    for (int r = 1; r <= page::kKeyCorner && !crossesCorner; ++r) crossesCorner = reservedLineMeets(c, r);
  }
  if (!crossesCorner) return;
  do {
    cursorX = steps_.randomWhole(page::kKeyCorner);
    cursorY = steps_.randomWhole(page::kKeyCorner);
  } while (!reservedLineMeets(cursorX, cursorY));
  puzzle_->squareNumbers[cursorX][cursorY] = kLineMarker[1];
}

}  // namespace maker_detail

template <class Blanks>
std::optional<PuzzleMade> makePuzzleOver(Square& square, const PuzzleSettings& settings, FailedLines& failed,
                                         const PuzzleSteps& steps) {
  return maker_detail::PuzzleWork<Blanks>(square, &square, &settings, &failed, steps).makePuzzle();
}

template <class Blanks>
bool acceptsBlankOver(const Square& square, int x, int y, int type) {
  FailedLines failed{};
  const PuzzleSteps none;
  return maker_detail::PuzzleWork<Blanks>(square, nullptr, nullptr, &failed, none).acceptsBlank(x, y, type);
}

}  // namespace quill
