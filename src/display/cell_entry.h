// The practice's cell entry: which cell of the drawn puzzle a click falls
// on, and what the number typed for a cell counts as.
#pragma once

#include <optional>
#include <string>

#include "construction/page_geometry.h"

namespace quill {

// A cell of the grid and its top-left corner on the surface.
struct CellHit {
  int originX, originY;  // the cell, (column, row) from 1
  int cursorX, cursorY;  // its corner, in drawing units
};

// The cell under (x, y) of an n by n grid drawn from `corner`: every cell
// from the corner, row by row, the first whose box holds the point. None
// outside the grid.
std::optional<CellHit> cellUnder(float x, float y, const page::Placement& corner, int n, int cellWidth);

// What Enter with `typed` in the entry box means for a cell holding `answer`:
// the leading number of the text is compared; a wrong entry counts as a try
// only when it is a number ("0", or any text whose value is not 0).
enum class EntryResult { Right, Wrong, NotATry };
EntryResult judgeEntry(const std::string& typed, double answer);

}  // namespace quill
