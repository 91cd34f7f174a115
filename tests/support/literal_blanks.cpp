// The literal dependency check, and the puzzle maker made with it.
#include "support/literal_blanks.h"

#include "patterns/puzzle_maker_impl.h"

namespace quill {
template std::optional<PuzzleMade> makePuzzleOver<testing::LiteralBlanks>(Square&, const PuzzleSettings&,
                                                                         FailedLines&, const PuzzleSteps&);
}  // namespace quill

namespace quill::testing {

LiteralBlanks::LineSurvey LiteralBlanks::survey(int type, int x, int y) const {
  LineSurvey survey;
  for (int k = 0; k < n_; ++k) {
    const double cell = (*grid_)[x][y];
    survey.taken = survey.taken || cell == kLineMarker[type];
    survey.blanks += isBlank(cell) ? 1 : 0;
    x = wrap(x + kStraightStep[type].dx, n_);
    y = wrap(y + kStraightStep[type].dy, n_);
  }
  return survey;
}

bool LiteralBlanks::closesCycle(int originX, int originY, int lineType) {
  const SquareGrid& squareNumbers = *grid_;
  const int n = n_;
  // Entries 1..n², each cleared to -1; queueType -1 ends the queue.
  std::vector<int> queueX(static_cast<std::size_t>(n * n + 2), -1), queueY(queueX), queueType(queueX);
  int queueCount = 0, queueHead = 0, lineStep = 0;
  int cellX = originX, cellY = originY;
  Position cursor{originX, originY};
  // The line being walked is anchored at (cellX, cellY), of type lineType.
  for (;;) {
    cursor = stepAlong(lineType, {cellX, cellY}, cursor, lineStep);
    ++lineStep;
    cursor = {wrap(cursor.x, n), wrap(cursor.y, n)};
    if (cursor.x == cellX && cursor.y == cellY) {
      lineStep = 0;
      ++queueHead;
      if (queueType[queueHead] < 0) return false;
      cellX = queueX[queueHead];
      cellY = queueY[queueHead];
      lineType = queueType[queueHead];
      cursor = {cellX, cellY};
    }
    if (cursor.x == originX && cursor.y == originY && (cellX != originX || cellY != originY)) return true;
    const double cell = squareNumbers[cursor.x][cursor.y];
    if (isBlank(cell) && (cursor.x != cellX || cursor.y != cellY)) {
      bool queued = false;
      for (int queueScan = 1; queueType[queueScan] >= 0 && !queued; ++queueScan) {
        queued = queueX[queueScan] == cursor.x && queueY[queueScan] == cursor.y;
      }
      if (!queued) {
        ++queueCount;
        queueX[queueCount] = cursor.x;
        queueY[queueCount] = cursor.y;
        queueType[queueCount] = markerType(cell);
        lineStep = 0;
        cursor = {cellX, cellY};
      }
    }
  }
}

}  // namespace quill::testing
