// Pages of a run: squares placed as the page geometry places them; the page
// printed when full or at the run's last square, then its answer page.
#include "display/run_pages.h"

#include "platform/number_text.h"

namespace quill {

bool RunPages::placeOnPage(const Square& square, const Step& step) {
  const int n = square.n;
  const bool tiled = page::largerThanPage(n, display_.cellWidth());
  const bool withAnswers = step.printChoice == PrintChoice::PuzzlesAndAnswers;
  if (withAnswers && !tiled && !step.keySquare) {
    // Keep the puzzle and its answers where the square lies on the page.
    for (int y = 1; y <= n; ++y) {
      for (int x = 1; x <= n; ++x) {
        pagePuzzle[placement_.pageColumn + x - 1][placement_.pageRow + y - 1] = square.squareNumbers[x][y];
        pageAnswers[placement_.pageColumn + x - 1][placement_.pageRow + y - 1] = square.squareRanks[x][y];
      }
    }
  }

  if (step.keySquare) return false;  // never placed
  placement_ = page::nextPlacement(placement_, n, display_.cellWidth());
  if (!page::pastBottom(placement_, n) && !step.lastOfRun && !step.lastContinuation) return false;

  // A tiled square has printed its tiles and left the surface empty: no blank sheet.
  if (tiled) {
    display_.clear();
  } else {
    display_.printPage();
  }
  const page::Placement pageEnd = placement_;
  placement_ = {};
  if (withAnswers) {
    if (tiled) {
      display_.showsquare(square, placement_, step.numbers, {true, step.highlightAnswers});
    } else {
      printAnswerPage(n, pageEnd, step);
    }
  }
  placement_ = {};
  return true;
}

void RunPages::printAnswerPage(int n, const page::Placement& pageEnd, const Step& step) {
  const bool holdsNegatives = step.numbers.holdsNegatives();
  // The same squares at the same places, every cell filled, the former blanks shaded.
  const auto cellAt = [&](int c, int r) {
    const double shown = pagePuzzle[placement_.pageColumn + c - 1][placement_.pageRow + r - 1];
    const double answer = pageAnswers[placement_.pageColumn + c - 1][placement_.pageRow + r - 1];
    CellLook look;
    look.shaded = isBlank(shown) && step.highlightAnswers;
    look.shifted = holdsNegatives && answer >= 0;
    look.text = numberText(answer);
    return look;
  };
  const page::Tile whole{1, 1, n, n, 1, 1};
  for (;;) {
    yield_();
    display_.drawTile(placement_, whole, cellAt);
    placement_ = page::nextPlacement(placement_, n, display_.cellWidth());
    const bool reachedPageEnd = placement_.gridTop > pageEnd.gridTop ||
                                (placement_.gridTop >= pageEnd.gridTop && placement_.gridLeft >= pageEnd.gridLeft);
    if (page::pastBottom(placement_, n) || reachedPageEnd) break;
  }
  display_.printPage();
}

void RunPages::keepKeyCorner(const Square& square) {
  for (int c = 1; c <= page::kKeyCorner; ++c) {
    for (int r = 1; r <= page::kKeyCorner; ++r) keyRanks[c][r] = square.squareRanks[c][r];
  }
  keyColumn = 0;
  keyRow = 1;
}

double RunPages::nextKeyRank() {
  // Row by row through the corner; after its last cell, from the first row again.
  if (++keyColumn > page::kKeyCorner) {
    keyColumn = 1;
    if (++keyRow > page::kKeyCorner) keyRow = 1;
  }
  return keyRanks[keyColumn][keyRow];
}

}  // namespace quill
