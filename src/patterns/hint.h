// The hint of practice: a blank that can be worked out now, through the line
// it was made for, and that reasoning in words. Every front end shows this
// same hint; it only draws the marks and moves the focus.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "construction/square.h"
#include "patterns/line_types.h"

namespace quill {

struct Hint {
  Position cell;                 // the blank to work on
  int lineType = 0;              // the line its marker names
  std::vector<Position> others;  // the line's other cells, in the order it is walked
  std::string words;             // "Hint: row 3 holds 14, 23, 1 and 7, which make 45; the magic total is 65"
};

// The cells of the line of `type` walked from `anchor` as the puzzle maker
// walks it, the anchor last.
std::vector<Position> lineCells(int n, int type, Position anchor);

// The blank at `preferred` when no other blank lies on its own line, else the
// first such blank in reading order (row by row, left to right); nothing
// when no blank is left. `magicTotal` is what each line adds up to.
std::optional<Hint> findHint(const Square& puzzle, Position preferred, double magicTotal);

}  // namespace quill
