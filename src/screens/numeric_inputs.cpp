// The main page's numeric inputs: the print count with "Fill Page", the
// starting number and the distance.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::syncPrintCount() {
  const int capacity = page::pageCapacity(squareSize, cellWidth());
  if (numericValue(Text1.text()) > capacity || Check12.checked()) Text1.setText(numberText(capacity));
  if (numericValue(Text1.text()) == capacity) Check12.setValue(1);
}

void MainWindow::refreshAfterSettingChange() {
  refreshCellMetrics();
  refreshPageFit();
  refreshCellMetrics();
  syncPrintCount();
}

void MainWindow::Text1_Change() {
  // "Fill Page" is checked exactly when the print count fills the page, and
  // the count never goes above that.
  refreshCellMetrics();
  const int capacity = page::pageCapacity(squareSize, cellWidth());
  if (numericValue(Text1.text()) > capacity) Text1.setText(numberText(capacity));
  if (numericValue(Text1.text()) == capacity) Check12.setValue(1);
  if (numericValue(Text1.text()) < capacity) Check12.setValue(0);
}

void MainWindow::Check12_Click() {
  if (!Check12.checked()) return;  // clearing keeps the print count
  refreshCellMetrics();
  Text1.setText(numberText(page::pageCapacity(squareSize, cellWidth())));
}

void MainWindow::text4_KeyUp(int /*keyCode*/, int /*shift*/) {
  startNumber = numericValue(text4.text());
  refreshTotals();
  refreshAfterSettingChange();
}

void MainWindow::Text5_KeyUp(int /*keyCode*/, int /*shift*/) {
  // A distance of 0 (or no number at all) leaves the distance as it was.
  if (const double typed = numericValue(Text5.text()); typed != 0) distance = typed;
  refreshTotals();
  refreshAfterSettingChange();
}

}  // namespace quill
