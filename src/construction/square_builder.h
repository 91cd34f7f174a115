// Builds one complete magic square of prime order n from two random pattern
// lines through a shared start cell: a function of the size, the random
// numbers and the yields it is given, with every loop variable its own.
#pragma once

#include <functional>

#include "construction/square.h"

namespace quill {

// What building a square draws on: a whole number from 1 to count, drawn
// through the platform's random numbers; and a yield to the user after each
// pattern draw and each placed rank, after which the work goes on only when
// it says so.
struct BuildSteps {
  std::function<int(int count)> randomWhole;
  std::function<bool()> yieldGoesOn;
};

// square.squareRanks: the ranks 1..n² of a complete square of size n. False
// when a yield ended the work, the ranks then half made.
bool buildRanks(Square& square, int n, const BuildSteps& steps);
// Rank r becomes the number (r − 1)·distance + startNumber, in both grids.
// A run changes the starting number between the two for its continuation
// squares.
void assignNumbers(Square& square, double startNumber, double distance);
// buildRanks, then assignNumbers.
bool buildSquare(Square& square, int n, double startNumber, double distance, const BuildSteps& steps);

}  // namespace quill
