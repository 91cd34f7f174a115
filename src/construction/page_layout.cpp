// Pages of a run: squares placed left to right, top to bottom from the margin
// (8, 8), one cell apart across and one row apart down; the page printed when
// full or at the run's last square, then its answer page.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::advanceOnPage() {
  const int n = squareSize;
  gridLeft += n * cellWidth + cellWidth;
  pageColumn += n;
  if (gridLeft + n * cellWidth > surfaceWidth) {
    gridLeft = 8;
    pageColumn = 1;
    gridTop += kRowHeight * n + kRowHeight;
    pageRow += n;
  }
}

void MainWindow::placeOnPage() {
  const int n = squareSize;
  const bool tiled = largerThanPage();
  if (printChoice == 2 && !tiled && pagePhase != 1) {
    // Keep the puzzle and its answers where the square lies on the page.
    for (int y = 1; y <= n; ++y) {
      for (int x = 1; x <= n; ++x) {
        pagePuzzle[pageColumn + x - 1][pageRow + y - 1] = squareNumbers[x][y];
        pageAnswers[pageColumn + x - 1][pageRow + y - 1] = squareRanks[x][y];
      }
    }
  }

  pagePrinted = 0;
  if (pagePhase == 1) return;  // the key square is never placed
  runState = 0;
  advanceOnPage();
  const bool pageFull = gridTop + kRowHeight * n > surfaceHeight;
  const bool lastOfRun = runDone + 1 == runTotal && pagePhase == 0;
  if (!pageFull && !lastOfRun && pagePhase != 26) return;

  pagePrinted = 1;
  // A tiled square has printed its tiles and left the surface empty: no blank sheet.
  if (!tiled) {
    platform_.maximiseWindow();
    platform_.printWindow();
  }
  surface().clear();
  pageEndLeft = gridLeft;
  pageEndTop = gridTop;
  gridLeft = 8;
  gridTop = 8;
  pageColumn = 1;
  pageRow = 1;
  cursorX = 1;
  cursorY = 1;
  showAnswers = 1;
  if (printChoice == 2) {
    if (tiled) {
      showsquare();
    } else {
      printAnswerPage();
    }
  }
  gridLeft = 8;
  gridTop = 8;
  pageColumn = 1;
  pageRow = 1;
}

void MainWindow::printAnswerPage() {
  const int n = squareSize;
  const bool holdsNegatives = startNumber < 0 || lastNumber() < 0;
  gridLeft = 8;
  gridTop = 8;
  pageColumn = 1;
  pageRow = 1;
  // The same squares at the same places, every cell filled, the former blanks shaded.
  const auto cellAt = [&](int c, int r) {
    const double puzzle = pagePuzzle[pageColumn + c - 1][pageRow + r - 1];
    const double answer = pageAnswers[pageColumn + c - 1][pageRow + r - 1];
    CellLook look;
    look.shaded = isBlank(puzzle) && highlightAnswers == 1;
    look.shifted = holdsNegatives && answer >= 0;
    look.text = numberText(answer);
    return look;
  };
  for (;;) {
    yieldToUser();
    cursorX = 1;
    cursorY = 1;
    drawTile(1, cellAt);
    advanceOnPage();
    const bool reachedPageEnd = gridTop > pageEndTop || (gridTop >= pageEndTop && gridLeft >= pageEndLeft);
    if (gridTop + kRowHeight * n > surfaceHeight || reachedPageEnd) break;
  }
  platform_.maximiseWindow();
  platform_.printWindow();
  surface().clear();
}

}  // namespace quill
