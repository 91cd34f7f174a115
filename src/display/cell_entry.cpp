// Filling a practice puzzle: a click on a blank cell opens the entry box over
// it; Enter checks the number typed, writes a right one into the cell and
// counts a wrong one, with the score in the title.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::Form_MouseDown(int /*button*/, int /*shift*/, float x, float y) {
  if (practiceActive != 1) return;
  const int n = squareSize;
  int& originX = run_.selection.originX;
  int& originY = run_.selection.originY;
  prevOriginX = originX;
  const int previousRow = originY;

  // Every cell from the grid's corner, row by row; the first hit wins.
  cursorX = kPracticeCorner.gridLeft;
  cursorY = kPracticeCorner.gridTop;
  originX = 1;
  originY = 1;
  const auto hits = [&] {
    const double left = cursorX, top = cursorY;
    return left <= x && x < left + cellWidth() && top <= y && y < top + page::kRowHeight;
  };
  while (!hits()) {
    ++originX;
    cursorX += cellWidth();
    if (originX > n) {
      originX = 1;
      cursorX = kPracticeCorner.gridLeft;
      ++originY;
      cursorY += page::kRowHeight;
    }
    if (originY > n) {
      originX = prevOriginX;
      originY = previousRow;
      return;
    }
  }
  if (originX == prevOriginX && originY == previousRow) return;

  // The hit cell is selected; only a blank of a puzzle in play takes entry.
  const bool beingBuilt = caption() == practiceCreationCaption();
  if (beingBuilt || run_.runState() != RunState::Puzzle || !isBlank(square().squareNumbers[originX][originY])) return;
  Text6.setText("");
  Text6.setPixelPosition(cursorX, cursorY);
  Text6.setVisible(true);
  Text6.setEnabled(true);
  Text6.setFocus();
}

void MainWindow::Text6_KeyDown(int keyCode, int /*shift*/) {
  if (keyCode != keys::enter) return;
  const auto [originX, originY] = run_.selection;
  const std::string typed = Text6.text();
  const double value = numericValue(typed);
  const double answer = square().squareRanks[originX][originY];

  if (value != answer) {
    // Only a number counts as a try: "0" or anything whose value is not 0.
    if (typed == "0" || value != 0) {
      ++incorrectCount;
      showScore();
    }
    Text6.setText("");
    return;
  }

  square().squareNumbers[originX][originY] = answer;
  const int shift = progression().holdsNegatives() && answer >= 0 ? 3 : 0;
  const auto left = static_cast<float>(cursorX + shift - 1);
  const auto top = static_cast<float>(cursorY + 3);
  surface().fillBox(left, top, left, top, palette::white);
  surface().printText(printNumberText(answer));
  Text6.setEnabled(false);
  Text6.setVisible(false);
  Text6.setText("");
  ++correctCount;
  showScore();
  --blanksLeft;
}

}  // namespace quill
