// The 24 line types a puzzle blank can be tied to, on the square seen as a
// torus: 1 row, 2 column, 3 the diagonal up to the right, 4 the diagonal down
// to the right (n cells each), and 5..24 five-cell patterns in four families
// of five: Cross-Diagonal (5..9), Scattered-Cross-Diagonal (10..14),
// Cross-Line (15..19) and Scattered-Cross-Line (20..24). A pattern's anchor is
// its centre (first type of a family) or the end of one of its arms.
#pragma once

#include <array>

#include "construction/square.h"

namespace quill {

constexpr int kLineTypes = 24;

constexpr bool isStraight(int type) { return type >= 1 && type <= 4; }
constexpr bool isPattern(int type) { return type >= 5 && type <= 24; }

// The number 0..n-1 of the straight line of type 1..4 through (x, y): the
// row, the column, or the diagonal, which keeps x + y (type 3) or x − y
// (type 4) the same modulo n.
constexpr int straightLineNumber(int type, int x, int y, int n) {
  switch (type) {
    case 1:
      return y - 1;
    case 2:
      return x - 1;
    case 3:
      return (x + y) % n;
    default:
      return (x - y + n) % n;
  }
}

// A cell of the square, (column, row) from 1.
struct Position {
  int x, y;
};

// The step of a straight line, types 1..4.
constexpr std::array<Offset, 5> kStraightStep = {{{0, 0}, {1, 0}, {0, 1}, {1, -1}, {1, 1}}};

// The four cells of a pattern other than its anchor, relative to the anchor,
// in the order a walk visits them; the walk then returns to the anchor.
constexpr std::array<std::array<Offset, 4>, 25> kPatternCells = {{
    {}, {}, {}, {}, {},
    {{{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}},   // 5  Cross-Diagonal, anchor at the centre
    {{{2, 0}, {2, 2}, {0, 2}, {1, 1}}},       // 6
    {{{-2, 0}, {-2, 2}, {0, 2}, {-1, 1}}},    // 7
    {{{0, -2}, {2, -2}, {2, 0}, {1, -1}}},    // 8
    {{{0, -2}, {-2, -2}, {-2, 0}, {-1, -1}}}, // 9
    {{{-2, -2}, {2, -2}, {2, 2}, {-2, 2}}},   // 10 Scattered-Cross-Diagonal
    {{{4, 0}, {4, 4}, {0, 4}, {2, 2}}},       // 11
    {{{-4, 0}, {-4, 4}, {0, 4}, {-2, 2}}},    // 12
    {{{0, -4}, {4, -4}, {4, 0}, {2, -2}}},    // 13
    {{{0, -4}, {-4, -4}, {-4, 0}, {-2, -2}}}, // 14
    {{{-1, 0}, {0, -1}, {1, 0}, {0, 1}}},     // 15 Cross-Line
    {{{0, 1}, {0, 2}, {-1, 1}, {1, 1}}},      // 16
    {{{1, 0}, {2, 0}, {1, -1}, {1, 1}}},      // 17
    {{{-1, 0}, {-2, 0}, {-1, -1}, {-1, 1}}},  // 18
    {{{0, -1}, {0, -2}, {-1, -1}, {1, -1}}},  // 19
    {{{-2, 0}, {0, -2}, {2, 0}, {0, 2}}},     // 20 Scattered-Cross-Line
    {{{0, 2}, {0, 4}, {-2, 2}, {2, 2}}},      // 21
    {{{2, 0}, {4, 0}, {2, -2}, {2, 2}}},      // 22
    {{{-2, 0}, {-4, 0}, {-2, -2}, {-2, 2}}},  // 23
    {{{0, -2}, {0, -4}, {-2, -2}, {2, -2}}},  // 24
}};

// The marker a blank tied to line type t holds: 10^(199 + t), written out so
// that each is the exact double the literal denotes.
constexpr std::array<double, 25> kLineMarker = {
    0,     1e200, 1e201, 1e202, 1e203, 1e204, 1e205, 1e206, 1e207, 1e208, 1e209, 1e210, 1e211,
    1e212, 1e213, 1e214, 1e215, 1e216, 1e217, 1e218, 1e219, 1e220, 1e221, 1e222, 1e223};

// The line type whose marker the cell holds, or 0 when it holds none.
constexpr int markerType(double cell) {
  for (int type = 1; type <= 24; ++type) {
    if (cell == kLineMarker[type]) return type;
  }
  return 0;
}

// Whether a pattern anchored at (x, y) lies inside the n by n square without wrapping.
constexpr bool insidePlacement(int type, int x, int y, int n) {
  const auto inside = [n](int c) { return c >= 1 && c <= n; };
  if (!inside(x) || !inside(y)) return false;
  for (const Offset& o : kPatternCells[type]) {
    if (!inside(x + o.dx) || !inside(y + o.dy)) return false;
  }
  return true;
}

// One step of the walk along the line of `type` anchored at `anchor`, from
// `at`; lineStep counts the steps taken so far. A straight line moves by its
// step; a pattern goes to its next cell and, after the fourth, back to the
// anchor. The result is not wrapped.
constexpr Position stepAlong(int type, Position anchor, Position at, int lineStep) {
  if (isStraight(type)) return {at.x + kStraightStep[type].dx, at.y + kStraightStep[type].dy};
  if (!isPattern(type) || lineStep > 4) return at;
  if (lineStep == 4) return anchor;
  const Offset cell = kPatternCells[type][lineStep];
  return {anchor.x + cell.dx, anchor.y + cell.dy};
}

// The pattern families: their first line type and the family's number in the
// order the puzzle maker calls them.
constexpr int kFamilySize = 5;
constexpr std::array<int, 4> kFamilyFirstType = {5, 10, 15, 20};

}  // namespace quill
