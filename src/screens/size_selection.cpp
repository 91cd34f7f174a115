// The size of the square: chosen from the size menu or typed into the size entry.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

namespace {

// The size entry holds six characters, so a size is a whole number of at most
// six digits; anything else (7.4, 1E+300) is never a size. This also keeps
// the page arithmetic of every accepted size within 32-bit whole numbers.
constexpr double kLargestSizeEntry = 999999;

bool isWholeSizeEntry(double value) {
  return value == std::floor(value) && std::fabs(value) <= kLargestSizeEntry;
}

}  // namespace

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

// Trial division from the square root down to 2. A value whose square root
// is below 2 is not taken as prime, so stepping up from 4 or less lands on 5.
bool MainWindow::sizeEntryIsPrime() {
  trialDivisor = std::floor(std::sqrt(std::max(sizeEntry, 0.0)));
  if (trialDivisor < 2) return false;
  for (; trialDivisor >= 2; trialDivisor -= 1) {
    if (std::fmod(sizeEntry, trialDivisor) == 0) return false;
  }
  return true;
}

void MainWindow::Text2_KeyUp(int keyCode, int /*shift*/) {
  // The arrow keys step to the next prime above or below, never below 5.
  sizeEntry = numericValue(Text2.text());
  const bool up = keyCode == keys::up;
  if ((up || (keyCode == keys::down && sizeEntry > 5)) && isWholeSizeEntry(sizeEntry)) {
    const double typed = sizeEntry;
    do {
      sizeEntry += up ? 1 : -1;
    } while (!sizeEntryIsPrime());
    if (sizeEntry <= kLargestSizeEntry) {
      Text2.setText(numberText(sizeEntry));
    } else {
      sizeEntry = typed;  // no larger size fits the entry
    }
  }

  // A typed prime of 5 or more becomes the size; anything else is left as typed.
  sizeEntry = numericValue(Text2.text());
  if (sizeEntry >= 5 && isWholeSizeEntry(sizeEntry) && sizeEntryIsPrime()) {
    squareSize = static_cast<int>(sizeEntry);
    Command1.setEnabled(squareSize <= kMaxSquareSize);
    refreshTotals();
    showCountingExplanation();
    checkSizeItems(squareSize);
  }
  refreshAfterSettingChange();
}

}  // namespace quill
