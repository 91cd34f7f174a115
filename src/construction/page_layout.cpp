// Pages of a run: squares placed as the page geometry places them; the page
// printed when full or at the run's last square, then its answer page.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::placeOnPage() {
  const int n = squareSize;
  const bool tiled = page::largerThanPage(n, cellWidth());
  if (printChoice == 2 && !tiled && pagePhase != 1) {
    // Keep the puzzle and its answers where the square lies on the page.
    for (int y = 1; y <= n; ++y) {
      for (int x = 1; x <= n; ++x) {
        pagePuzzle[placement.pageColumn + x - 1][placement.pageRow + y - 1] = square().squareNumbers[x][y];
        pageAnswers[placement.pageColumn + x - 1][placement.pageRow + y - 1] = square().squareRanks[x][y];
      }
    }
  }

  pagePrinted = 0;
  if (pagePhase == 1) return;  // the key square is never placed
  run_.setRunState(RunState::Idle);
  placement = page::nextPlacement(placement, n, cellWidth());
  const bool lastOfRun = runDone + 1 == runTotal && pagePhase == 0;
  if (!page::pastBottom(placement, n) && !lastOfRun && pagePhase != 26) return;

  pagePrinted = 1;
  // A tiled square has printed its tiles and left the surface empty: no blank sheet.
  if (tiled) {
    surface().clear();
  } else {
    display_.printPage();
  }
  const page::Placement pageEnd = placement;
  placement = {};
  if (printChoice == 2) {
    if (tiled) {
      showsquare(true);
    } else {
      printAnswerPage(pageEnd);
    }
  }
  placement = {};
}

void MainWindow::printAnswerPage(const page::Placement& pageEnd) {
  const int n = squareSize;
  const bool holdsNegatives = progression().holdsNegatives();
  // The same squares at the same places, every cell filled, the former blanks shaded.
  placement = {};
  const auto cellAt = [&](int c, int r) {
    const double shown = pagePuzzle[placement.pageColumn + c - 1][placement.pageRow + r - 1];
    const double answer = pageAnswers[placement.pageColumn + c - 1][placement.pageRow + r - 1];
    CellLook look;
    look.shaded = isBlank(shown) && highlightAnswers == 1;
    look.shifted = holdsNegatives && answer >= 0;
    look.text = numberText(answer);
    return look;
  };
  const page::Tile whole{1, 1, n, n, 1, 1};
  for (;;) {
    run_.yieldToUser();
    display_.drawTile(placement, whole, cellAt);
    placement = page::nextPlacement(placement, n, cellWidth());
    const bool reachedPageEnd = placement.gridTop > pageEnd.gridTop ||
                                (placement.gridTop >= pageEnd.gridTop && placement.gridLeft >= pageEnd.gridLeft);
    if (page::pastBottom(placement, n) || reachedPageEnd) break;
  }
  display_.printPage();
}

}  // namespace quill
