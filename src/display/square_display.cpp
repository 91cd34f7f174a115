// Drawing one square on the surface: white grid, black lines, one number per
// cell; tiles of a square larger than the page are printed one by one.
#include "main_window.h"
#include "platform/number_text.h"

namespace quill {

namespace {

// How many cells of this size one tile holds: as many as fit after the
// margin of 8, and always at least two.
int cellsPerTile(int cellSize, int pageSize) {
  int used = cellSize + 8;
  int cells = 1;
  do {
    used += cellSize;
    ++cells;
  } while (used + cellSize <= pageSize);
  return cells;
}

constexpr int kBlack = 0;
constexpr int kLightGrey = 7;
constexpr int kWhite = 15;
}  // namespace

void MainWindow::prepareLayout(bool sizeEntryBox) {
  const int n = squareSize;
  numberChars = widestNumberChars();
  entryMaxLength = static_cast<std::int16_t>(numberChars);  // before the sign character
  if (needsSignCharacter()) numberChars += 1;
  cellWidth = cellWidthFor(numberChars);
  visibleColumns = n;
  visibleRows = n;
  if (sizeEntryBox) {
    Text6.setMaxLength(entryMaxLength);
    Text6.setPixelSize(cellWidth + 1, kRowHeight);
  }

  // A square larger than the page is drawn in tiles as large as the page holds.
  if (cellWidth * n + 8 > surfaceWidth) visibleColumns = cellsPerTile(cellWidth, surfaceWidth);
  if (kRowHeight * n + 8 > surfaceHeight) visibleRows = cellsPerTile(kRowHeight, surfaceHeight);
}

void MainWindow::drawTile(int firstColumn, const std::function<CellLook(int column, int row)>& cellAt) {
  const int w = cellWidth;
  const int right = gridLeft + visibleColumns * w;
  const int bottom = gridTop + visibleRows * kRowHeight;
  auto& surface = this->surface();
  const auto at = [](int value) { return static_cast<float>(value); };
  surface.fillBox(at(gridLeft), at(gridTop), at(right), at(bottom), kWhite);

  // visibleColumns + 1 vertical and visibleRows + 1 horizontal lines.
  for (int x = gridLeft, y = gridTop; x <= right || y <= bottom; x += w, y += kRowHeight) {
    if (x <= right) surface.fillBox(at(x), at(gridTop), at(x), at(bottom), kBlack);
    if (y <= bottom) surface.fillBox(at(gridLeft), at(y), at(right), at(y), kBlack);
  }

  // Each number starts 2 right of and 3 below its cell's corner; a
  // non-negative number among negative ones 3 further right.
  drawX = gridLeft + 2;
  drawY = gridTop + 3;
  for (;;) {
    const CellLook look = cellAt(cursorX, cursorY);
    if (look.shaded) surface.fillBox(at(drawX - 1), at(drawY - 2), at(drawX + w - 3), at(drawY + 14), kLightGrey);
    const int textX = drawX + (look.shifted ? 3 : 0);
    surface.fillBox(at(textX), at(drawY), at(textX), at(drawY), kWhite);
    if (look.shaded) surface.fillBox(at(textX), at(drawY), at(textX), at(drawY), kLightGrey);
    if (look.text) surface.printText(*look.text);

    drawX += w;
    ++cursorX;
    if (drawX <= right) continue;
    drawX = gridLeft + 2;
    drawY += kRowHeight;
    if (drawY > bottom) return;
    cursorX = firstColumn;
    ++cursorY;
  }
}

void MainWindow::showsquare() {
  const int n = squareSize;
  const int w = cellWidth;
  const bool tooWide = w * n + 8 > surfaceWidth;
  const bool tooTall = kRowHeight * n + 8 > surfaceHeight;
  const bool holdsNegatives = startNumber < 0 || lastNumber() < 0;
  const bool shading = printChoice != 0 && showAnswers == 1 && highlightAnswers == 1;

  int firstColumn = 1;
  int firstRow = 1;
  cursorX = 1;
  cursorY = 1;
  savedVisibleColumns = visibleColumns;
  savedVisibleRows = visibleRows;
  tileColumnNumber = 1;
  tileRowNumber = 1;
  const auto cellAt = [&](int x, int y) {
    const double puzzle = squareNumbers[x][y];
    CellLook look;
    look.shaded = shading && isBlank(puzzle);
    look.shifted = holdsNegatives && puzzle >= 0;  // a blank's marker counts as non-negative
    if (showAnswers == 1) {
      look.text = numberText(squareRanks[x][y]);
    } else if (!isBlank(puzzle)) {
      look.text = numberText(puzzle);
    }
    return look;
  };

  for (;;) {
    if (tooWide || tooTall) {
      // The tile's label "column,row" stands to the right of a full-width tile.
      const auto labelX = static_cast<float>(visibleColumns * w + 14);
      surface().fillBox(labelX, 8, labelX, 8, kLightGrey);
      surface().printText(numberText(tileColumnNumber) + "," + numberText(tileRowNumber));
    }
    if (n - cursorX < visibleColumns && tooWide) visibleColumns = n - cursorX + 1;
    if (n - cursorY < visibleRows && tooTall) visibleRows = n - cursorY + 1;
    drawTile(firstColumn, cellAt);
    visibleColumns = savedVisibleColumns;
    visibleRows = savedVisibleRows;
    if (!tooWide && !tooTall) return;

    // Every tile goes on paper, the one-column last tile of a wide square included.
    platform_.maximiseWindow();
    platform_.printWindow();
    surface().clear();
    if (cursorX == n + 1 && cursorY == n) return;
    if (tooWide && cursorX < n + 1) {
      ++tileColumnNumber;
      firstColumn = cursorX;
      cursorY = firstRow;
    } else if (tooTall && cursorX == n + 1 && cursorY < n) {
      tileColumnNumber = 1;
      ++tileRowNumber;
      cursorX = 1;
      firstColumn = 1;
      cursorY += 1;
      firstRow = cursorY;
    } else {
      return;  // unreachable: every tile ends at the right edge or the bottom
    }
  }
}

}  // namespace quill
