// Making one puzzle, with the fast dependency check and with the literal one
// it is held to: sizes 5 to 101, 100 and 1,000 blanks asked, "Easy" and
// "Challenging", "Include All Diagonals" off and on. Both makers make the
// same puzzle from the same draws, so the times compare like for like.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench_window.h"
#include "support/steps.h"
#include "construction/square_builder.h"
#include "patterns/puzzle_maker_impl.h"
#include "support/literal_blanks.h"

namespace quill {
namespace {

long checks = 0;

// An index of blanks that counts the dependency checks asked of it.
template <class Blanks>
struct Counting : Blanks {
  bool closesCycle(int x, int y, int type) {
    ++checks;
    return Blanks::closesCycle(x, y, type);
  }
};

template <class Blanks>
void makePuzzles(benchmark::State& state) {
  QuietPlatform platform;
  const PuzzleSteps steps = testing::puzzleSteps(platform);
  FailedLines failed{};
  const int n = static_cast<int>(state.range(0));
  auto built = std::make_unique<Square>();
  buildSquare(*built, n, 1, 1, testing::buildSteps(platform));
  auto puzzle = std::make_unique<Square>();
  PuzzleSettings settings;
  settings.mainLinesChoice = 1;
  settings.blankTarget = static_cast<double>(state.range(1));
  settings.difficultyLevel = state.range(2) == 0 ? Difficulty::Easy : Difficulty::Challenging;
  settings.allDiagonalsChoice = static_cast<int>(state.range(3));

  long blanks = 0;
  checks = 0;
  for (auto _ : state) {
    *puzzle = *built;
    platform.restartRandom();
    blanks += makePuzzleOver<Counting<Blanks>>(*puzzle, settings, failed, steps)->rankCounter - 1;
  }
  const auto perPuzzle = [&](double total) {
    return benchmark::Counter(total / static_cast<double>(state.iterations()));
  };
  state.counters["blanks"] = perPuzzle(static_cast<double>(blanks));
  state.counters["checks"] = perPuzzle(static_cast<double>(checks));
}

void BM_PuzzleFast(benchmark::State& state) { makePuzzles<PuzzleBlanks>(state); }
void BM_PuzzleLiteral(benchmark::State& state) { makePuzzles<testing::LiteralBlanks>(state); }

void puzzleCases(benchmark::internal::Benchmark* b) {
  b->ArgNames({"n", "target", "challenging", "allDiagonals"})
      ->ArgsProduct({{5, 13, 29, 53, 101}, {100, 1000}, {0, 1}, {0, 1}})
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_PuzzleFast)->Apply(puzzleCases);
BENCHMARK(BM_PuzzleLiteral)->Apply(puzzleCases);

}  // namespace
}  // namespace quill
