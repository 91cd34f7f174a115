#include "support/literal_window.h"

#include "patterns/line_types.h"

namespace quill::testing {

void LiteralWindow::walkDependencies(bool restartAfterQueueing) {
  const int n = squareSize;
  lineAccepted = 0;
  originX = cellX;
  originY = cellY;
  cursorX = cellX;
  cursorY = cellY;
  for (int i = 1; i <= n * n; ++i) {
    queueType[i] = -1;
    queueX[i] = -1;
    queueY[i] = -1;
  }
  queueCount = 0;
  queueHead = 0;
  lineStep = 0;
  // The line being walked is anchored at (cellX, cellY), of type lineType.
  for (;;) {
    findline2();
    ++lineStep;
    cursorX = wrap(cursorX, n);
    cursorY = wrap(cursorY, n);
    if (cursorX == cellX && cursorY == cellY) {
      lineStep = 0;
      ++queueHead;
      if (queueType[queueHead] < 0) {
        lineAccepted = 1;
        cellX = originX;
        cellY = originY;
        return;
      }
      cellX = queueX[queueHead];
      cellY = queueY[queueHead];
      lineType = queueType[queueHead];
      cursorX = cellX;
      cursorY = cellY;
    }
    if (cursorX == originX && cursorY == originY && (cellX != originX || cellY != originY)) {
      cellX = originX;
      cellY = originY;
      return;
    }
    const double cell = squareNumbers[cursorX][cursorY];
    if (isBlank(cell) && (cursorX != cellX || cursorY != cellY)) {
      bool queued = false;
      for (queueScan = 1; queueType[queueScan] >= 0 && !queued; ++queueScan) {
        queued = queueX[queueScan] == cursorX && queueY[queueScan] == cursorY;
      }
      if (!queued) {
        ++queueCount;
        queueX[queueCount] = cursorX;
        queueY[queueCount] = cursorY;
        queueType[queueCount] = static_cast<std::int16_t>(markerType(cell));
        if (restartAfterQueueing) {
          lineStep = 0;
          cursorX = cellX;
          cursorY = cellY;
        }
      }
    }
  }
}

}  // namespace quill::testing
