// Square construction: every prime size gives a complete magic square that
// agrees with the closed form, and every combination of draws a different one.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "support/magic.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

void build(MainWindow& w, int n, double start, double distance) {
  w.squareSize = n;
  w.startNumber = start;
  w.distance = distance;
  w.runState = 0;
  w.buildsquare();
}

// The square's numbers, row by row.
Rows rowsOf(const MainWindow& w, int n) {
  Rows rows(static_cast<std::size_t>(n));
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) rows[y - 1].push_back(w.squareNumbers[x][y]);
  }
  return rows;
}

// Each number of the progression exactly once, and the answer copy equal to it.
void expectProgression(const MainWindow& w, int n, double start, double distance) {
  std::vector<double> numbers, expected;
  for (int y = 1; y <= n; ++y) {
    for (int x = 1; x <= n; ++x) {
      numbers.push_back(w.squareNumbers[x][y]);
      ASSERT_EQ(w.squareRanks[x][y], w.squareNumbers[x][y]);
    }
  }
  for (int i = 0; i < n * n; ++i) expected.push_back(i * distance + start);
  std::sort(numbers.begin(), numbers.end());
  std::sort(expected.begin(), expected.end());
  ASSERT_EQ(numbers, expected);
}

constexpr std::array<std::array<int, 2>, 5> kStep = {{{0, 0}, {1, 2}, {-1, 2}, {2, 1}, {-2, 1}}};

// The cell start + a·u + b·w holds rank V1[a] + V2[b] − 1.
void expectClosedForm(const MainWindow& w, int n) {
  const auto& u = kStep[w.previousMoveKind];
  const auto& v = kStep[w.moveKind];
  for (int a = 0; a < n; ++a) {
    for (int b = 0; b < n; ++b) {
      const int x = ((w.patternX[1] - 1 + a * u[0] + b * v[0]) % n + n) % n + 1;
      const int y = ((w.patternY[1] - 1 + a * u[1] + b * v[1]) % n + n) % n + 1;
      ASSERT_EQ(w.squareNumbers[x][y], w.patternRank[1 + a] + w.patternRank[n + 1 + b] - 1)
          << "a=" << a << " b=" << b;
    }
  }
}

class SquareBuilder : public WindowTest {};

TEST_F(SquareBuilder, EveryPrimeSizeAndEveryPairOfStepKindsIsCompleteAndMatchesTheClosedForm) {
  for (const int n : primeSizes()) {
    SCOPED_TRACE(n);
    std::set<std::pair<int, int>> kindPairs;
    const std::size_t allPairs = n == 5 ? 2 : 12;
    for (int square = 0; square < 80 && kindPairs.size() < allPairs; ++square) {
      build(w, n, 1, 1);
      kindPairs.emplace(w.previousMoveKind, w.moveKind);
      ASSERT_NE(w.previousMoveKind, w.moveKind);
      expectProgression(w, n, 1, 1);
      expectCompleteMagic(rowsOf(w, n), n * (n * n + 1) / 2.0);
      expectClosedForm(w, n);
    }
    EXPECT_EQ(kindPairs.size(), allPairs);
  }
}

TEST_F(SquareBuilder, StartAndDistanceSetTheProgression) {
  struct Case {
    double start, distance;
  };
  for (const Case c : {Case{10, 3}, Case{2.5, 1}, Case{100, -7}, Case{-40, 0.5}, Case{6, 0}}) {
    for (const int n : {5, 7, 13}) {
      build(w, n, c.start, c.distance);
      SCOPED_TRACE(::testing::Message() << n << " " << c.start << " " << c.distance);
      expectProgression(w, n, c.start, c.distance);
      expectCompleteMagic(rowsOf(w, n), n * c.start + c.distance * n * (n * n - 1) / 2.0);
      if (c.start == 2.5) {
        EXPECT_EQ(w.squareNumbers[1][1] - static_cast<int>(w.squareNumbers[1][1]), 0.5);
      }
    }
  }
}

// For 5 by 5: 25 start cells, 24 orders of each line and 2 orders of the step
// kinds, fed draw by draw, give 28,800 different squares from 12 draws each.
TEST_F(SquareBuilder, AllFiveByFiveDrawCombinationsGiveDifferentSquares) {
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
          build(w, 5, 1, 1);
          ASSERT_EQ(platform.randomCount, 12);
          std::array<double, 25> square{};
          for (int i = 0; i < 25; ++i) square[i] = w.squareNumbers[i % 5 + 1][i / 5 + 1];
          squares.insert(square);
        }
      }
    }
  }
  EXPECT_EQ(squares.size(), 28800u);
}

TEST_F(SquareBuilder, AnAbortEndsTheConstructionAtTheNextYield) {
  for (const int abortAt : {1, 5, 30}) {
    platform.yieldCount = 0;
    platform.onYield = [&](int count) {
      if (count == abortAt) w.runState = -1;
    };
    EXPECT_THROW(build(w, 7, 1, 1), MainWindow::RunAborted);
    EXPECT_EQ(platform.yieldCount, abortAt);
  }
}

}  // namespace
}  // namespace quill::testing
