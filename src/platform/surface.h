// The window's drawing surface as a display list of boxes and texts, in pixels.
// Screen and paper both paint this list; tests read it directly.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quill {

// One drawing operation. A box includes both corners, so a box whose corners
// share x (or y) is a one-pixel line and one with equal corners is a pixel.
struct DrawOp {
  enum class Kind { Box, Text };
  Kind kind = Kind::Box;
  float x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // a text uses x1, y1: its top-left corner
  int colour = 0;                          // classic palette number, boxes only
  std::string text;
};

// The 16-colour classic palette, and the three colours squares are drawn in.
namespace palette {
constexpr int black = 0;
constexpr int lightGrey = 7;
constexpr int white = 15;
}  // namespace palette
struct PaletteColour {
  unsigned char red, green, blue;
};
PaletteColour paletteColour(int number);

// Where a grid of cells was drawn, so that assistive technology can offer the
// drawing as a table: its top-left corner, cell size, and the square's
// column and row of its first cell.
struct GridArea {
  float left = 0, top = 0;
  float cellWidth = 0, cellHeight = 0;
  int columns = 0, rows = 0;
  int firstColumn = 1, firstRow = 1;
};

// Where a cell of a grid lies: its top-left corner and size.
struct CellBox {
  float left = 0, top = 0, width = 0, height = 0;
};
inline CellBox cellBox(const GridArea& g, int row, int column) {
  return {g.left + static_cast<float>(column) * g.cellWidth, g.top + static_cast<float>(row) * g.cellHeight,
          g.cellWidth, g.cellHeight};
}

// A cell of one of the grids drawn: the grid's place in grids(), and the
// cell's row and column from 0.
struct GridCell {
  std::size_t grid = 0;
  int row = 0, column = 0;
  friend bool operator==(const GridCell&, const GridCell&) = default;
};

// What changed on the surface, for those who show it or read it out.
struct SurfaceChange {
  enum class Kind {
    Drawn,      // a box or a text
    GridAdded,  // the newest of grids()
    Cleared,    // everything, grids and cursor with it
    CellNamed,  // what `cell` shows changed
    Cursor,     // the cell cursor moved, came or went
    Hint,       // a hint's marks came or went
  };
  Kind kind = Kind::Drawn;
  GridCell cell;
};

class SurfaceListener {
 public:
  virtual ~SurfaceListener() = default;
  virtual void surfaceChanged(const SurfaceChange& change) = 0;
};

class Surface {
 public:
  // Fill box: fills the rectangle and leaves the text position at (x2, y2).
  void fillBox(float x1, float y1, float x2, float y2, int colour);
  // Print text: writes the text with its top-left corner at the text position.
  void printText(const std::string& text);
  // Clear surface: erases everything to the window's background.
  void clear();
  // Notes a grid just drawn; forgotten when the surface is cleared.
  void addGrid(const GridArea& grid);

  // What a cell shows, in words, for assistive technology: the number drawn
  // in the cell of the newest grid holding (x, y); nothing outside the grids.
  void nameCell(float x, float y, const std::string& name);
  // The name of a cell; empty when nothing was named there.
  const std::string& cellName(const GridCell& cell) const;
  // What a reader is told a cell shows: its name, or "blank".
  std::string spokenName(const GridCell& cell) const;
  // The cell of the newest grid holding (x, y).
  std::optional<GridCell> cellAt(float x, float y) const;

  // The keyboard's cell cursor: shown on screen over the drawing, never on
  // paper, and the cell assistive technology is told has the focus. Placed
  // on the cell holding (x, y), if any; gone with the grids.
  void placeCellCursor(float x, float y);
  void hideCellCursor();
  const std::optional<GridCell>& cellCursor() const { return cellCursor_; }

  // A hint: the cells of a line marked on screen (like the cursor, never on
  // paper) and the hinted cell described in words; gone with the grids.
  void showHint(std::vector<GridCell> marked, const GridCell& hinted, const std::string& words);
  void hideHint();
  const std::vector<GridCell>& hintMarks() const { return hintMarks_; }
  // What a reader is told of a cell besides its name: a hint's words.
  std::string cellDescription(const GridCell& cell) const;

  const std::vector<DrawOp>& ops() const { return ops_; }
  const std::vector<GridArea>& grids() const { return grids_; }
  // Counts the clears: grids of the same count are the same grids.
  unsigned clearCount() const { return clearCount_; }

  void setListener(SurfaceListener* listener) { listener_ = listener; }

 private:
  void changed(SurfaceChange::Kind kind, const GridCell& cell = {});

  std::vector<DrawOp> ops_;
  std::vector<GridArea> grids_;
  std::vector<std::vector<std::string>> cellNames_;  // per grid, row by row
  std::optional<GridCell> cellCursor_;
  std::vector<GridCell> hintMarks_;
  std::optional<GridCell> hinted_;
  std::string hintWords_;
  unsigned clearCount_ = 0;
  float currentX_ = 0;
  float currentY_ = 0;
  SurfaceListener* listener_ = nullptr;
};

}  // namespace quill
