// The print and puzzle menus: each stores one setting or request, then moves
// its group's check mark.
#include "window/main_window.h"

namespace quill {

void MainWindow::panswers_Click() {
  printChoice = PrintChoice::Squares;
  panswers.setChecked(true);
  ppuzzles.setChecked(false);
  pboth.setChecked(false);
}

void MainWindow::ppuzzles_Click() {
  printChoice = PrintChoice::Puzzles;
  ppuzzles.setChecked(true);
  panswers.setChecked(false);
  pboth.setChecked(false);
}

void MainWindow::pboth_Click() {
  printChoice = PrintChoice::PuzzlesAndAnswers;
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
  puzzle.difficultyLevel = Difficulty::Easy;
  easy.setChecked(true);
  challenging.setChecked(false);
}

void MainWindow::challenging_Click() {
  puzzle.difficultyLevel = Difficulty::Challenging;
  easy.setChecked(false);
  challenging.setChecked(true);
}

// Requests to the practice loop.
void MainWindow::newsquare_Click() { run_.setRunState(RunState::NewSquare); }

void MainWindow::startover_Click() {
  run_.setRunState(RunState::NewSquare);
  correctCount = 0;
  incorrectCount = 0;
  runDone = 0;
}

void MainWindow::qplaying_Click() { run_.setRunState(RunState::Abort); }

}  // namespace quill
