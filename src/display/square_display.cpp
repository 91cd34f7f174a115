// Drawing one square on the surface: white grid, black lines, one number per
// cell; tiles of a square larger than the page are printed one by one.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

void MainWindow::prepareLayout(bool sizeEntryBox) {
  const int n = squareSize;
  const Progression numbers = progression();
  numberChars = numbers.widestNumberChars();
  entryMaxLength = static_cast<std::int16_t>(numberChars);  // before the sign character
  numberChars = numbers.numberChars();
  cellWidth = page::cellWidthFor(numberChars);
  if (sizeEntryBox) {
    Text6.setMaxLength(entryMaxLength);
    Text6.setPixelSize(cellWidth + 1, page::kRowHeight);
  }
  // A square larger than the page is drawn in tiles as large as the page holds.
  const page::TileSize tile = page::tileSize(n, cellWidth);
  visibleColumns = tile.visibleColumns;
  visibleRows = tile.visibleRows;
}

void MainWindow::printPage() {
  platform_.maximiseWindow();
  platform_.printWindow();
  surface().clear();
}

void MainWindow::drawTile(const page::Placement& at, const page::Tile& tile, const CellLookup& cellAt) {
  const int w = cellWidth;
  const int h = page::kRowHeight;
  const int right = at.gridLeft + tile.columns * w;
  const int bottom = at.gridTop + tile.rows * h;
  auto& surface = this->surface();
  const auto f = [](int value) { return static_cast<float>(value); };
  surface.fillBox(f(at.gridLeft), f(at.gridTop), f(right), f(bottom), palette::white);

  // columns + 1 vertical and rows + 1 horizontal lines, drawn in pairs.
  for (int x = at.gridLeft, y = at.gridTop; x <= right || y <= bottom; x += w, y += h) {
    if (x <= right) surface.fillBox(f(x), f(at.gridTop), f(x), f(bottom), palette::black);
    if (y <= bottom) surface.fillBox(f(at.gridLeft), f(y), f(right), f(y), palette::black);
  }

  // Each number starts 2 right of and 3 below its cell's corner; a
  // non-negative number among negative ones 3 further right.
  for (int r = 0; r < tile.rows; ++r) {
    for (int c = 0; c < tile.columns; ++c) {
      const int drawX = at.gridLeft + 2 + c * w;
      const int drawY = at.gridTop + 3 + r * h;
      const CellLook look = cellAt(tile.firstColumn + c, tile.firstRow + r);
      if (look.shaded) surface.fillBox(f(drawX - 1), f(drawY - 2), f(drawX + w - 3), f(drawY + 14), palette::lightGrey);
      const int textX = drawX + (look.shifted ? 3 : 0);
      surface.fillBox(f(textX), f(drawY), f(textX), f(drawY), palette::white);
      if (look.shaded) surface.fillBox(f(textX), f(drawY), f(textX), f(drawY), palette::lightGrey);
      if (look.text) surface.printText(*look.text);
    }
  }
}

void MainWindow::showsquare() {
  const int n = squareSize;
  const bool tiled = page::largerThanPage(n, cellWidth);
  const bool holdsNegatives = progression().holdsNegatives();
  const bool shading = printChoice != 0 && showAnswers == 1 && highlightAnswers == 1;
  const auto cellAt = [&](int x, int y) {
    const double shown = square().squareNumbers[x][y];
    CellLook look;
    look.shaded = shading && isBlank(shown);
    look.shifted = holdsNegatives && shown >= 0;  // a blank's marker counts as non-negative
    if (showAnswers == 1) {
      look.text = numberText(square().squareRanks[x][y]);
    } else if (!isBlank(shown)) {
      look.text = numberText(shown);
    }
    return look;
  };

  for (const page::Tile& tile : page::tiles(n, {visibleColumns, visibleRows})) {
    if (tiled) {
      // The tile's label "column,row" stands to the right of a full-width tile.
      const auto labelX = static_cast<float>(visibleColumns * cellWidth + 14);
      const auto labelY = static_cast<float>(page::kMargin);
      surface().fillBox(labelX, labelY, labelX, labelY, palette::lightGrey);
      surface().printText(numberText(tile.tileColumnNumber) + "," + numberText(tile.tileRowNumber));
    }
    drawTile(placement, tile, cellAt);
    // Every tile goes on paper, the one-column last tile of a wide square included.
    if (tiled) printPage();
  }
}

}  // namespace quill
