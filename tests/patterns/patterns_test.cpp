// The puzzle maker and the hint: the maker agrees with the one made over the
// literal dependency check; every puzzle is solved by following
// hints alone, each blank through its own line, with the reserved line whole
// and as many blanks as asked; and a hint says what it should.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "construction/square_builder.h"
#include "patterns/hint.h"
#include "patterns/line_types.h"
#include "support/fake_platform.h"
#include "support/literal_blanks.h"
#include "support/steps.h"

namespace quill::testing {
namespace {

using Cell = std::pair<int, int>;

// A square to build and make a puzzle of over either index of blanks, on a
// fake platform of its own.
template <class Blanks>
struct Session {
  explicit Session(std::uint64_t seed = 1) : platform(seed) {}
  FakePlatform platform;
  Square built;
  FailedLines failed{};
  PuzzleMade made;
  Cell selected{0, 0};  // the last cell the dependency check selected
  void makePuzzle(int n, const PuzzleSettings& settings) {
    ASSERT_TRUE(buildSquare(built, n, 1, 1, buildSteps(platform)));
    PuzzleSteps steps = puzzleSteps(platform);
    steps.checkingCell = [this](int x, int y) { selected = {x, y}; };
    const std::optional<PuzzleMade> puzzle = makePuzzleOver<Blanks>(built, settings, failed, steps);
    ASSERT_TRUE(puzzle);
    made = *puzzle;
  }
  Square& square() { return built; }
  SquareGrid& numbers() { return built.squareNumbers; }
};
template <class Blanks>
std::unique_ptr<Session<Blanks>> session(std::uint64_t seed = 1) {
  return std::make_unique<Session<Blanks>>(seed);
}

// Settings drawn from a seed: families only for 5 by 5, as a run sets them;
// one target in eight fractional.
PuzzleSettings drawSettings(std::uint64_t seed, int n) {
  RandomSource random(seed * 7919 + static_cast<std::uint64_t>(n));
  const auto pick = [&](int count) { return static_cast<int>(random.next() * count); };
  PuzzleSettings s;
  s.blankTarget = 1 + pick(n * n / (1 + pick(4))) + (pick(8) == 0 ? 0.5 : 0);
  s.difficultyLevel = pick(2) == 0 ? Difficulty::Easy : Difficulty::Challenging;
  s.mainLinesChoice = pick(4) == 0 ? 0 : 1;
  s.allDiagonalsChoice = pick(2);
  for (int* family : {&s.crossDiagonalChoice, &s.scatteredCrossDiagonalChoice, &s.crossLineChoice,
                      &s.scatteredCrossLineChoice}) {
    *family = n == 5 ? pick(3) : 0;
  }
  return s;
}

std::vector<Cell> blanksOf(const Square& square) {
  std::vector<Cell> blanks;
  for (int x = 1; x <= square.n; ++x) {
    for (int y = 1; y <= square.n; ++y) {
      if (isBlank(square.squareNumbers[x][y])) blanks.emplace_back(x, y);
    }
  }
  return blanks;
}

// Solved by hints alone, as a player may: while a blank is left there is a
// hint; its line is the one the blank's marker names, holds no other blank
// and adds up, with the answer, to the total (the sum a row of the answers
// makes); the cell asked about is the one hinted whenever it can be.
void expectHintsSolve(const Square& square, std::uint64_t seed) {
  Square puzzle = square;
  double total = 0;
  for (int x = 1; x <= square.n; ++x) total += square.squareRanks[x][1];
  RandomSource random(seed);
  for (std::size_t left = blanksOf(square).size(); left > 0; --left) {
    const Position asked{1 + static_cast<int>(random.next() * square.n), 1 + static_cast<int>(random.next() * square.n)};
    const std::optional<Hint> hint = findHint(puzzle, asked, total);
    ASSERT_TRUE(hint) << left << " blanks left";
    const auto [x, y] = hint->cell;
    ASSERT_TRUE(isBlank(puzzle.squareNumbers[x][y]));
    ASSERT_EQ(hint->lineType, markerType(puzzle.squareNumbers[x][y])) << x << "," << y;
    double known = 0;
    for (const Position& at : hint->others) {
      ASSERT_FALSE(isBlank(puzzle.squareNumbers[at.x][at.y])) << "another blank on the line of " << x << "," << y;
      known += puzzle.squareNumbers[at.x][at.y];
    }
    ASSERT_EQ(total - known, square.squareRanks[x][y]);
    if (isBlank(puzzle.squareNumbers[asked.x][asked.y]) && !(asked.x == x && asked.y == y)) {
      const std::vector<Position> line = lineCells(square.n, markerType(puzzle.squareNumbers[asked.x][asked.y]), asked);
      EXPECT_TRUE(std::any_of(line.begin(), line.end() - 1, [&](const Position& at) {
        return isBlank(puzzle.squareNumbers[at.x][at.y]);
      })) << "the blank asked about, at " << asked.x << "," << asked.y << ", could be worked out";
    }
    puzzle.squareNumbers[x][y] = square.squareRanks[x][y];
  }
  EXPECT_FALSE(findHint(puzzle, {1, 1}, total));
}

// What a hint says, on one 5 by 5 square: the line named, its other numbers
// in the order it is walked from the blank, their sum and the total.
TEST(Hint, NamesTheLineItsNumbersAndTheirSum) {
  const int rows[5][5] = {{12, 3, 19, 6, 25}, {9, 21, 15, 2, 18}, {5, 17, 8, 24, 11}, {23, 14, 1, 20, 7}, {16, 10, 22, 13, 4}};
  struct Blank {
    int x, y, type;
  };
  const struct {
    std::vector<Blank> blanks;
    Position asked;
    const char* words;
  } cases[] = {
      {{{3, 2, 1}}, {3, 2}, "Hint: row 2 holds 2, 18, 9 and 21, which make 50; the magic total is 65"},
      {{{3, 2, 2}}, {1, 1}, "Hint: column 3 holds 8, 1, 22 and 19, which make 50; the magic total is 65"},
      {{{3, 2, 3}}, {3, 2}, "Hint: the diagonal up to the right holds 6, 4, 23 and 17, which make 50; the magic total is 65"},
      {{{3, 3, 15}}, {3, 3}, "Hint: the cross-line holds 17, 15, 24 and 1, which make 57; the magic total is 65"},
      // The cell asked about first, when it can be worked out; else the first that can.
      {{{3, 2, 1}, {1, 1, 2}}, {5, 5}, "Hint: column 1 holds 9, 5, 23 and 16, which make 53; the magic total is 65"},
      {{{3, 2, 1}, {5, 2, 2}}, {3, 2}, "Hint: column 5 holds 11, 7, 4 and 25, which make 47; the magic total is 65"},
  };
  for (const auto& c : cases) {
    Square square;
    square.n = 5;
    for (int y = 1; y <= 5; ++y) {
      for (int x = 1; x <= 5; ++x) square.squareNumbers[x][y] = rows[y - 1][x - 1];
    }
    for (const Blank& b : c.blanks) square.squareNumbers[b.x][b.y] = kLineMarker[b.type];
    const std::optional<Hint> hint = findHint(square, c.asked, 65);
    ASSERT_TRUE(hint);
    EXPECT_EQ(hint->words, c.words);
  }
}

// Over many seeds, sizes and settings: the literal maker (up to 17 by 17,
// now and then 29) makes the same puzzle from the same draws, with the same
// reserved line and selection; and every puzzle is solvable, has as many blanks as asked,
// keeps its reserved line whole and its "Only Main" patterns inside the
// square, and takes a continuation square's extra blank on the reserved line.
TEST(PuzzleMaker, EveryPuzzleIsSolvableAndTheLiteralMakersToo) {
  int wrappedPatterns = 0, onlyMainPatterns = 0, compared = 0;
  for (std::uint64_t seed = 1; seed <= 300; ++seed) {
    for (const int n : {5, 5, 5, 7, 11, 13, 17, 19, 23, 29, 31, 53, 101}) {
      if (n > 29 && seed % (n == 101 ? 50 : 10) != 0) continue;
      PuzzleSettings settings = drawSettings(seed, n);
      if (seed % 3 == 0) settings.blankTarget = 1 + static_cast<double>(seed % static_cast<std::uint64_t>(n / 2));
      if (seed % 3 == 0) settings.mainLinesChoice = 1;
      SCOPED_TRACE(::testing::Message() << "seed " << seed << " size " << n << " target " << settings.blankTarget);
      auto s = session<PuzzleBlanks>(seed);
      s->makePuzzle(n, settings);
      const auto reserved = s->made.reservedLine;
      if (n <= 17 || (n == 29 && seed % 20 == 0)) {
        auto literal = session<LiteralBlanks>(seed);
        literal->makePuzzle(n, settings);
        ASSERT_EQ(s->platform.randomCount, literal->platform.randomCount);
        ASSERT_EQ(s->made.rankCounter, literal->made.rankCounter);
        ASSERT_EQ(reserved.has_value(), literal->made.reservedLine.has_value());
        ASSERT_TRUE(!reserved || reserved->reservedType == literal->made.reservedLine->reservedType);
        ASSERT_EQ(s->numbers(), literal->numbers());
        ASSERT_EQ(s->selected, literal->selected);
        ++compared;
      }
      const std::vector<Cell> blanks = blanksOf(s->square());
      EXPECT_EQ(s->made.rankCounter, static_cast<int>(blanks.size()) + 1);
      // The first choice reserves a line unless the scan pass made it.
      const auto asked = static_cast<std::size_t>(settings.blankTarget) + (reserved ? 0 : 1);
      EXPECT_TRUE(settings.blankTarget != std::floor(settings.blankTarget) || blanks.size() <= asked);
      EXPECT_TRUE(seed % 3 != 0 || blanks.size() == asked) << blanks.size();  // few blanks always fit
      expectHintsSolve(s->square(), seed);
      for (const auto& [x, y] : blanks) {
        const int type = markerType(s->numbers()[x][y]);
        if (!isPattern(type)) continue;
        const int choice = std::array{settings.crossDiagonalChoice, settings.scatteredCrossDiagonalChoice,
                                      settings.crossLineChoice, settings.scatteredCrossLineChoice}[(type - 5) / 5];
        if (choice == family::onlyMain) {
          EXPECT_TRUE(insidePlacement(type, x, y, n)) << type << " at " << x << "," << y;
          ++onlyMainPatterns;
        }
        wrappedPatterns += insidePlacement(type, x, y, n) ? 0 : 1;
      }
      if (!reserved) continue;
      const std::vector<Position> line = lineCells(n, reserved->reservedType, {reserved->reservedX, reserved->reservedY});
      for (const auto& [x, y] : line) ASSERT_FALSE(isBlank(s->numbers()[x][y])) << x << "," << y;

      // The extra blank: on the reserved line in the top-left corner, or none when the line misses it.
      const SquareGrid before = s->numbers();
      blankKeyCell(s->square(), *reserved, buildSteps(s->platform).randomWhole);
      const bool crossesCorner =
          std::any_of(line.begin(), line.end(), [](const Position& c) { return c.x <= 5 && c.y <= 5; });
      ASSERT_EQ(blanksOf(s->square()).size(), blanks.size() + (crossesCorner ? 1 : 0));
      for (const auto& [x, y] : line) {
        if (isBlank(s->numbers()[x][y])) {
          EXPECT_TRUE(x <= 5 && y <= 5 && s->numbers()[x][y] == 1e200 && !isBlank(before[x][y]));
        }
      }
    }
  }
  EXPECT_GT(compared, 2000);
  EXPECT_GT(wrappedPatterns, 0);  // "All" does wrap
  EXPECT_GT(onlyMainPatterns, 0);
}

}  // namespace
}  // namespace quill::testing
