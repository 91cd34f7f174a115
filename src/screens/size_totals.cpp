// The captions and metrics that follow every change of size, starting number or distance.
#include "main_window.h"

#include "platform/number_text.h"

namespace quill {

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
  const std::string last = numberText(progression().lastNumber());
  Label18.setCaption(last.size() <= 7 ? "Last number equals: " + last : "Last number is {very large!}");
}

void MainWindow::refreshCellMetrics() {
  display_.prepareLayout(squareSize, progression());
}

void MainWindow::refreshPageFit() {
  if (page::largerThanPage(squareSize, cellWidth())) {
    Command4.setEnabled(false);
    if (Command4.visible()) Label19.setVisible(true);
  } else {
    Command4.setEnabled(true);
    Label19.setVisible(false);
  }
}

}  // namespace quill
