// The main page's settings: the size from the menu or the size entry, the
// print count with "Fill Page", the starting number and the distance, and
// the captions and page fit that follow each change.
#include <array>
#include <utility>

#include "platform/number_text.h"
#include "screens/settings_texts.h"
#include "screens/size_entry.h"
#include "window/main_window.h"

namespace quill {

void MainWindow::checkSizeItems(int newSize) {
  const std::array<std::pair<MenuItem*, int>, 8> items{{{&sqr5, 5}, {&sqr7, 7}, {&sqr11, 11},
                                                        {&sqr13, 13}, {&sqr17, 17}, {&sqr19, 19},
                                                        {&sqr23, 23}, {&sqr29, 29}}};
  for (auto [item, itemSize] : items) item->setChecked(itemSize == newSize);
  larger.setChecked(newSize > 29);
}

void MainWindow::applySize(int newSize) {
  Command1.setEnabled(true);
  squareSize = newSize;
  refreshTotals();
  Text2.setText(numberText(newSize));
  showCountingExplanation();
  checkSizeItems(newSize);
  refreshAfterSettingChange();
}

void MainWindow::sqr5_Click() { applySize(5); }
void MainWindow::sqr7_Click() { applySize(7); }
void MainWindow::sqr11_Click() { applySize(11); }
void MainWindow::sqr13_Click() { applySize(13); }
void MainWindow::sqr17_Click() { applySize(17); }
void MainWindow::sqr19_Click() { applySize(19); }
void MainWindow::sqr23_Click() { applySize(23); }
void MainWindow::sqr29_Click() { applySize(29); }

void MainWindow::Text2_KeyUp(int keyCode, int /*shift*/) {
  // The arrow keys step to the next prime above or below, never below 5.
  if (keyCode == keys::up || keyCode == keys::down) {
    if (const auto next = steppedSize(numericValue(Text2.text()), keyCode == keys::up)) {
      Text2.setText(numberText(*next));
    }
  }
  // A typed prime of 5 or more becomes the size; anything else is left as typed.
  const double sizeEntry = numericValue(Text2.text());
  if (sizeEntry >= 5 && isWholeSizeEntry(sizeEntry) && isPrimeSizeEntry(sizeEntry)) {
    squareSize = static_cast<int>(sizeEntry);
    Command1.setEnabled(squareSize <= kMaxSquareSize);
    refreshTotals();
    showCountingExplanation();
    checkSizeItems(squareSize);
  }
  refreshAfterSettingChange();
}

void MainWindow::showCountingExplanation() {
  const CountingExplanation texts = countingExplanation(squareSize);
  Label4.setCaption(texts.question);
  Label3.setCaption(texts.fundamental);
  Label5.setCaption(texts.shifted);
  Label6.setCaption(texts.rotated);
  Label7.setCaption(texts.total);
}

void MainWindow::refreshTotals() {
  Label11.setCaption(magicTotalCaption(progression()));
  Label18.setCaption(lastNumberCaption(progression()));
}

void MainWindow::refreshCellMetrics() { display_.prepareLayout(squareSize, progression()); }

void MainWindow::refreshPageFit() {
  if (page::largerThanPage(squareSize, cellWidth())) {
    Command4.setEnabled(false);
    if (Command4.visible()) Label19.setVisible(true);
  } else {
    Command4.setEnabled(true);
    Label19.setVisible(false);
  }
}

void MainWindow::syncPrintCount() {
  const int capacity = page::pageCapacity(squareSize, cellWidth());
  if (numericValue(Text1.text()) > capacity || Check12.checked()) Text1.setText(numberText(capacity));
  if (numericValue(Text1.text()) == capacity) Check12.setValue(1);
}

void MainWindow::refreshAfterSettingChange() {
  refreshCellMetrics();
  refreshPageFit();
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
