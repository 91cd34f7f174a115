// The display list behind the window's drawing and its printed pages.
#include "platform/surface.h"

#include <algorithm>
#include <array>

namespace quill {

PaletteColour paletteColour(int number) {
  static constexpr std::array<PaletteColour, 16> palette{{
      {0, 0, 0},       {0, 0, 128},   {0, 128, 0},   {0, 128, 128},
      {128, 0, 0},     {128, 0, 128}, {128, 128, 0}, {192, 192, 192},
      {128, 128, 128}, {0, 0, 255},   {0, 255, 0},   {0, 255, 255},
      {255, 0, 0},     {255, 0, 255}, {255, 255, 0}, {255, 255, 255},
  }};
  return palette[static_cast<std::size_t>(number & 15)];
}

void Surface::fillBox(float x1, float y1, float x2, float y2, int colour) {
  ops_.push_back(DrawOp{DrawOp::Kind::Box, x1, y1, x2, y2, colour, {}});
  currentX_ = x2;
  currentY_ = y2;
  changed(SurfaceChange::Kind::Drawn);
}

void Surface::printText(const std::string& text) {
  ops_.push_back(DrawOp{DrawOp::Kind::Text, currentX_, currentY_, currentX_, currentY_, 0, text});
  changed(SurfaceChange::Kind::Drawn);
}

void Surface::addGrid(const GridArea& grid) {
  grids_.push_back(grid);
  cellNames_.emplace_back(static_cast<std::size_t>(std::max(grid.rows, 0)) * static_cast<std::size_t>(std::max(grid.columns, 0)));
  changed(SurfaceChange::Kind::GridAdded, {grids_.size() - 1, 0, 0});
}

void Surface::clear() {
  ops_.clear();
  grids_.clear();
  cellNames_.clear();
  cellCursor_.reset();
  hintMarks_.clear();
  hinted_.reset();
  hintWords_.clear();
  ++clearCount_;
  currentX_ = 0;
  currentY_ = 0;
  changed(SurfaceChange::Kind::Cleared);
}

std::optional<GridCell> Surface::cellAt(float x, float y) const {
  // Newest first: a grid drawn over another is the one seen.
  for (std::size_t i = grids_.size(); i-- > 0;) {
    const GridArea& g = grids_[i];
    if (g.cellWidth <= 0 || g.cellHeight <= 0 || !(x >= g.left && y >= g.top)) continue;
    // Compared before the conversion, so that no point far away overflows it.
    const float column = (x - g.left) / g.cellWidth;
    const float row = (y - g.top) / g.cellHeight;
    if (column < static_cast<float>(g.columns) && row < static_cast<float>(g.rows)) {
      return GridCell{i, static_cast<int>(row), static_cast<int>(column)};
    }
  }
  return std::nullopt;
}

void Surface::nameCell(float x, float y, const std::string& name) {
  const std::optional<GridCell> cell = cellAt(x, y);
  if (!cell) return;
  std::string& named = cellNames_[cell->grid][static_cast<std::size_t>(cell->row * grids_[cell->grid].columns + cell->column)];
  if (named == name) return;
  named = name;
  changed(SurfaceChange::Kind::CellNamed, *cell);
}

const std::string& Surface::cellName(const GridCell& cell) const {
  static const std::string none;
  if (cell.grid >= grids_.size()) return none;
  const GridArea& g = grids_[cell.grid];
  if (cell.row < 0 || cell.column < 0 || cell.row >= g.rows || cell.column >= g.columns) return none;
  return cellNames_[cell.grid][static_cast<std::size_t>(cell.row * g.columns + cell.column)];
}

std::string Surface::spokenName(const GridCell& cell) const {
  const std::string& name = cellName(cell);
  return name.empty() ? "blank" : name;
}

void Surface::placeCellCursor(float x, float y) {
  const std::optional<GridCell> cell = cellAt(x, y);
  if (!cell || cell == cellCursor_) return;
  cellCursor_ = cell;
  changed(SurfaceChange::Kind::Cursor, *cell);
}

void Surface::hideCellCursor() {
  if (!cellCursor_) return;
  cellCursor_.reset();
  changed(SurfaceChange::Kind::Cursor);
}

void Surface::showHint(std::vector<GridCell> marked, const GridCell& hinted, const std::string& words) {
  hintMarks_ = std::move(marked);
  hinted_ = hinted;
  hintWords_ = words;
  changed(SurfaceChange::Kind::Hint, hinted);
}

void Surface::hideHint() {
  if (!hinted_) return;
  const GridCell was = *hinted_;
  hintMarks_.clear();
  hinted_.reset();
  hintWords_.clear();
  changed(SurfaceChange::Kind::Hint, was);
}

std::string Surface::cellDescription(const GridCell& cell) const { return hinted_ == cell ? hintWords_ : ""; }

void Surface::changed(SurfaceChange::Kind kind, const GridCell& cell) {
  if (listener_ != nullptr) listener_->surfaceChanged(SurfaceChange{kind, cell});
}

}  // namespace quill
