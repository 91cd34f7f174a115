// The window's puzzle maker: the one made over the fast index of blanks, and
// the key cell of a continuation square.
#include "patterns/puzzle_maker_impl.h"

namespace quill {

template std::optional<PuzzleMade> makePuzzleOver<PuzzleBlanks>(Square&, const PuzzleSettings&, FailedLines&,
                                                                const PuzzleSteps&);
template bool acceptsBlankOver<PuzzleBlanks>(const Square&, int, int, int);

void blankKeyCell(Square& square, const ReservedLine& reserved, const std::function<int(int count)>& randomWhole) {
  FailedLines failed{};
  const PuzzleSteps steps{randomWhole, {}, {}, {}};
  maker_detail::PuzzleWork<PuzzleBlanks>(square, &square, nullptr, &failed, steps).blankKeyCell(reserved);
}

}  // namespace quill
