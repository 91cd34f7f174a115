// The properties page's check boxes: two switches and four exclusive pairs.
#include "main_window.h"

namespace quill {

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
