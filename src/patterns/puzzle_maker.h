// The puzzle maker: blanks cells of a finished square so that every blank can
// be worked out through a line of its own, with no blank waiting on itself
// through others, and one whole line, the reserved line, kept free.
//
// It is a function of the square, the settings, its random numbers and its
// yields, and of the failed flags that outlive a puzzle, which its caller
// keeps.
#pragma once

#include <array>
#include <functional>
#include <optional>

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

// The line a puzzle keeps whole: the first choice's line, through its cell.
struct ReservedLine {
  int reservedType, reservedX, reservedY;
};

// What making a puzzle draws on and tells: random whole numbers from 1 to
// count, drawn through the platform's random numbers; a yield before each
// attempt, after which the work goes on only when it says so; and, for a
// window that follows the work, that a cell is about to be scored and that
// the dependency check selects the cell it tests (either may be left empty).
// The check of the line a scoring attempt drew selects nothing: it tests
// the cell just scored, which stays as the window had it.
struct PuzzleSteps {
  std::function<int(int count)> randomWhole;
  std::function<bool()> yieldGoesOn;
  std::function<void()> scoringCell;
  std::function<void(int x, int y)> checkingCell;
};

// Per line type 1..24 (index 0 unused), whether the line failed the last
// time it was drawn. The flags of the straight lines are cleared for every
// puzzle; those of the pattern lines outlive it, so the caller keeps them.
using FailedLines = std::array<int, kLineTypes + 1>;

// A puzzle made: its accepted choices, one more than its blanks (which the
// practice counts down), and its reserved line; none when the scan pass made
// the first choice.
struct PuzzleMade {
  int rankCounter = 0;
  std::optional<ReservedLine> reservedLine;
};

// Turns the square into a puzzle of blankTarget blanks and one reserved
// line, yielding once per attempt; none when a yield ended the work (the
// puzzle then half made). Made over an index of the blanks (Blanks): the
// window's maker uses the fast PuzzleBlanks; any index with the same four
// operations can stand in.
template <class Blanks>
std::optional<PuzzleMade> makePuzzleOver(Square& square, const PuzzleSettings& settings, FailedLines& failed,
                                         const PuzzleSteps& steps);
inline std::optional<PuzzleMade> makePuzzle(Square& square, const PuzzleSettings& settings, FailedLines& failed,
                                            const PuzzleSteps& steps) {
  return makePuzzleOver<PuzzleBlanks>(square, settings, failed, steps);
}

// The dependency check on the square as it stands: whether blanking (x, y)
// through the line of `type` keeps every blank solvable.
template <class Blanks>
bool acceptsBlankOver(const Square& square, int x, int y, int type);

// The continuation squares' extra blank: a random cell of the reserved line
// in the square's key corner, when the line crosses it.
void blankKeyCell(Square& square, const ReservedLine& reserved, const std::function<int(int count)>& randomWhole);

extern template std::optional<PuzzleMade> makePuzzleOver<PuzzleBlanks>(Square&, const PuzzleSettings&, FailedLines&,
                                                                       const PuzzleSteps&);
extern template bool acceptsBlankOver<PuzzleBlanks>(const Square&, int, int, int);

}  // namespace quill
