// Making one puzzle, with the fast dependency check and with the literal one
// it is held to: sizes 5 to 101, 100 and 1,000 blanks asked, "Easy" and
// "Challenging", "Include All Diagonals" off and on. Both makers make the
// same puzzle from the same draws, so the times compare like for like.
#include <benchmark/benchmark.h>

#include "bench_window.h"
#include "support/literal_window.h"

namespace quill {
namespace {

// Counts the dependency checks a maker runs.
template <class Base>
class Counting : public Base {
 public:
  using Base::Base;
  void makeblanks() override {
    ++checks;
    Base::makeblanks();
  }
  void checkChosenLine() override {
    ++checks;
    Base::checkChosenLine();
  }
  long checks = 0;
};

template <class Maker>
void makePuzzles(benchmark::State& state) {
  BenchWindow<Counting<Maker>> session;
  MainWindow& w = session.w;
  const int n = static_cast<int>(state.range(0));
  w.squareSize = n;
  w.startNumber = 1;
  w.distance = 1;
  w.buildsquare();
  const SquareGrid square = w.squareNumbers;
  w.blankTarget = static_cast<double>(state.range(1));
  w.difficultyLevel = state.range(2) == 0 ? 1 : 3;
  w.allDiagonalsChoice = static_cast<int>(state.range(3));

  long blanks = 0;
  for (auto _ : state) {
    w.squareNumbers = square;
    session.platform.restartRandom();
    w.makePuzzle();
    blanks += w.rankCounter - 1;
  }
  const auto perPuzzle = [&](double total) {
    return benchmark::Counter(total / static_cast<double>(state.iterations()));
  };
  state.counters["blanks"] = perPuzzle(static_cast<double>(blanks));
  state.counters["checks"] = perPuzzle(static_cast<double>(session.w.checks));
}

void BM_PuzzleFast(benchmark::State& state) { makePuzzles<MainWindow>(state); }
void BM_PuzzleLiteral(benchmark::State& state) { makePuzzles<testing::LiteralWindow>(state); }

void puzzleCases(benchmark::internal::Benchmark* b) {
  b->ArgNames({"n", "target", "challenging", "allDiagonals"})
      ->ArgsProduct({{5, 13, 29, 53, 101}, {100, 1000}, {0, 1}, {0, 1}})
      ->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_PuzzleFast)->Apply(puzzleCases);
BENCHMARK(BM_PuzzleLiteral)->Apply(puzzleCases);

}  // namespace
}  // namespace quill
