// The display list behind the window's drawing and its printed pages.
#include "platform/surface.h"

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
  changed();
}

void Surface::printText(const std::string& text) {
  ops_.push_back(DrawOp{DrawOp::Kind::Text, currentX_, currentY_, currentX_, currentY_, 0, text});
  changed();
}

void Surface::addGrid(const GridArea& grid) {
  grids_.push_back(grid);
  ++gridGeneration_;
  changed();
}

void Surface::clear() {
  ops_.clear();
  grids_.clear();
  ++gridGeneration_;
  currentX_ = 0;
  currentY_ = 0;
  changed();
}

void Surface::changed() {
  if (listener_ != nullptr) listener_->surfaceChanged();
}

}  // namespace quill
