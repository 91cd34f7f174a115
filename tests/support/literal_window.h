// The window with the dependency check exactly as first written down: the
// queue cleared entry by entry, a linear search of it for every blank met,
// and (in the trying form) the line's walk restarting after each blank it
// queues. Slow; the reference the fast check is held to, answer for answer
// and, through the whole maker, grid for grid.
#pragma once

#include "main_window.h"

namespace quill::testing {

class LiteralWindow : public MainWindow {
 public:
  using MainWindow::MainWindow;
  void makeblanks() override { walkDependencies(true); }
  void checkChosenLine() override { walkDependencies(false); }

 private:
  void walkDependencies(bool restartAfterQueueing);
};

}  // namespace quill::testing
