// The square a run or a practice works on: its size and its two grids,
// indexed [x][y] (column, row) from 1, sized for the largest square.
#pragma once

#include <array>

namespace quill {

constexpr int kMaxSquareSize = 101;
constexpr int kGridExtent = 104;  // indexes 0..103

// A cell of the square at or above this value is blank: the unfilled marker
// during construction, and the blank markers of a puzzle (1E+200, 1E+201, ...).
constexpr double kBlankMarker = 1e200;
constexpr bool isBlank(double cell) { return cell >= kBlankMarker; }

// A step or relative position on the square.
struct Offset {
  int dx, dy;
};

// The square is a torus: back into 1..n after one step. No step or relative
// position reaches n, so one correction always suffices.
constexpr int wrap(int c, int n) {
  if (c > n) return c - n;
  if (c < 1) return c + n;
  return c;
}

template <int Extent>
using GridOf = std::array<std::array<double, Extent>, Extent>;
using SquareGrid = GridOf<kGridExtent>;

struct Square {
  int n = 0;
  // The puzzle: the numbers, with blank markers where the puzzle maker
  // blanked a cell and the practice has not filled it yet.
  SquareGrid squareNumbers{};
  // The ranks while the square is built, then its numbers: the answers.
  SquareGrid squareRanks{};
};

}  // namespace quill
