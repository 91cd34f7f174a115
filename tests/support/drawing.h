// Reading a drawing back: where its grids are and which numbers it shows.
#pragma once

#include <string>
#include <vector>

#include "platform/surface.h"

namespace quill::testing {

struct GridBox {
  float left, top, right, bottom;
  bool operator==(const GridBox&) const = default;
};

// The white backgrounds of the grids, in drawing order.
inline std::vector<GridBox> gridBoxes(const std::vector<DrawOp>& ops) {
  std::vector<GridBox> grids;
  for (const DrawOp& op : ops) {
    if (op.kind == DrawOp::Kind::Box && op.colour == 15 && op.x2 > op.x1 && op.y2 > op.y1) {
      grids.push_back({op.x1, op.y1, op.x2, op.y2});
    }
  }
  return grids;
}

// The texts of the cells; tile labels ("2,1") are left out.
inline std::vector<std::string> cellTexts(const std::vector<DrawOp>& ops) {
  std::vector<std::string> texts;
  for (const DrawOp& op : ops) {
    if (op.kind == DrawOp::Kind::Text && op.text.find(',') == std::string::npos) texts.push_back(op.text);
  }
  return texts;
}

struct CellView {
  std::string text;  // empty for a blank
  bool shaded = false;
};

// The cells of an n by n grid, row by row: each one's text and shading.
inline std::vector<CellView> cellsIn(const std::vector<DrawOp>& ops, const GridBox& grid, int n) {
  const float width = (grid.right - grid.left) / static_cast<float>(n);
  const float height = (grid.bottom - grid.top) / static_cast<float>(n);
  std::vector<CellView> cells(static_cast<std::size_t>(n) * n);
  for (const DrawOp& op : ops) {
    if (op.x1 <= grid.left || op.x1 >= grid.right || op.y1 <= grid.top || op.y1 >= grid.bottom) continue;
    const auto column = static_cast<std::size_t>((op.x1 - grid.left) / width);
    const auto row = static_cast<std::size_t>((op.y1 - grid.top) / height);
    CellView& cell = cells[row * n + column];
    if (op.kind == DrawOp::Kind::Text) cell.text = op.text;
    if (op.kind == DrawOp::Kind::Box && op.colour == 7 && op.x2 > op.x1) cell.shaded = true;
  }
  return cells;
}

}  // namespace quill::testing
