// Square construction: every prime size gives a complete magic square that
// agrees with the closed form, and every combination of draws a different one.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "support/magic.h"
#include "construction/square_builder.h"
#include "support/fake_platform.h"

namespace quill::testing {
namespace {

// A square builder on a fake platform of its own.
struct Builder {
  explicit Builder(std::uint64_t seed = 1) : platform(seed) {}
  FakePlatform platform;
  RunControl run{platform};
  SquareBuilder builder{run};
  const SquareGrid& numbers() const { return builder.square().squareNumbers; }
};

// The square's numbers, row by row.
Rows rowsOf(const Builder& b, int n) {
  Rows rows(static_cast<std::size_t>(n));
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) rows[y - 1].push_back(b.numbers()[x][y]);
  }
  return rows;
}

// Each number of the progression exactly once, and the answer copy equal to it.
void expectProgression(const Builder& b, int n, double start, double distance) {
  std::vector<double> numbers, expected;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      numbers.push_back(b.numbers()[x][y]);
      ASSERT_EQ(b.builder.square().squareRanks[x][y], b.numbers()[x][y]);
    }
  }
  for (int i = 0; i < n * n; ++i) expected.push_back(i * distance + start);
  std::sort(numbers.begin(), numbers.end());
  std::sort(expected.begin(), expected.end());
  ASSERT_EQ(numbers, expected);
}

constexpr std::array<std::array<int, 2>, 5> kStep = {{{0, 0}, {1, 2}, {-1, 2}, {2, 1}, {-2, 1}}};

// The step kinds (u, w) of the two pattern lines of a square of 1..n²: with S
// the cell of 1, the first line S + a·u holds 1..n, and every cell
// S + a·u + b·w holds the sum of the two lines' numbers at a and b, less 1.
// (0, 0) when no pair of kinds gives the square.
std::pair<int, int> closedFormKinds(const Builder& b, int n) {
  const SquareGrid& r = b.numbers();
  int sx = 0, sy = 0;
  for (int x = 1; x <= n; ++x) {
    for (int y = 1; y <= n; ++y) {
      if (r[x][y] == 1) sx = x, sy = y;
    }
  }
  const auto at = [&](int a, int u, int bb, int w) {
    const int x = ((sx - 1 + a * kStep[u][0] + bb * kStep[w][0]) % n + n) % n + 1;
    const int y = ((sy - 1 + a * kStep[u][1] + bb * kStep[w][1]) % n + n) % n + 1;
    return r[x][y];
  };
  for (int u = 1; u <= 4; ++u) {
    for (int w = 1; w <= 4; ++w) {
      bool holds = u != w;
      for (int a = 0; a < n && holds; ++a) {
        holds = at(a, u, 0, w) <= n;
        for (int bb = 0; bb < n && holds; ++bb) holds = at(a, u, bb, w) == at(a, u, 0, w) + at(0, u, bb, w) - 1;
      }
      if (holds) return {u, w};
    }
  }
  return {0, 0};
}

TEST(SquareBuilder, EveryPrimeSizeAndEveryPairOfStepKindsIsCompleteAndMatchesTheClosedForm) {
  Builder b;
  for (const int n : primeSizes()) {
    SCOPED_TRACE(n);
    std::set<std::pair<int, int>> kindPairs;
    const std::size_t allPairs = n == 5 ? 2 : 12;
    for (int square = 0; square < 80 && kindPairs.size() < allPairs; ++square) {
      b.builder.buildsquare(n, 1, 1);
      expectProgression(b, n, 1, 1);
      expectCompleteMagic(rowsOf(b, n), n * (n * n + 1) / 2.0);
      const auto kinds = closedFormKinds(b, n);
      ASSERT_NE(kinds.first, 0);
      kindPairs.insert(kinds);
    }
    EXPECT_EQ(kindPairs.size(), allPairs);
  }
}

TEST(SquareBuilder, StartAndDistanceSetTheProgression) {
  struct Case {
    double start, distance;
  };
  Builder b;
  for (const Case c : {Case{10, 3}, Case{2.5, 1}, Case{100, -7}, Case{-40, 0.5}, Case{6, 0}}) {
    for (const int n : {5, 7, 13}) {
      b.builder.buildsquare(n, c.start, c.distance);
      SCOPED_TRACE(::testing::Message() << n << " " << c.start << " " << c.distance);
      expectProgression(b, n, c.start, c.distance);
      expectCompleteMagic(rowsOf(b, n), n * c.start + c.distance * n * (n * n - 1) / 2.0);
    }
  }
}

// For 5 by 5: 25 start cells, 24 orders of each line and 2 orders of the step
// kinds, fed draw by draw, give 28,800 different squares from 12 draws each.
TEST(SquareBuilder, AllFiveByFiveDrawCombinationsGiveDifferentSquares) {
  Builder b;
  FakePlatform& platform = b.platform;
  std::array<int, 4> firstOrder{2, 3, 4, 5};
  std::vector<std::array<int, 4>> orders;
  do {
    orders.push_back(firstOrder);
  } while (std::next_permutation(firstOrder.begin(), firstOrder.end()));

  std::set<std::array<double, 25>> squares;
  const auto uniform = [](int value, int count) { return (value + 0.5) / count; };
  for (int cell = 0; cell < 25; ++cell) {
    for (const int firstKind : {1, 2}) {
      for (const auto& first : orders) {
        for (const auto& second : orders) {
          auto& script = platform.scriptedRandom;
          script = {uniform(cell % 5, 5), uniform(cell / 5, 5), uniform(firstKind - 1, 2)};
          for (const int v : first) script.push_back(uniform(v - 2, 4));
          script.push_back(uniform(2 - firstKind, 2));
          for (const int v : second) script.push_back(uniform(v - 2, 4));
          platform.randomCount = 0;
          b.builder.buildsquare(5, 1, 1);
          ASSERT_EQ(platform.randomCount, 12);
          std::array<double, 25> square{};
          for (int i = 0; i < 25; ++i) square[i] = b.numbers()[i % 5 + 1][i / 5 + 1];
          squares.insert(square);
        }
      }
    }
  }
  EXPECT_EQ(squares.size(), 28800u);
}

TEST(SquareBuilder, AnAbortEndsTheConstructionAtTheNextYield) {
  Builder b;
  for (const int abortAt : {1, 5, 30}) {
    b.platform.yieldCount = 0;
    b.run.setRunState(RunState::Idle);
    b.platform.onYield = [&](int count) {
      if (count == abortAt) b.run.setRunState(RunState::Abort);
    };
    EXPECT_THROW(b.builder.buildsquare(7, 1, 1), RunAborted);
    EXPECT_EQ(b.platform.yieldCount, abortAt);
  }
}

}  // namespace
}  // namespace quill::testing
