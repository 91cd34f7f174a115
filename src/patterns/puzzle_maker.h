// The puzzle maker: blanks cells of a finished square so that every blank can
// be worked out through a line of its own, with no blank waiting on itself
// through others, and one whole line, the reserved line, kept free.
//
// It owns what it keeps between attempts and between puzzles: the failed
// flags, the reserved line, the attempt counter and its index of the blanks.
// It is written over that index (Blanks): the window's maker keeps the fast
// PuzzleBlanks; any index with the same four operations can stand in.
#pragma once

#include <array>
#include <optional>

#include "construction/run_control.h"
#include "construction/square.h"
#include "patterns/line_types.h"
#include "patterns/puzzle_blanks.h"

namespace quill {

// difficultyLevel: which of the usable lines a blank may be tied to.
enum class Difficulty {
  Easy = 1,         // any usable line
  Challenging = 3,  // only a usable line that already holds the most blanks
};

// A pattern family's choice: off, only placements inside the square, or all
// placements, wrapped round the edges.
namespace family {
constexpr int off = 0;
constexpr int onlyMain = 1;
constexpr int all = 2;
}  // namespace family

// What the menus and the properties page decide about puzzles.
struct PuzzleSettings {
  double blankTarget = 0;  // blanks wanted; fractional targets are never met exactly
  Difficulty difficultyLevel = Difficulty::Challenging;
  int mainLinesChoice = 0;     // 1: rows, columns and the two main diagonals
  int allDiagonalsChoice = 0;  // not 0: every diagonal, broken ones included
  int crossDiagonalChoice = family::off;
  int crossLineChoice = family::off;
  int scatteredCrossDiagonalChoice = family::off;
  int scatteredCrossLineChoice = family::off;

  // No pattern family chosen: at start-up, and before a run reads the boxes.
  void clearFamilies() {
    crossDiagonalChoice = crossLineChoice = family::off;
    scatteredCrossDiagonalChoice = scatteredCrossLineChoice = family::off;
  }
};

template <class Blanks>
class BasicPuzzleMaker {
 public:
  explicit BasicPuzzleMaker(RunControl& run) : run_(run) {}

  // Turns the square into a puzzle of blankTarget blanks and one reserved
  // line. Yields once per attempt.
  void makePuzzle(Square& square, const PuzzleSettings& settings);
  // The accepted choices of the last puzzle, one more than its blanks.
  int rankCounter() const { return rankCounter_; }

  struct ReservedLine {
    int reservedType, reservedX, reservedY;
  };
  // The last puzzle's reserved line; none when the scan pass made its first choice.
  std::optional<ReservedLine> reservedLine() const;
  // The continuation squares' extra blank: a random cell of the reserved
  // line in the square's top-left 5 by 5 corner, when the line crosses it.
  void blankKeyCell(Square& square);

  // The dependency check on the square as it stands: whether blanking (x, y)
  // through the line of `type` keeps every blank solvable. The check records
  // the cell it tests as the selection.
  bool acceptsBlank(const Square& square, int x, int y, int type);

 private:
  // Looks along the line of `type` anchored at the cell: whether a blank is
  // already tied to it, and how many blanks it holds.
  struct LineWalk {
    bool taken = false;
    int blanks = 0;
  };

  // One step of the reserved line's walk, and of the walk of the line of
  // lineType anchored at (cellX, cellY).
  void findline1();
  void findline2();
  bool reservedLineMeets(int x, int y);
  // Walks a line from its anchor with its stepper, the anchor first and each
  // cell once, in (walkX, walkY), until `look` at a cell says stop; true then.
  template <class Step, class Look>
  bool walkFrom(int& walkX, int& walkY, Position anchor, Step step, Look look);
  LineWalk walkLine(int type);

  // The pattern families: trying to blank the cell through one of the
  // family's lines, and scoring the family's lines for the cell.
  void d1scross() { tryFamily(kFamilyFirstType[0], settings_->crossDiagonalChoice); }
  void d1scross2() { tryFamily(kFamilyFirstType[1], settings_->scatteredCrossDiagonalChoice); }
  void d1scline() { tryFamily(kFamilyFirstType[2], settings_->crossLineChoice); }
  void d1scline2() { tryFamily(kFamilyFirstType[3], settings_->scatteredCrossLineChoice); }
  void d2scross() { scoreFamily(kFamilyFirstType[0], settings_->crossDiagonalChoice); }
  void d2scross2() { scoreFamily(kFamilyFirstType[1], settings_->scatteredCrossDiagonalChoice); }
  void d2scline() { scoreFamily(kFamilyFirstType[2], settings_->crossLineChoice); }
  void d2scline2() { scoreFamily(kFamilyFirstType[3], settings_->scatteredCrossLineChoice); }
  void tryFamily(int firstType, int choice);
  void scoreFamily(int firstType, int choice);
  bool tryLine(int type);
  void scoreLine(int type, bool placed);

  // lineAccepted = 1 when blanking (cellX, cellY) through lineType keeps
  // every blank solvable.
  void makeblanks();
  void markBlank(int type);
  bool scanPass();
  bool scanCell();
  bool scoringAttempt();
  int drawLineType();

  RunControl& run_;
  const Square* grid_ = nullptr;  // the square the maker reads
  Square* puzzle_ = nullptr;      // and the one it blanks, while it makes a puzzle
  const PuzzleSettings* settings_ = nullptr;
  Blanks blanks_;
  // The index is kept up to date only while a puzzle is being made; a check
  // outside reads the grid afresh.
  bool blanksLive_ = false;

  int n_ = 0;
  int cellX = 0, cellY = 0;
  int prevX = 0, prevY = 0;
  int cursorX = 0, cursorY = 0;
  int rankCounter_ = 0;
  int attemptCounter = 0;
  int lineType = 0;
  int lineAccepted = 0;
  int lineStep = 0;
  int reservedX = 0, reservedY = 0, reservedType = 0;
  int reservedWalkX = 0, reservedWalkY = 0;
  int reservedLineChosen = 0;  // 1 once this puzzle's reserved line is fixed
  // Per line type 1..24 (index 0 unused). The failed flags outlive a puzzle.
  using LineFlags = std::array<int, kLineTypes + 1>;
  LineFlags lineUsable{};
  LineFlags lineTally{};
  LineFlags lineFailed{};
  int lineBlankTally = 0;
  int bestBlankTally = 0;
  int patternFound = 0;
};

using PuzzleMaker = BasicPuzzleMaker<PuzzleBlanks>;
extern template class BasicPuzzleMaker<PuzzleBlanks>;

}  // namespace quill
