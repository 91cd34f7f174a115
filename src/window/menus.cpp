// The print and puzzle menus: each stores one setting or request, then moves
// its group's check mark.
#include "window/main_window.h"

namespace quill {

// The menu item of each choice carries the group's one mark.
void MainWindow::choosePrint(PrintChoice choice) {
  printChoice = choice;
  panswers.setChecked(choice == PrintChoice::Squares);
  ppuzzles.setChecked(choice == PrintChoice::Puzzles);
  pboth.setChecked(choice == PrintChoice::PuzzlesAndAnswers);
}

void MainWindow::chooseHighlight(bool shaded) {
  highlightAnswers = shaded ? 1 : 0;
  highlighted.setChecked(shaded);
  nhighlighted.setChecked(!shaded);
}

void MainWindow::chooseDifficulty(Difficulty level) {
  puzzle.difficultyLevel = level;
  easy.setChecked(level == Difficulty::Easy);
  challenging.setChecked(level == Difficulty::Challenging);
}

void MainWindow::panswers_Click() { choosePrint(PrintChoice::Squares); }
void MainWindow::ppuzzles_Click() { choosePrint(PrintChoice::Puzzles); }
void MainWindow::pboth_Click() { choosePrint(PrintChoice::PuzzlesAndAnswers); }
// Where pages go is the platform's to ask and to keep, for every run after.
void MainWindow::printer_Click() { platform_.choosePrinter(); }
void MainWindow::highlighted_Click() { chooseHighlight(true); }
void MainWindow::nhighlighted_Click() { chooseHighlight(false); }
void MainWindow::easy_Click() { chooseDifficulty(Difficulty::Easy); }
void MainWindow::challenging_Click() { chooseDifficulty(Difficulty::Challenging); }

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
