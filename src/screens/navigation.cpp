// Start-up, the moves between the main, information and properties pages, and quitting.
#include "main_window.h"

namespace quill {

void MainWindow::Form_Activate() {
  pagePhase = 0;
  puzzle.difficultyLevel = Difficulty::Challenging;
  puzzle.mainLinesChoice = 1;
  puzzle.allDiagonalsChoice = 0;
  puzzle.crossDiagonalChoice = family::off;
  puzzle.crossLineChoice = family::off;
  puzzle.scatteredCrossDiagonalChoice = family::off;
  puzzle.scatteredCrossLineChoice = family::off;
  practiceActive = 0;
  highlightAnswers = 1;
  options1.setVisible(false);
  platform_.maximiseWindow();
  squareSize = 5;
  startNumber = 1;
  distance = 1;
  runTotal = 20;
  runDone = 0;
  platform_.seedRandom(platform_.secondsSinceMidnight());
  printChoice = PrintChoice::PuzzlesAndAnswers;
  puzzle.difficultyLevel = Difficulty::Challenging;
  puzzle.blankTarget = 100;
  puzzle.allDiagonalsChoice = 0;
}

void MainWindow::quit_Click() { platform_.endProgram(); }
void MainWindow::Form_Unload() { platform_.endProgram(); }
void MainWindow::Form_Terminate() { platform_.endProgram(); }

void MainWindow::Command2_Click() { openPage(Screen::Information); }
void MainWindow::chooseproperties_Click() { openPage(Screen::Properties); }
void MainWindow::Command3_Click() { showMainPage(); }

void MainWindow::Command6_Click() {
  // At least the ordinary lines and main diagonals stay allowed.
  if (!Check2.checked() && !Check3.checked()) {
    Check2.setValue(1);
    puzzle.mainLinesChoice = 1;
  }
  showMainPage();
}

void MainWindow::openPage(Screen page) {
  createWasDisabled = Command1.enabled() ? 0 : 1;
  showScreen(page);
}

void MainWindow::showMainPage() {
  showScreen(Screen::Main);
  refreshCellMetrics();
  refreshPageFit();  // enables Command4 and shows Label19 as the size requires
  if (createWasDisabled == 0) Command1.setEnabled(true);
}

}  // namespace quill
