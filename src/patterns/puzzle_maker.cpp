// The puzzle maker: blanks cells of a finished square so that every blank can
// be worked out through a line of its own, with no blank waiting on itself
// through others, and one whole line, the reserved line, kept free.
//
// Each attempt draws a cell and scores the lines through it; a line is drawn
// among the usable ones ("Challenging": only those already holding the most
// blanks) and kept when the dependency check passes. When n² attempts have
// gone by, a scan pass walks the cells in reading order from a random one and
// blanks the first that any line allows.
#include <algorithm>

#include "main_window.h"
#include "patterns/line_types.h"

namespace quill {

namespace {

bool allFailed(const LineFlags& failed) {
  return std::all_of(failed.begin() + 1, failed.end(), [](int flag) { return flag == 1; });
}

// The maker's knowledge of the blanks is kept up to date only while it runs.
struct LiveWhileMaking {
  bool& live;
  ~LiveWhileMaking() { live = false; }
};

}  // namespace

int MainWindow::randomWhole(int count) { return static_cast<int>(platform_.random() * count) + 1; }

void MainWindow::markBlank(int type) {
  squareNumbers[cellX][cellY] = kLineMarker[type];
  if (blanksLive_) blanks_.mark(cellX, cellY, type);
}

PuzzleBlanks& MainWindow::currentBlanks() {
  if (!blanksLive_) blanks_.rebuild(squareNumbers, squareSize, false);
  return blanks_;
}

// The new blank would wait on the blanks of its line, on those of their
// lines, and so on; it may not wait on itself.
void MainWindow::makeblanks() {
  originX = cellX;
  originY = cellY;
  lineAccepted = currentBlanks().closesCycle(cellX, cellY, lineType) ? 0 : 1;
}

void MainWindow::checkChosenLine() { MainWindow::makeblanks(); }

void MainWindow::makePuzzle() {
  const int n = squareSize;
  showAnswers = 0;
  for (int type = 1; type <= 4; ++type) lineFailed[type] = 0;
  rankCounter = 0;
  blanksLeft = 0;  // counts the attempts
  reservedLineChosen = 0;
  blanks_.rebuild(squareNumbers, n, true);
  blanksLive_ = true;
  const LiveWhileMaking live{blanksLive_};

  for (;;) {
    yieldToUser();
    if (++blanksLeft > n * n) {
      blanksLeft = 0;
      if (!scanPass()) break;
    } else if (!scoringAttempt()) {
      continue;
    }
    // Only an exact count ends it: a fractional target is never met, and the
    // maker then goes on until no cell takes a blank.
    if (++rankCounter == blankTarget + 1) break;
  }
  // The first choice reserves a line rather than making a blank; when the
  // scan pass made it instead, every choice was a blank. Either way the
  // counter ends one above the blanks, which the practice counts down.
  if (reservedLineChosen == 0) ++rankCounter;
  showAnswers = 0;
}

bool MainWindow::scanPass() {
  const int n = squareSize;
  cellX = randomWhole(n);
  cellY = randomWhole(n);
  prevX = cellX;
  prevY = cellY;
  do {
    if (scanCell()) return true;
    if (++cellX > n) {
      cellX = 1;
      if (++cellY > n) cellY = 1;
    }
  } while (cellX != prevX || cellY != prevY);
  return false;
}

bool MainWindow::scanCell() {
  const int n = squareSize;
  const int x = cellX, y = cellY;
  if (reservedLineChosen != 0 && reservedLineMeets(x, y)) return false;
  if (isBlank(squareNumbers[x][y])) return false;
  if (mainLinesChoice == 1 && (tryLine(1) || tryLine(2))) return true;

  const bool onUpDiagonal = x + y == n + 1;
  const bool onDownDiagonal = x == y;
  const bool allDiagonals = allDiagonalsChoice != 0;
  if (!(mainLinesChoice == 1 && (onUpDiagonal || onDownDiagonal)) && !allDiagonals) return false;
  if ((onUpDiagonal || allDiagonals) && tryLine(3)) return true;
  if ((onDownDiagonal || allDiagonals) && tryLine(4)) return true;

  patternFound = 0;
  if (crossDiagonalChoice != 0) d1scross();
  if (scatteredCrossDiagonalChoice != 0) d1scross2();
  if (crossLineChoice != 0) d1scline();
  if (scatteredCrossLineChoice != 0) d1scline2();
  return patternFound == 1;
}

bool MainWindow::scoringAttempt() {
  const int n = squareSize;
  if (allFailed(lineFailed)) lineFailed.fill(0);
  cellX = randomWhole(n);
  cellY = randomWhole(n);
  runState = 2;
  lineUsable.fill(0);
  lineTally.fill(0);
  lineBlankTally = 0;
  bestBlankTally = 0;
  const int x = cellX, y = cellY;
  if (isBlank(squareNumbers[x][y])) return false;

  const bool allDiagonals = allDiagonalsChoice != 0;
  const bool diagonals = (mainLinesChoice == 1 && (x == y || x + y == n + 1)) || allDiagonals;
  if (mainLinesChoice == 1) {
    scoreLine(1, true);
    scoreLine(2, true);
  }
  if (diagonals) scoreLine(3, x + y == n + 1 || allDiagonals);
  if (diagonals && (x == y || allDiagonals)) scoreLine(4, true);
  if (crossDiagonalChoice != 0) d2scross();
  if (scatteredCrossDiagonalChoice != 0) d2scross2();
  if (crossLineChoice != 0) d2scline();
  if (scatteredCrossLineChoice != 0) d2scline2();
  if (std::none_of(lineUsable.begin() + 1, lineUsable.end(), [](int flag) { return flag == 1; })) return false;
  if (allFailed(lineFailed)) return false;

  const int type = drawLineType();
  lineType = type;
  if (rankCounter == 0) {
    // The first choice keeps its number: its line is the one left whole.
    reservedType = type;
    reservedX = x;
    reservedY = y;
    reservedLineChosen = 1;
  } else {
    prevX = x;
    prevY = y;
    const bool onReservedLine = reservedLineChosen != 0 && reservedLineMeets(x, y);
    if (!onReservedLine) checkChosenLine();
    if (onReservedLine || lineAccepted != 1) {
      lineFailed[type] = 1;
      return false;
    }
    markBlank(type);
  }
  lineFailed.fill(0);
  return true;
}

int MainWindow::drawLineType() {
  for (;;) {
    // Each enabled family widens the draw to its two kinds; the last one drawn counts.
    int kind = randomWhole(4);
    if (crossDiagonalChoice != 0) kind = randomWhole(6);
    if (scatteredCrossDiagonalChoice != 0) kind = randomWhole(8);
    if (crossLineChoice != 0) kind = randomWhole(10);
    if (scatteredCrossLineChoice != 0) kind = randomWhole(12);
    const int type = kind <= 4 ? kind : kFamilyFirstType[(kind - 5) / 2] + randomWhole(kFamilySize) - 1;
    if (lineUsable[type] == 1 && (lineTally[type] == bestBlankTally || difficultyLevel < 3)) return type;
  }
}

void MainWindow::blankKeyCell() {
  // The extra blank lies on the reserved line, in the top-left 5 by 5 corner;
  // without such a cell there is none.
  if (reservedLineChosen == 0) return;
  bool crossesCorner = false;
  for (int c = 1; c <= 5 && !crossesCorner; ++c) {
    for (int r = 1; r <= 5 && !crossesCorner; ++r) crossesCorner = reservedLineMeets(c, r);
  }
  if (!crossesCorner) return;
  do {
    cursorX = randomWhole(5);
    cursorY = randomWhole(5);
  } while (!reservedLineMeets(cursorX, cursorY));
  squareNumbers[cursorX][cursorY] = kLineMarker[1];
}

}  // namespace quill
