// The window's puzzle maker: the one made over the fast index of blanks.
#include "patterns/puzzle_maker_impl.h"

namespace quill {

template class BasicPuzzleMaker<PuzzleBlanks>;

}  // namespace quill
