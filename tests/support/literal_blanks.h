// The dependency check exactly as first written down, as an index of blanks
// the puzzle maker can be made with: it keeps nothing and walks the grid for
// every question; the queue is cleared entry by entry, searched linearly for
// every blank met, and the walk of a line starts again after each blank it
// queues. Slow; the reference the fast index is held to.
#pragma once

#include <array>
#include <vector>

#include "patterns/puzzle_maker.h"

namespace quill::testing {

class LiteralBlanks {
 public:
  struct LineSurvey {
    bool taken = false;
    int blanks = 0;
  };

  void rebuild(const SquareGrid& grid, int n, bool /*keepReach*/) {
    grid_ = &grid;
    n_ = n;
  }
  void mark(int /*x*/, int /*y*/, int /*type*/) {}  // the grid itself holds the blanks
  LineSurvey survey(int type, int x, int y) const;
  bool closesCycle(int x, int y, int type);

 private:
  const SquareGrid* grid_ = nullptr;
  int n_ = 0;
};


}  // namespace quill::testing

namespace quill {
extern template std::optional<PuzzleMade> makePuzzleOver<testing::LiteralBlanks>(Square&, const PuzzleSettings&,
                                                                                FailedLines&, const PuzzleSteps&);
}  // namespace quill
