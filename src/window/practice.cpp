// Practice: the window becomes a practice page; puzzle after puzzle is built
// and drawn, and the user fills its blanks with the score in the title,
// until "Quit playing".
#include "window/main_window.h"
#include "platform/number_text.h"

namespace quill {

namespace {

std::string bySize(int n) {
  const std::string t = numberText(n);
  return "(" + t + " by " + t + ")";
}

}  // namespace

std::string MainWindow::practiceCreationCaption() const {
  return "Creating " + bySize(squareSize) + " Complete Magic Square (with blanks)";
}

std::string MainWindow::scoreCaption() const {
  return "Number of " + bySize(squareSize) + " Complete Magic Square(s) solved: " + numberText(runDone) +
         " / Numbers correct: " + numberText(correctCount) + " / Numbers incorrect: " + numberText(incorrectCount);
}

void MainWindow::showScore() {
  setCaption(scoreCaption());
  platform_.maximiseWindow();
  platform_.refreshWindow();
}

void MainWindow::Command4_Click() {
  startPractice();
  try {
    for (;;) {
      playOnePuzzle();
      if (run_.runState() == RunState::Abort) break;
      // Solved, or dropped for a new one: wiped at once, answers unseen.
      Text6.setAvailable(false);
      platform_.maximiseWindow();
      surface().clear();
      cursorX = 1;
      cursorY = 1;
      if (run_.runState() != RunState::NewSquare) ++runDone;
      run_.setRunState(RunState::Idle);
      showScore();
    }
  } catch (const RunAborted&) {
    // "Quit playing" while the puzzle was being built.
  }
  endPractice();
}

void MainWindow::startPractice() {
  Check12.setVisible(false);
  readPatternChoices();
  practiceActive = 1;
  savedPrintChoice = printChoice;
  printChoice = PrintChoice::Puzzles;  // every practice square is a puzzle
  correctCount = 0;
  incorrectCount = 0;
  readRunSettings(true);

  createWasDisabled = Command1.enabled() ? 0 : 1;
  showScreen(Screen::Practice);

  platform_.maximiseWindow();
  baseStartNumber = startNumber;
}

void MainWindow::playOnePuzzle() {
  // The random start keeps every number below the next power of ten, so the
  // cell width found at the start fits every puzzle.
  if (Check1.value() == 1) drawRandomStartNumber();
  setCaption(practiceCreationCaption());
  builder_.buildsquare(squareSize, startNumber, distance);
  maker_.makePuzzle(square(), puzzle);
  showsquare(kPracticeCorner);
  blanksLeft = maker_.rankCounter();
  showScore();

  // Wait for the last blank, a new square or the end, asleep between events.
  platform_.yield();
  while (run_.runState() != RunState::Abort && blanksLeft != 1 && run_.runState() != RunState::NewSquare) {
    platform_.waitForEvents();
  }
}

void MainWindow::endPractice() {
  Text6.setAvailable(false);
  practiceActive = 0;
  printChoice = savedPrintChoice;
  restoreMainPage();
  if (createWasDisabled == 0) Command1.setEnabled(true);
  // Practice only starts for a square that fits; the page fit is not looked at again.
  Command4.setEnabled(true);
}

// Filling a practice puzzle: a click on a blank cell opens the entry box over
// it; Enter checks the number typed, writes a right one into the cell and
// counts a wrong one, with the score in the title.

void MainWindow::Form_MouseDown(int /*button*/, int /*shift*/, float x, float y) {
  if (practiceActive != 1) return;
  const int n = squareSize;
  int& originX = run_.selection.originX;
  int& originY = run_.selection.originY;
  const int prevOriginX = originX;
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
