// Walking a line: from its anchor, step by step on the torus, until the walk
// is back at the anchor. Straight lines step by their type's step; patterns
// visit their four other cells in the table's order, then the anchor.
#include "main_window.h"
#include "patterns/line_types.h"

namespace quill {

void MainWindow::findline1() {
  if (!isPattern(reservedType) || lineStep > 4) return;
  if (lineStep == 4) {
    reservedWalkX = reservedX;
    reservedWalkY = reservedY;
    return;
  }
  const Offset cell = kPatternCells[reservedType][lineStep];
  reservedWalkX = reservedX + cell.dx;
  reservedWalkY = reservedY + cell.dy;
}

void MainWindow::findline2() {
  if (isStraight(lineType)) {
    cursorX += kStraightStep[lineType].dx;
    cursorY += kStraightStep[lineType].dy;
    return;
  }
  if (!isPattern(lineType) || lineStep > 4) return;
  if (lineStep == 4) {
    cursorX = cellX;
    cursorY = cellY;
    return;
  }
  const Offset cell = kPatternCells[lineType][lineStep];
  cursorX = cellX + cell.dx;
  cursorY = cellY + cell.dy;
}

MainWindow::LineWalk MainWindow::walkLine(int type) {
  const int n = squareSize;
  if (isStraight(type)) {
    // The n cells of a straight line are known by their blanks.
    const PuzzleBlanks::LineSurvey survey = currentBlanks().survey(type, cellX, cellY);
    return {survey.taken, survey.blanks};
  }
  LineWalk walk;
  lineType = type;
  cursorX = cellX;
  cursorY = cellY;
  lineStep = 0;
  do {
    const double cell = squareNumbers[cursorX][cursorY];
    if (cell == kLineMarker[type]) {
      walk.taken = true;
      return walk;
    }
    if (isBlank(cell)) ++walk.blanks;
    findline2();
    ++lineStep;
    cursorX = wrap(cursorX, n);
    cursorY = wrap(cursorY, n);
  } while (cursorX != cellX || cursorY != cellY);
  return walk;
}

bool MainWindow::reservedLineMeets(int x, int y) {
  const int n = squareSize;
  if (isStraight(reservedType)) {
    return straightLineNumber(reservedType, reservedX, reservedY, n) == straightLineNumber(reservedType, x, y, n);
  }
  reservedWalkX = reservedX;
  reservedWalkY = reservedY;
  lineStep = 0;
  do {
    if (reservedWalkX == x && reservedWalkY == y) return true;
    findline1();
    ++lineStep;
    reservedWalkX = wrap(reservedWalkX, n);
    reservedWalkY = wrap(reservedWalkY, n);
  } while (reservedWalkX != reservedX || reservedWalkY != reservedY);
  return false;
}

}  // namespace quill
