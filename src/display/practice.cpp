// Practice: the window becomes a practice page; puzzle after puzzle is built
// and drawn, and the user fills its blanks (cell_entry.cpp) with the score in
// the title, until "Quit playing".
#include "main_window.h"
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

}  // namespace quill
