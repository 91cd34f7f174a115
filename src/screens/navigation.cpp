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

void MainWindow::Command2_Click() { openPage(Page::Information); }
void MainWindow::chooseproperties_Click() { openPage(Page::Properties); }
void MainWindow::Command3_Click() { showMainPage(Page::Information); }

void MainWindow::Command6_Click() {
  // At least the ordinary lines and main diagonals stay allowed.
  if (!Check2.checked() && !Check3.checked()) {
    Check2.setValue(1);
    mainLinesChoice = 1;
  }
  showMainPage(Page::Properties);
}

void MainWindow::openPage(Page page) {
  chooseproperties.setEnabled(false);
  setAvailable({&Label1, &Text1, &Label8, &Text3, &Text2, &text4, &Text5}, false);
  setVisible({&Label2, &Label3, &Label4, &Label5, &Label6, &Label7, &Label9, &Label10, &Label11,
              &Label18, &Label20, &Text7, &Check1, &Check12, &Label19},
             false);
  setAvailable({&Command2, &Command4}, false);
  createWasDisabled = Command1.enabled() ? 0 : 1;
  Command1.setEnabled(false);
  Command1.setVisible(false);
  options2.setVisible(false);

  if (page == Page::Information) {
    showInformationPage(true);
  } else {
    showPropertiesPage(true);
  }
}

void MainWindow::showInformationPage(bool shown) {
  setVisible({&Label12, &Label13, &Label14, &Label15, &Label16, &Label17, &Picture1, &Picture2}, shown);
  setAvailable({&Command3}, shown);
}

void MainWindow::showPropertiesPage(bool shown) {
  setVisible({&Label21, &Label22, &Check2, &Check3, &Check4, &Check5, &Check6, &Check7, &Check8, &Check9,
              &Check10, &Check11, &Picture3, &Picture4, &Picture5, &Picture6, &Command6},
             shown);
}

void MainWindow::showMainPage(Page leaving) {
  if (leaving == Page::Properties) showPropertiesPage(false);
  showInformationPage(false);
  chooseproperties.setEnabled(true);

  Label18.setVisible(true);
  setAvailable({&Command2}, true);
  setVisible({&Command4, &Check12}, true);

  refreshCellMetrics();
  refreshPageFit();  // enables Command4 and shows Label19 as the size requires

  setVisible({&Label9, &Label10, &Label11}, true);
  setAvailable({&Text5, &text4}, true);
  Command1.setVisible(true);
  options2.setVisible(true);
  if (createWasDisabled == 0) Command1.setEnabled(true);

  setVisible({&Label20, &Text7, &Check1}, true);
  setAvailable({&Label8, &Text3, &Label1, &Text1}, true);
  setVisible({&Label3, &Label4, &Label5, &Label6, &Label7, &Label2}, true);
  setAvailable({&Text2}, true);
}

}  // namespace quill
