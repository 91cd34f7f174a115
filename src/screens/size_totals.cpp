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
  // n·s + d·n·(n²−1)/2, evaluated in the order the old program used.
  const double a = n * (n * (n - 1) / 2 + (n + 1) / 2);
  const double b = (d - 1) * n * (n * (n + 1) / 2 - (n + 1) / 2);
  const double magicTotal = (b + a) + (s - 1) * n;
  magicTotalText = numberText(magicTotal);
  Label11.setCaption(magicTotalText.size() <= 11 ? "Magic Total = " + magicTotalText
                                                 : "Magic Total is {very large!}");
  const std::string last = numberText((n * n - 1) * d + s);
  Label18.setCaption(last.size() <= 7 ? "Last number equals: " + last : "Last number is {very large!}");
}

void MainWindow::refreshCellMetrics() {
  const double n = squareSize;
  const double first = startNumber;
  const double last = (n * n - 1) * distance + startNumber;
  numberChars = static_cast<int>(std::max(textLength(last), textLength(first)));
  if (first < 0 || last < 0) {
    // One end negative: reserve a character when the positive end is at least
    // as long as the negative one (minus sign counted). Both negative: none.
    double p = 0;
    double q = 100;
    if (first > 0) p = first, q = last;
    if (last > 0) p = last, q = first;
    if (textLength(p) >= textLength(q)) numberChars += 1;
  }
  cellWidth = numberChars > 3 ? 8 * numberChars : 24;
}

void MainWindow::refreshPageFit() {
  const bool largerThanPage = squareSize * cellWidth + 8 > surfaceWidth || 18 * squareSize + 8 > surfaceHeight;
  if (largerThanPage) {
    Command4.setEnabled(false);
    if (Command4.visible()) Label19.setVisible(true);
  } else {
    Command4.setEnabled(true);
    Label19.setVisible(false);
  }
}

}  // namespace quill
