// Page geometry: where squares and tiles go on the page area, as plain
// arithmetic of the square's size and cell width. The only place that knows
// the page's 753 by 530 units, its margin of 8 and the 18-unit rows.
#pragma once

#include <vector>

#include "platform/surface.h"

namespace quill::page {

// The page area in drawing units; the window's surface and a printed page.
constexpr int surfaceWidth = 753;
constexpr int surfaceHeight = 530;
// The first square's top-left corner is (8, 8); the same room is kept free
// beyond the far sides of the page when it is printed.
constexpr int kMargin = 8;
constexpr int kRowHeight = 18;

// A square larger than the page is printed as a key square and continuation
// squares: the ranks of the key square's top-left corner, this many cells a
// side, give the continuation squares their starting numbers, one each.
constexpr int kKeyCorner = 5;
constexpr int kContinuationSquares = kKeyCorner * kKeyCorner;

// A drawn number takes up to 8 units per character. A cell is 24 units
// wide, or as wide as its numbers when they have more than three characters.
constexpr int kUnitsPerCharacter = 8;
constexpr int cellWidthFor(int numberChars) { return numberChars > 3 ? kUnitsPerCharacter * numberChars : 24; }

// Whether a square of n cells of this width is wider, or taller, than the
// page once its margin is counted. Computed in 64 bits: a size typed into
// the size entry may be far beyond what a page holds.
constexpr bool tooWide(int n, int cellWidth) {
  return static_cast<long long>(n) * cellWidth + kMargin > surfaceWidth;
}
constexpr bool tooTall(int n) { return static_cast<long long>(kRowHeight) * n + kMargin > surfaceHeight; }
constexpr bool largerThanPage(int n, int cellWidth) { return tooWide(n, cellWidth) || tooTall(n); }

// Where a square's top-left corner goes: in drawing units, and counted in
// cells from 1 (the page buffers of a run are indexed by these).
struct Placement {
  int gridLeft = kMargin;
  int gridTop = kMargin;
  int pageColumn = 1;
  int pageRow = 1;
  bool operator==(const Placement&) const = default;
};

// The place after this one: one cell to the right of the square, or, when
// the next square would cross the right edge, the start of the next row of
// squares, one row below.
Placement nextPlacement(Placement at, int n, int cellWidth);
// Whether a square at this place would cross the bottom of the page.
constexpr bool pastBottom(const Placement& at, int n) {
  return at.gridTop + static_cast<long long>(kRowHeight) * n > surfaceHeight;
}
// How many squares one page holds, placed as a run places them; at least one.
int pageCapacity(int n, int cellWidth);

// The cells of one tile of a square: the whole square when it fits, else as
// many as the page holds after the margin, and always at least two.
struct TileSize {
  int visibleColumns = 0;
  int visibleRows = 0;
};
TileSize tileSize(int n, int cellWidth);

// One tile of a square larger than the page, in printing order: left to
// right, then the next band of rows. The last tile of a row or column holds
// what is left, a single column included.
struct Tile {
  int firstColumn, firstRow;  // cells of the square, from 1
  int columns, rows;
  int tileColumnNumber, tileRowNumber;  // its "c,r" label
};
std::vector<Tile> tiles(int n, TileSize size);

// The area a printed page shows, from its top-left corner: the page area
// with its margin on the far sides, widened to take in anything drawn beyond
// it (the label of a tile stands just right of a full-width tile). Every
// front end scales this area to fit its paper, keeping its proportions.
struct PrintedArea {
  double width = 0, height = 0;
};
PrintedArea printedArea(const std::vector<DrawOp>& drawing);

}  // namespace quill::page
