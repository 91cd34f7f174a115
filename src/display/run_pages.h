// The pages of a creation run: where each square goes, when a page is
// complete and printed, the answer page that follows it, and the key
// square whose corner gives the continuation squares their starting numbers.
#pragma once

#include <functional>
#include <utility>

#include "construction/page_geometry.h"
#include "construction/progression.h"
#include "construction/square.h"
#include "display/square_display.h"

namespace quill {

// printChoice: what a run prints.
enum class PrintChoice {
  Squares = 0,             // "Print only completed Squares"
  Puzzles = 1,             // "Print only Puzzles"
  PuzzlesAndAnswers = 2,   // "Print both Puzzles and Answers"
};

class RunPages {
 public:
  // `yield`: a yield to the user between the squares of an answer page,
  // which may end the run (by throwing).
  RunPages(std::function<void()> yield, SquareDisplay& display) : yield_(std::move(yield)), display_(display) {}

  // Where the next square goes.
  const page::Placement& placement() const { return placement_; }
  void startPage() { placement_ = {}; }

  // What placing a square needs to know of the run.
  struct Step {
    PrintChoice printChoice;
    bool keySquare;         // a key square: never placed
    bool lastContinuation;  // the last continuation square of a key square: the page is full
    bool lastOfRun;         // the run's last square
    bool highlightAnswers;
    Progression numbers;  // of the square just drawn
  };
  // Keeps the square's puzzle and answers for the answer page, moves to the
  // next place, and prints the page, then its answers, when the page is
  // complete. Returns whether it printed the page (pagePrinted).
  bool placeOnPage(const Square& square, const Step& step);

  // The continuation phase: the key square's top-left corner, and the rank of
  // its next cell, from which the next continuation square starts.
  void keepKeyCorner(const Square& square);
  double nextKeyRank();

 private:
  void printAnswerPage(int n, const page::Placement& pageEnd, const Step& step);

  // The page buffers hold every page cell a square that fits can reach: 29
  // columns and rows at most.
  static constexpr int kPageCells = 30;
  static constexpr int kKeyCells = page::kKeyCorner + 1;

  std::function<void()> yield_;
  SquareDisplay& display_;
  page::Placement placement_;
  GridOf<kPageCells> pagePuzzle{};
  GridOf<kPageCells> pageAnswers{};
  int keyColumn = 0, keyRow = 0;
  GridOf<kKeyCells> keyRanks{};
};

}  // namespace quill
