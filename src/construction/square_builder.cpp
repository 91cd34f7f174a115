// One complete magic square of prime order n, built from two random pattern
// lines from a shared start cell: the first carries the ranks 1..n, the second
// the cycle starts 1, n+1, 2n+1, ...; replaying the first line's steps from
// every cycle start fills the rest. The cell start + a·u + b·w gets the rank
// V1[a] + V2[b] − 1, so every row, column and broken diagonal holds each V1
// and each V2 value once.
#include <algorithm>
#include <array>
#include <cassert>

#include "construction/square_builder.h"

namespace quill {

namespace {

// Step kinds 1..4; kinds 3 and 4 only for n > 5 (for n = 5 they would make
// the two lines parallel).
constexpr Offset kSteps[5] = {{0, 0}, {1, 2}, {-1, 2}, {2, 1}, {-2, 1}};

// The two pattern lines: entries 1..n the first line (ranks), n+1..2n the
// second (cycle starts), each with its cell.
struct PatternLines {
  static constexpr int kEntries = 2 * kMaxSquareSize + 1;
  std::array<double, kEntries> rank{};
  std::array<int, kEntries> x{};
  std::array<int, kEntries> y{};

  bool holds(int first, int last, double value) const {
    return std::find(rank.begin() + first, rank.begin() + last + 1, value) != rank.begin() + last + 1;
  }
  void set(int entry, double value, int cellX, int cellY) {
    rank[entry] = value;
    x[entry] = cellX;
    y[entry] = cellY;
  }
};

// Both lines drawn from the start cell, each rank placed as it is drawn; the
// second line starts again from the start cell in another direction.
bool drawPatternLines(Square& square, PatternLines& lines, const BuildSteps& steps) {
  const int n = square.n;
  const auto drawMoveKind = [&] {
    int kind = steps.randomWhole(2);
    if (n > 5) kind = steps.randomWhole(4);
    return kind;
  };
  const int startX = lines.x[1], startY = lines.y[1];
  int cursorX = startX, cursorY = startY;
  int moveKind = drawMoveKind();
  int k = 2;
  while (k <= 2 * n) {
    if (!steps.yieldGoesOn()) return false;
    const int drawn = steps.randomWhole(n - 1) + 1;
    double value = 0;
    if (k <= n) {
      // The first line: the ranks 2..n in random order.
      value = drawn;
      if (lines.holds(1, n, value)) continue;
    } else {
      // The second line: the cycle starts n+1, 2n+1, ..., (n−1)n+1.
      value = static_cast<double>(drawn - 1) * n + 1;
      if (lines.holds(n + 1, 2 * n, value)) continue;
    }
    cursorX = wrap(cursorX + kSteps[moveKind].dx, n);
    cursorY = wrap(cursorY + kSteps[moveKind].dy, n);
    square.squareRanks[cursorX][cursorY] = value;
    lines.set(k, value, cursorX, cursorY);
    ++k;
    if (k == n + 1) {
      cursorX = startX;
      cursorY = startY;
      lines.set(n + 1, 1, startX, startY);
      const int previousMoveKind = moveKind;
      do {
        moveKind = drawMoveKind();
      } while (moveKind == previousMoveKind);
      ++k;
    }
  }
  return true;
}

// The rest, cycle by cycle: each cycle starts at the second-line cell of its
// rank and replays the first line's steps and rank differences.
bool fillFromPattern(Square& square, const PatternLines& lines, const BuildSteps& steps) {
  const int n = square.n;
  auto& ranks = square.squareRanks;
  int cursorX = lines.x[n + 1], cursorY = lines.y[n + 1];
  int patternIndex = 1;
  for (int k = n + 1; k <= n * n; ++k) {
    if (!steps.yieldGoesOn()) return false;
    if ((k - 1) % n != 0) {
      const int j = patternIndex;
      const int fromX = cursorX, fromY = cursorY;
      cursorX = wrap(cursorX + lines.x[j] - lines.x[j - 1], n);
      cursorY = wrap(cursorY + lines.y[j] - lines.y[j - 1], n);
      ranks[cursorX][cursorY] = ranks[fromX][fromY] + lines.rank[j] - lines.rank[j - 1];
      patternIndex = j + 1;
    } else {
      int entry = n + 2;
      while (entry < 2 * n && lines.rank[entry] != k) ++entry;
      cursorX = lines.x[entry];
      cursorY = lines.y[entry];
      patternIndex = 2;
    }
  }
  return true;
}

// Whether the ranks form a complete magic square: every row, column and
// broken diagonal in both directions sums to n(n²+1)/2. Checked by debug
// builds before the numbers.
[[maybe_unused]] bool ranksAreComplete(const Square& square) {
  const int n = square.n;
  const auto& squareRanks = square.squareRanks;
  const double total = n * (static_cast<double>(n) * n + 1) / 2;
  for (int c = 0; c < n; ++c) {
    double row = 0, column = 0, down = 0, up = 0;
    for (int i = 0; i < n; ++i) {
      row += squareRanks[i + 1][c + 1];
      column += squareRanks[c + 1][i + 1];
      down += squareRanks[i + 1][(c + i) % n + 1];
      up += squareRanks[i + 1][(c - i + n) % n + 1];
    }
    if (row != total || column != total || down != total || up != total) return false;
  }
  return true;
}

}  // namespace

bool buildRanks(Square& square, int n, const BuildSteps& steps) {
  square.n = n;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) square.squareRanks[x][y] = kBlankMarker;
  }
  // The start cell carries rank 1 on both lines.
  PatternLines lines;
  const int startX = steps.randomWhole(n);
  const int startY = steps.randomWhole(n);
  square.squareRanks[startX][startY] = 1;
  lines.set(1, 1, startX, startY);
  return drawPatternLines(square, lines, steps) && fillFromPattern(square, lines, steps);
}

void assignNumbers(Square& square, double startNumber, double distance) {
  assert(ranksAreComplete(square));
  const int n = square.n;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      const double number = (square.squareRanks[x][y] - 1) * distance + startNumber;
      square.squareNumbers[x][y] = number;
      square.squareRanks[x][y] = number;
    }
  }
}

bool buildSquare(Square& square, int n, double startNumber, double distance, const BuildSteps& steps) {
  if (!buildRanks(square, n, steps)) return false;
  assignNumbers(square, startNumber, distance);
  return true;
}

}  // namespace quill
