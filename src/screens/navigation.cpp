// Start-up, the moves between the main, information and properties pages, and quitting.
#include "main_window.h"

namespace quill {

void MainWindow::Form_Activate() {
  pagePhase = 0;
  difficultyLevel = 3;
  mainLinesChoice = 1;
  allDiagonalsChoice = 0;
  crossDiagonalChoice = 0;
  crossLineChoice = 0;
  scatteredCrossDiagonalChoice = 0;
  scatteredCrossLineChoice = 0;
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
  printChoice = 2;
  difficultyLevel = 3;
  blankTarget = 100;
  allDiagonalsChoice = 0;
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
    mainLinesChoice = 1;
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
