// Drawing squares on the window's surface: white grid, black lines, one
// number per cell, the former blanks of an answer shaded; a square larger
// than the page drawn and printed tile by tile. Also the cell layout all
// drawing and the practice entry box follow.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "construction/page_geometry.h"
#include "construction/progression.h"
#include "construction/square.h"
#include "platform/platform.h"
#include "platform/surface.h"

namespace quill {

// How one cell is drawn: shaded, its number shifted right of a minus
// sign's room, and its text (none for a blank of a puzzle).
struct CellLook {
  bool shaded = false;
  bool shifted = false;
  std::optional<std::string> text;
};
using CellLookup = std::function<CellLook(int column, int row)>;

// Where a number is written in its cell: 2 right of and 3 below the cell's
// top-left grid corner, and 3 further right for a non-negative number among
// negative ones.
struct TextPlace {
  int x, y;
};
constexpr TextPlace numberPlace(int cellLeft, int cellTop, bool shifted) {
  return {cellLeft + 2 + (shifted ? 3 : 0), cellTop + 3};
}

// What showsquare draws of a square.
struct SquareView {
  bool showAnswers = false;        // every answer, or the puzzle with its blanks empty
  bool shadeFormerBlanks = false;  // with the answers: grey where the puzzle had blanks
};

class SquareDisplay {
 public:
  SquareDisplay(Platform& platform, Surface& surface) : platform_(platform), surface_(surface) {}

  // The cells of a square of size n holding these numbers: characters,
  // width, and how many fit one tile.
  void prepareLayout(int n, const Progression& numbers);
  // Characters of the widest number before the room for a minus sign.
  std::int16_t entryMaxLength() const { return entryMaxLength_; }
  int cellWidth() const { return cellWidth_; }

  // The square with its top-left corner at `at`; a square larger than the
  // page as tiles from the page's corner, each printed as it is drawn.
  void showsquare(const Square& square, const page::Placement& at, const Progression& numbers,
                  const SquareView& view);
  // Background, grid lines and cells of one tile with its top-left corner at `at`.
  void drawTile(const page::Placement& at, const page::Tile& tile, const CellLookup& cellAt);
  // The print step: maximise, print the window as a page, wipe the surface.
  void printPage();
  void clear() { surface_.clear(); }

 private:
  Platform& platform_;
  Surface& surface_;
  int numberChars_ = 0;
  std::int16_t entryMaxLength_ = 0;
  int cellWidth_ = 0;
  int visibleColumns_ = 0;
  int visibleRows_ = 0;
};

}  // namespace quill
