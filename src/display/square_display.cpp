// Drawing one square on the surface, and its tiles.
#include "display/square_display.h"

#include "platform/number_text.h"

namespace quill {

void SquareDisplay::prepareLayout(int n, const Progression& numbers) {
  entryMaxLength_ = static_cast<std::int16_t>(numbers.widestNumberChars());
  numberChars_ = numbers.numberChars();
  cellWidth_ = page::cellWidthFor(numberChars_);
  // A square larger than the page is drawn in tiles as large as the page holds.
  const page::TileSize tile = page::tileSize(n, cellWidth_);
  visibleColumns_ = tile.visibleColumns;
  visibleRows_ = tile.visibleRows;
}

void SquareDisplay::printPage() {
  platform_.maximiseWindow();
  platform_.printWindow();
  surface_.clear();
}

void SquareDisplay::drawTile(const page::Placement& at, const page::Tile& tile, const CellLookup& cellAt) {
  const int w = cellWidth_;
  const int h = page::kRowHeight;
  const int right = at.gridLeft + tile.columns * w;
  const int bottom = at.gridTop + tile.rows * h;
  const auto f = [](int value) { return static_cast<float>(value); };
  surface_.fillBox(f(at.gridLeft), f(at.gridTop), f(right), f(bottom), palette::white);
  surface_.addGrid({f(at.gridLeft), f(at.gridTop), f(w), f(h), tile.columns, tile.rows, tile.firstColumn, tile.firstRow});

  // columns + 1 vertical and rows + 1 horizontal lines, drawn in pairs.
  for (int x = at.gridLeft, y = at.gridTop; x <= right || y <= bottom; x += w, y += h) {
    if (x <= right) surface_.fillBox(f(x), f(at.gridTop), f(x), f(bottom), palette::black);
    if (y <= bottom) surface_.fillBox(f(at.gridLeft), f(y), f(right), f(y), palette::black);
  }

  for (int r = 0; r < tile.rows; ++r) {
    for (int c = 0; c < tile.columns; ++c) {
      const int cellLeft = at.gridLeft + c * w;
      const int cellTop = at.gridTop + r * h;
      const CellLook look = cellAt(tile.firstColumn + c, tile.firstRow + r);
      // The shading is the cell's inside, one pixel clear of its four lines.
      if (look.shaded) {
        surface_.fillBox(f(cellLeft + 1), f(cellTop + 1), f(cellLeft + w - 1), f(cellTop + h - 1), palette::lightGrey);
      }
      const TextPlace text = numberPlace(cellLeft, cellTop, look.shifted);
      surface_.fillBox(f(text.x), f(text.y), f(text.x), f(text.y), palette::white);
      if (look.shaded) surface_.fillBox(f(text.x), f(text.y), f(text.x), f(text.y), palette::lightGrey);
      if (look.text) {
        surface_.printText(*look.text);
        const TextPlace unshifted = numberPlace(cellLeft, cellTop, false);
        surface_.nameCell(f(unshifted.x), f(unshifted.y), *look.text);
      }
    }
  }
}

void SquareDisplay::showsquare(const Square& square, const page::Placement& at, const Progression& numbers,
                               const SquareView& view) {
  const int n = square.n;
  const bool tiled = page::largerThanPage(n, cellWidth_);
  const bool holdsNegatives = numbers.holdsNegatives();
  const auto cellAt = [&](int x, int y) {
    const double shown = square.squareNumbers[x][y];
    CellLook look;
    look.shaded = view.showAnswers && view.shadeFormerBlanks && isBlank(shown);
    look.shifted = holdsNegatives && shown >= 0;  // a blank's marker counts as non-negative
    if (view.showAnswers) {
      look.text = numberText(square.squareRanks[x][y]);
    } else if (!isBlank(shown)) {
      look.text = numberText(shown);
    }
    return look;
  };

  for (const page::Tile& tile : page::tiles(n, {visibleColumns_, visibleRows_})) {
    if (tiled) {
      // The tile's label "column,row" stands to the right of a full-width tile.
      const auto labelX = static_cast<float>(visibleColumns_ * cellWidth_ + 14);
      const auto labelY = static_cast<float>(page::kMargin);
      surface_.fillBox(labelX, labelY, labelX, labelY, palette::lightGrey);
      surface_.printText(numberText(tile.tileColumnNumber) + "," + numberText(tile.tileRowNumber));
    }
    drawTile(at, tile, cellAt);
    // Every tile goes on paper, the one-column last tile of a wide square included.
    if (tiled) printPage();
  }
}

}  // namespace quill
