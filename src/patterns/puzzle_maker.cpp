// The puzzle maker: blanks cells of a finished square so that every blank can
// be worked out through a line of its own.
#include "main_window.h"

namespace quill {

// Not built yet: until the line finders exist, a puzzle is the whole square.
void MainWindow::makePuzzle() {}
void MainWindow::blankKeyCell() {}

}  // namespace quill
