// Builds one complete magic square of prime order n from two random pattern
// lines through a shared start cell, drawing every random number through the
// run and yielding once per pattern draw and placed rank.
#pragma once

#include <array>

#include "construction/run_control.h"
#include "construction/square.h"

namespace quill {

class SquareBuilder {
 public:
  explicit SquareBuilder(RunControl& run) : run_(run) {}

  // buildRanks then assignNumbers. A run changes the starting number between
  // the two for its continuation squares.
  void buildsquare(int n, double startNumber, double distance) {
    buildRanks(n);
    assignNumbers(startNumber, distance);
  }
  // squareRanks: the ranks 1..n² of a complete square of size n.
  void buildRanks(int n);
  // Rank r becomes the number (r − 1)·distance + startNumber, in both grids.
  void assignNumbers(double startNumber, double distance);

  // The square last built. The puzzle maker blanks its numbers, the
  // practice fills them back in.
  Square& square() { return square_; }
  const Square& square() const { return square_; }

 private:
  static constexpr int kPatternEntries = 2 * kMaxSquareSize + 1;

  void mainsub2();
  void fillFromPattern();
  int drawMoveKind();
  bool ranksAreComplete() const;  // checked by debug builds before the numbers

  RunControl& run_;
  Square square_;
  // The pattern table: entries 1..n the first line (ranks), n+1..2n the
  // second (cycle starts), each with its cell.
  std::array<double, kPatternEntries> patternRank{};
  std::array<int, kPatternEntries> patternX{};
  std::array<int, kPatternEntries> patternY{};
  int cursorX = 0, cursorY = 0;
  int cellX = 0, cellY = 0;
  int prevX = 0, prevY = 0;
  int rankCounter = 0;
  int patternIndex = 0;
  int moveKind = 0, previousMoveKind = 0;
  int drawnValue = 0;
  int searchIndex = 0;
};

}  // namespace quill
