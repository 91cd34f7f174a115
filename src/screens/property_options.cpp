// The properties page's check boxes: two switches and four exclusive pairs.
#include "main_window.h"

namespace quill {

void MainWindow::Check2_Click() { mainLinesChoice = Check2.checked() ? 1 : 0; }
void MainWindow::Check3_Click() { allDiagonalsChoice = Check3.checked() ? 1 : 0; }

// Clearing the partner runs the partner's handler, which sets the choice to 0
// and does nothing else; the clicked box then sets its own value last.
void MainWindow::pairClicked(Control& clicked, Control& partner, int& choice, int choiceWhenChecked) {
  choice = 0;
  if (clicked.checked()) {
    partner.setValue(0);
    choice = choiceWhenChecked;
  }
}

void MainWindow::Check4_Click() { pairClicked(Check4, Check5, crossDiagonalChoice, 1); }
void MainWindow::Check5_Click() { pairClicked(Check5, Check4, crossDiagonalChoice, 2); }
void MainWindow::Check6_Click() { pairClicked(Check6, Check7, crossLineChoice, 1); }
void MainWindow::Check7_Click() { pairClicked(Check7, Check6, crossLineChoice, 2); }
void MainWindow::Check8_Click() { pairClicked(Check8, Check9, scatteredCrossDiagonalChoice, 1); }
void MainWindow::Check9_Click() { pairClicked(Check9, Check8, scatteredCrossDiagonalChoice, 2); }
void MainWindow::Check10_Click() { pairClicked(Check10, Check11, scatteredCrossLineChoice, 1); }
void MainWindow::Check11_Click() { pairClicked(Check11, Check10, scatteredCrossLineChoice, 2); }

}  // namespace quill
