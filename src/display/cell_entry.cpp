// Hitting a cell and judging an entry.
#include "display/cell_entry.h"

#include "platform/number_text.h"

namespace quill {

std::optional<CellHit> cellUnder(float x, float y, const page::Placement& corner, int n, int cellWidth) {
  CellHit at{1, 1, corner.gridLeft, corner.gridTop};
  const auto hits = [&] {
    const double left = at.cursorX, top = at.cursorY;
    return left <= x && x < left + cellWidth && top <= y && y < top + page::kRowHeight;
  };
  while (!hits()) {
    ++at.originX;
    at.cursorX += cellWidth;
    if (at.originX > n) {
      at.originX = 1;
      at.cursorX = corner.gridLeft;
      ++at.originY;
      at.cursorY += page::kRowHeight;
    }
    if (at.originY > n) return std::nullopt;
  }
  return at;
}

EntryResult judgeEntry(const std::string& typed, double answer) {
  const double value = numericValue(typed);
  if (value == answer) return EntryResult::Right;
  return typed == "0" || value != 0 ? EntryResult::Wrong : EntryResult::NotATry;
}

}  // namespace quill
