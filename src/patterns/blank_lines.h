// The blanks of a puzzle in the making, line by line: for every row, column
// and diagonal the blank cells on it, and each blank's line type. With it the
// dependency check goes through the blanks of a straight line without walking
// its n cells. Visit marks start afresh in constant time.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "construction/window_state.h"

namespace quill {

class BlankLines {
 public:
  struct Cell {
    std::int16_t x, y;
  };

  // Reads every blank of the n by n grid afresh.
  void rebuild(const SquareGrid& grid, int n);
  // (x, y) is now a blank tied to `type`: a new blank, or one whose type changed.
  void mark(int x, int y, int type);
  bool isBlank(int x, int y) const { return type_[x][y] >= 0; }
  // The marker type of a blank; 0 for a blank that holds no marker.
  int typeAt(int x, int y) const { return type_[x][y]; }
  // The blanks on the straight line of type 1..4 through (x, y).
  std::span<const Cell> blanksOn(int type, int x, int y) const;
  // Whether (x, y) lies on the straight line of type 1..4 through (ax, ay).
  bool sameLine(int type, int ax, int ay, int x, int y) const { return lineOf(type, ax, ay) == lineOf(type, x, y); }

  // Forgets every visit.
  void startVisits();
  // Marks (x, y) visited; true when it was not visited yet.
  bool visit(int x, int y);

 private:
  // The number of the straight line of type 1..4 through (x, y): 0..n-1.
  int lineOf(int type, int x, int y) const;

  int n_ = 0;
  std::array<std::array<std::array<Cell, kMaxSquareSize>, kMaxSquareSize>, 4> cells_{};
  std::array<std::array<int, kMaxSquareSize>, 4> counts_{};
  std::array<std::array<std::int8_t, kGridExtent>, kGridExtent> type_{};  // -1: not blank
  std::array<std::array<std::uint32_t, kGridExtent>, kGridExtent> visited_{};
  std::uint32_t visit_ = 0;
};

}  // namespace quill
