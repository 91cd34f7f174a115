// One complete magic square of prime order n, built from two random pattern
// lines from a shared start cell: the first carries the ranks 1..n, the second
// the cycle starts 1, n+1, 2n+1, ...; replaying the first line's steps from
// every cycle start fills the rest. The cell start + a·u + b·w gets the rank
// V1[a] + V2[b] − 1, so every row, column and broken diagonal holds each V1
// and each V2 value once.
#include <algorithm>
#include <cassert>

#include "construction/square_builder.h"

namespace quill {

namespace {

// Step kinds 1..4; kinds 3 and 4 only for n > 5 (for n = 5 they would make
// the two lines parallel).
constexpr Offset kSteps[5] = {{0, 0}, {1, 2}, {-1, 2}, {2, 1}, {-2, 1}};

}  // namespace

int SquareBuilder::drawMoveKind() {
  int kind = run_.randomWhole(2);
  if (square_.n > 5) kind = run_.randomWhole(4);
  return kind;
}

void SquareBuilder::buildRanks(int n) {
  square_.n = n;
  auto& squareRanks = square_.squareRanks;
  // Clear: every cell unfilled, both pattern lines empty.
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) squareRanks[x][y] = kBlankMarker;
  }
  for (int entry = 1; entry <= 2 * n; ++entry) {
    patternRank[entry] = 0;
    patternX[entry] = 0;
    patternY[entry] = 0;
  }

  // The start cell carries rank 1 on both lines.
  cellX = run_.randomWhole(n);
  cellY = run_.randomWhole(n);
  squareRanks[cellX][cellY] = 1;
  patternRank[1] = 1;
  patternX[1] = cellX;
  patternY[1] = cellY;
  rankCounter = 2;
  cursorX = cellX;
  cursorY = cellY;

  mainsub2();
  fillFromPattern();
}

void SquareBuilder::mainsub2() {
  const int n = square_.n;
  auto& squareRanks = square_.squareRanks;
  const auto lineHolds = [&](int first, int last, double rank) {
    return std::find(patternRank.begin() + first, patternRank.begin() + last + 1, rank) !=
           patternRank.begin() + last + 1;
  };
  moveKind = drawMoveKind();
  while (rankCounter <= 2 * n) {
    run_.yieldToUser();
    const int k = rankCounter;
    drawnValue = run_.randomWhole(n - 1) + 1;
    if (k <= n) {
      // The first line: the ranks 2..n in random order.
      if (lineHolds(1, n, drawnValue)) continue;
      patternRank[k] = drawnValue;
    } else {
      // The second line: the cycle starts n+1, 2n+1, ..., (n−1)n+1.
      const double cycleStart = static_cast<double>(drawnValue - 1) * n + 1;
      if (lineHolds(n + 1, 2 * n, cycleStart)) continue;
      patternRank[k] = cycleStart;
    }
    cursorX = wrap(cursorX + kSteps[moveKind].dx, n);
    cursorY = wrap(cursorY + kSteps[moveKind].dy, n);
    squareRanks[cursorX][cursorY] = patternRank[k];
    patternX[k] = cursorX;
    patternY[k] = cursorY;
    rankCounter = k + 1;

    if (rankCounter == n + 1) {
      // The second line starts again from the start cell, in another direction.
      cursorX = cellX;
      cursorY = cellY;
      patternRank[n + 1] = 1;
      patternX[n + 1] = cellX;
      patternY[n + 1] = cellY;
      previousMoveKind = moveKind;
      do {
        moveKind = drawMoveKind();
      } while (moveKind == previousMoveKind);
      ++rankCounter;
    }
  }
  rankCounter = n + 1;
  patternIndex = 1;
  cursorX = cellX = patternX[n + 1];
  cursorY = cellY = patternY[n + 1];
}

void SquareBuilder::fillFromPattern() {
  const int n = square_.n;
  auto& squareRanks = square_.squareRanks;
  const int cells = n * n;
  while (rankCounter <= cells) {
    run_.yieldToUser();
    const int k = rankCounter;
    cellX = cursorX;
    cellY = cursorY;
    if ((k - 1) % n != 0) {
      // Inside a cycle: the first line's next step, and its rank difference.
      const int j = patternIndex;
      prevX = cellX;
      prevY = cellY;
      cursorX = wrap(cursorX + patternX[j] - patternX[j - 1], n);
      cursorY = wrap(cursorY + patternY[j] - patternY[j - 1], n);
      cellX = cursorX;
      cellY = cursorY;
      squareRanks[cellX][cellY] = squareRanks[prevX][prevY] + patternRank[j] - patternRank[j - 1];
      patternIndex = j + 1;
    } else if (k > n) {
      // A new cycle starts at the second-line cell that holds rank k.
      searchIndex = n + 2;
      while (searchIndex < 2 * n && patternRank[searchIndex] != k) ++searchIndex;
      cursorX = patternX[searchIndex];
      cursorY = patternY[searchIndex];
      patternIndex = 2;
    }
    rankCounter = k + 1;
  }
}

// Whether the ranks form a complete magic square: every row, column and
// broken diagonal in both directions sums to n(n²+1)/2.
bool SquareBuilder::ranksAreComplete() const {
  const int n = square_.n;
  const auto& squareRanks = square_.squareRanks;
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

void SquareBuilder::assignNumbers(double startNumber, double distance) {
  assert(ranksAreComplete());
  const int n = square_.n;
  auto& squareNumbers = square_.squareNumbers;
  auto& squareRanks = square_.squareRanks;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      const double number = (squareRanks[x][y] - 1) * distance + startNumber;
      squareNumbers[x][y] = number;
      squareRanks[x][y] = number;
    }
  }
}

}  // namespace quill
