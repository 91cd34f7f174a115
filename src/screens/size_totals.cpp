// The captions and metrics that follow every change of size, starting number or distance.
#include "main_window.h"

#include <algorithm>

#include "platform/number_text.h"

namespace quill {

namespace {
std::size_t textLength(double value) { return numberText(value).size(); }
}  // namespace

void MainWindow::refreshTotals() {
  const double n = squareSize;
  const double s = startNumber;
  const double d = distance;
  // n·s + d·n·(n²−1)/2, summed in this order, which fixes the rounding of
  // fractional and very large totals.
  const double a = n * (n * (n - 1) / 2 + (n + 1) / 2);
  const double b = (d - 1) * n * (n * (n + 1) / 2 - (n + 1) / 2);
  const double magicTotal = (b + a) + (s - 1) * n;
  magicTotalText = numberText(magicTotal);
  Label11.setCaption(magicTotalText.size() <= 11 ? "Magic Total = " + magicTotalText
                                                 : "Magic Total is {very large!}");
  const std::string last = numberText(lastNumber());
  Label18.setCaption(last.size() <= 7 ? "Last number equals: " + last : "Last number is {very large!}");
}

double MainWindow::lastNumber() const {
  return (static_cast<double>(squareSize) * squareSize - 1) * distance + startNumber;
}

int MainWindow::widestNumberChars() const {
  return static_cast<int>(std::max(textLength(lastNumber()), textLength(startNumber)));
}

bool MainWindow::needsSignCharacter() const {
  const double first = startNumber;
  const double last = lastNumber();
  if (first >= 0 && last >= 0) return false;
  // One end negative: reserve a character when the positive end is at least
  // as long as the negative one (minus sign counted). Both negative: none.
  double p = 0;
  double q = 100;
  if (first > 0) p = first, q = last;
  if (last > 0) p = last, q = first;
  return textLength(p) >= textLength(q);
}

void MainWindow::refreshCellMetrics() {
  numberChars = widestNumberChars() + (needsSignCharacter() ? 1 : 0);
  cellWidth = cellWidthFor(numberChars);
}

bool MainWindow::largerThanPage() const {
  return squareSize * cellWidth + 8 > surfaceWidth || kRowHeight * squareSize + 8 > surfaceHeight;
}

void MainWindow::refreshPageFit() {
  if (largerThanPage()) {
    Command4.setEnabled(false);
    if (Command4.visible()) Label19.setVisible(true);
  } else {
    Command4.setEnabled(true);
    Label19.setVisible(false);
  }
}

}  // namespace quill
