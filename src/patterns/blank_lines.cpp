#include "patterns/blank_lines.h"

#include "patterns/line_types.h"

namespace quill {

void BlankLines::rebuild(const SquareGrid& grid, int n) {
  n_ = n;
  for (auto& counts : counts_) counts.fill(0);
  for (int x = 1; x <= n; ++x) {
    for (int y = 1; y <= n; ++y) type_[x][y] = -1;
  }
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      if (quill::isBlank(grid[x][y])) mark(x, y, markerType(grid[x][y]));
    }
  }
}

void BlankLines::mark(int x, int y, int type) {
  const bool added = type_[x][y] < 0;
  type_[x][y] = static_cast<std::int8_t>(type);
  if (!added) return;
  for (int line = 1; line <= 4; ++line) {
    const int number = lineOf(line, x, y);
    cells_[line - 1][number][counts_[line - 1][number]++] = {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
  }
}

std::span<const BlankLines::Cell> BlankLines::blanksOn(int type, int x, int y) const {
  const int number = lineOf(type, x, y);
  return {cells_[type - 1][number].data(), static_cast<std::size_t>(counts_[type - 1][number])};
}

int BlankLines::lineOf(int type, int x, int y) const {
  switch (type) {
    case 1:
      return y - 1;
    case 2:
      return x - 1;
    case 3:
      return (x + y) % n_;  // constant along steps (+1, -1)
    default:
      return (x - y + n_) % n_;  // constant along steps (+1, +1)
  }
}

void BlankLines::startVisits() {
  if (++visit_ == 0) {
    // After four thousand million checks the marks start over.
    for (auto& column : visited_) column.fill(0);
    visit_ = 1;
  }
}

bool BlankLines::visit(int x, int y) {
  if (visited_[x][y] == visit_) return false;
  visited_[x][y] = visit_;
  return true;
}

}  // namespace quill
