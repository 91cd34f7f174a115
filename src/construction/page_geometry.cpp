// Page geometry: placements, capacity and tiles.
#include "construction/page_geometry.h"

#include <algorithm>

namespace quill::page {

namespace {

// Cells of this size in one tile: as many as fit after the margin, at least two.
int cellsPerTile(int cellSize, int pageSize) {
  int used = cellSize + kMargin;
  int cells = 1;
  do {
    used += cellSize;
    ++cells;
  } while (used + cellSize <= pageSize);
  return cells;
}

}  // namespace

Placement nextPlacement(Placement at, int n, int cellWidth) {
  // Squares are n cells wide and one cell apart; rows of squares are n rows
  // high and one row apart.
  const long long width = static_cast<long long>(n) * cellWidth;
  const long long left = at.gridLeft + width + cellWidth;
  at.pageColumn += n;
  if (left + width > surfaceWidth) {
    at.gridLeft = kMargin;
    at.pageColumn = 1;
    at.gridTop += kRowHeight * n + kRowHeight;
    at.pageRow += n;
  } else {
    at.gridLeft = static_cast<int>(left);
  }
  return at;
}

int pageCapacity(int n, int cellWidth) {
  // The first square always counts, even one larger than the page.
  int count = 1;
  for (Placement at = nextPlacement({}, n, cellWidth); !pastBottom(at, n); at = nextPlacement(at, n, cellWidth)) {
    ++count;
  }
  return count;
}

TileSize tileSize(int n, int cellWidth) {
  return {tooWide(n, cellWidth) ? cellsPerTile(cellWidth, surfaceWidth) : n,
          tooTall(n) ? cellsPerTile(kRowHeight, surfaceHeight) : n};
}

std::vector<Tile> tiles(int n, TileSize size) {
  std::vector<Tile> order;
  for (int row = 1, rowNumber = 1; row <= n; row += size.visibleRows, ++rowNumber) {
    for (int column = 1, columnNumber = 1; column <= n; column += size.visibleColumns, ++columnNumber) {
      order.push_back({column, row, std::min(size.visibleColumns, n - column + 1),
                       std::min(size.visibleRows, n - row + 1), columnNumber, rowNumber});
    }
  }
  return order;
}

PrintedArea printedArea(const std::vector<DrawOp>& drawing) {
  PrintedArea area{surfaceWidth + kMargin, surfaceHeight + kMargin};
  for (const DrawOp& op : drawing) {
    // A box includes its far corner's pixel; a text takes up to a character
    // more than its length, one row high.
    const double right = op.kind == DrawOp::Kind::Box ? std::max(op.x1, op.x2 + 1.0f)
                                                      : op.x1 + double{kUnitsPerCharacter} * static_cast<double>(op.text.size() + 1);
    const double bottom = op.kind == DrawOp::Kind::Box ? std::max(op.y1, op.y2 + 1.0f) : op.y1 + double{kRowHeight};
    area.width = std::max(area.width, right);
    area.height = std::max(area.height, bottom);
  }
  return area;
}

}  // namespace quill::page
