// Start-up, the moves between the main, information and properties pages,
// the properties page's check boxes, and quitting.
#include "window/main_window.h"

namespace quill {

void MainWindow::Form_Activate() {
  pagePhase = PagePhase{};
  puzzle.difficultyLevel = Difficulty::Challenging;
  puzzle.mainLinesChoice = 1;
  puzzle.allDiagonalsChoice = 0;
  puzzle.clearFamilies();
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
  puzzle.blankTarget = 100;
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

// The properties page's check boxes: two switches and four exclusive pairs.
void MainWindow::Check2_Click() { puzzle.mainLinesChoice = Check2.checked() ? 1 : 0; }
void MainWindow::Check3_Click() { puzzle.allDiagonalsChoice = Check3.checked() ? 1 : 0; }

// Clearing the partner runs the partner's handler, which sets the choice to 0
// and does nothing else; the clicked box then sets its own value last.
void MainWindow::pairClicked(Control& clicked, Control& partner, int& choice, int choiceWhenChecked) {
  choice = family::off;
  if (clicked.checked()) {
    partner.setValue(0);
    choice = choiceWhenChecked;
  }
}

void MainWindow::Check4_Click() { pairClicked(Check4, Check5, puzzle.crossDiagonalChoice, family::onlyMain); }
void MainWindow::Check5_Click() { pairClicked(Check5, Check4, puzzle.crossDiagonalChoice, family::all); }
void MainWindow::Check6_Click() { pairClicked(Check6, Check7, puzzle.crossLineChoice, family::onlyMain); }
void MainWindow::Check7_Click() { pairClicked(Check7, Check6, puzzle.crossLineChoice, family::all); }
void MainWindow::Check8_Click() { pairClicked(Check8, Check9, puzzle.scatteredCrossDiagonalChoice, family::onlyMain); }
void MainWindow::Check9_Click() { pairClicked(Check9, Check8, puzzle.scatteredCrossDiagonalChoice, family::all); }
void MainWindow::Check10_Click() { pairClicked(Check10, Check11, puzzle.scatteredCrossLineChoice, family::onlyMain); }
void MainWindow::Check11_Click() { pairClicked(Check11, Check10, puzzle.scatteredCrossLineChoice, family::all); }

}  // namespace quill
