// The print and puzzle menus: each stores one setting or request, then moves
// its group's check mark.
#include "main_window.h"

namespace quill {

void MainWindow::panswers_Click() {
  printChoice = 0;
  panswers.setChecked(true);
  ppuzzles.setChecked(false);
  pboth.setChecked(false);
}

void MainWindow::ppuzzles_Click() {
  printChoice = 1;
  ppuzzles.setChecked(true);
  panswers.setChecked(false);
  pboth.setChecked(false);
}

void MainWindow::pboth_Click() {
  printChoice = 2;
  ppuzzles.setChecked(false);
  panswers.setChecked(false);
  pboth.setChecked(true);
}

void MainWindow::highlighted_Click() {
  highlightAnswers = 1;
  highlighted.setChecked(true);
  nhighlighted.setChecked(false);
}

void MainWindow::nhighlighted_Click() {
  highlightAnswers = 0;
  highlighted.setChecked(false);
  nhighlighted.setChecked(true);
}

void MainWindow::easy_Click() {
  difficultyLevel = 1;
  easy.setChecked(true);
  challenging.setChecked(false);
}

void MainWindow::challenging_Click() {
  difficultyLevel = 3;
  easy.setChecked(false);
  challenging.setChecked(true);
}

// Requests to the practice loop: -7 drops the puzzle for a new one, -1 ends it.
void MainWindow::newsquare_Click() { runState = -7; }

void MainWindow::startover_Click() {
  runState = -7;
  correctCount = 0;
  incorrectCount = 0;
  runDone = 0;
}

void MainWindow::qplaying_Click() { runState = -1; }

}  // namespace quill
