// Square construction: every prime size gives a complete magic square of its
// progression that agrees with the closed form, and every combination of
// draws a different one.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "construction/square_builder.h"
#include "support/fake_platform.h"
#include "support/steps.h"

namespace quill::testing {
namespace {

// The square sizes: the primes from 5 to 101.
std::vector<int> primeSizes() {
  std::vector<int> sizes;
  for (int n = 5; n <= 101; n += 2) {
    bool prime = true;
    for (int d = 3; d * d <= n; d += 2) prime = prime && n % d != 0;
    if (prime) sizes.push_back(n);
  }
  return sizes;
}

// What makes a square complete magic: each row, column and broken diagonal
// in both directions adds up to the same total.
void expectCompleteMagic(const SquareGrid& grid, int n, double total) {
  const auto at = [&](int x, int y) { return grid[(x % n + n) % n + 1][y + 1]; };  // from 0, wrapped across
  for (int c = 0; c < n; ++c) {
    double row = 0, column = 0, down = 0, up = 0;
    for (int i = 0; i < n; ++i) row += at(i, c), column += at(c, i), down += at(c + i, i), up += at(c - i, i);
    ASSERT_EQ(row, total) << "row " << c + 1;
    ASSERT_EQ(column, total) << "column " << c + 1;
    ASSERT_EQ(down, total) << "diagonal " << c + 1;
    ASSERT_EQ(up, total) << "anti-diagonal " << c + 1;
  }
}

struct Builder {
  FakePlatform platform;
  Square square;
  void build(int n, double start, double distance) {
    ASSERT_TRUE(buildSquare(square, n, start, distance, buildSteps(platform)));
  }
  const SquareGrid& numbers() const { return square.squareNumbers; }
};

// The step kinds (u, w) of the two pattern lines of the square: with S the
// cell of the start number, every cell S + a·u + b·w holds rank(a, 0) +
// rank(0, b), ranks counted from 0, and the first line holds ranks below n.
// (0, 0) when no pair of kinds gives the square.
std::pair<int, int> closedFormKinds(const Builder& b, int n, double start, double distance) {
  constexpr std::array<std::array<int, 2>, 5> kStep = {{{0, 0}, {1, 2}, {-1, 2}, {2, 1}, {-2, 1}}};
  int sx = 0, sy = 0;
  for (int x = 1; x <= n; ++x) {
    for (int y = 1; y <= n; ++y) {
      if (b.numbers()[x][y] == start) sx = x, sy = y;
    }
  }
  const auto rank = [&](int a, int u, int c, int w) {
    const int x = ((sx - 1 + a * kStep[u][0] + c * kStep[w][0]) % n + n) % n + 1;
    const int y = ((sy - 1 + a * kStep[u][1] + c * kStep[w][1]) % n + n) % n + 1;
    return (b.numbers()[x][y] - start) / distance;
  };
  for (int u = 1; u <= 4; ++u) {
    for (int w = 1; w <= 4; ++w) {
      bool holds = u != w;
      for (int a = 0; a < n && holds; ++a) {
        holds = rank(a, u, 0, w) < n;
        for (int c = 0; c < n && holds; ++c) holds = rank(a, u, c, w) == rank(a, u, 0, w) + rank(0, u, c, w);
      }
      if (holds) return {u, w};
    }
  }
  return {0, 0};
}

TEST(SquareBuilder, EveryPrimeSizeIsCompleteMagicAndEveryPairOfStepKindsOccurs) {
  auto b = std::make_unique<Builder>();
  const std::array<std::pair<double, double>, 5> progressions = {{{1, 1}, {10, 3}, {2.5, 0.5}, {-40, -2}, {100, 7}}};
  for (const int n : primeSizes()) {
    std::set<std::pair<int, int>> kindPairs;
    for (int square = 0; square < 80 && kindPairs.size() < (n == 5 ? 2u : 12u); ++square) {
      const auto [start, distance] = progressions[static_cast<std::size_t>(square + n) % progressions.size()];
      b->build(n, start, distance);
      SCOPED_TRACE(::testing::Message() << n << " from " << start << " by " << distance);
      std::vector<double> numbers, expected;
      for (int y = 1; y <= n; ++y) {
        for (int x = 1; x <= n; ++x) {
          numbers.push_back(b->numbers()[x][y]);
          expected.push_back(start + distance * ((y - 1) * n + x - 1));
        }
      }
      ASSERT_EQ(b->square.squareRanks, b->numbers());  // the answers
      std::sort(numbers.begin(), numbers.end());
      std::sort(expected.begin(), expected.end());
      ASSERT_EQ(numbers, expected);
      expectCompleteMagic(b->numbers(), n, n * start + distance * n * (n * n - 1) / 2.0);
      const auto kinds = closedFormKinds(*b, n, start, distance);
      ASSERT_NE(kinds.first, 0);
      kindPairs.insert(kinds);
    }
    EXPECT_EQ(kindPairs.size(), n == 5 ? 2u : 12u) << n;
  }
}

// For 5 by 5: 25 start cells, 24 orders of each line and 2 orders of the step
// kinds, fed draw by draw, give 28,800 different squares from 12 draws each.
TEST(SquareBuilder, AllFiveByFiveDrawCombinationsGiveDifferentSquares) {
  auto b = std::make_unique<Builder>();
  std::array<int, 4> order{0, 1, 2, 3};
  std::vector<std::array<int, 4>> orders;
  do {
    orders.push_back(order);
  } while (std::next_permutation(order.begin(), order.end()));
  std::set<std::array<double, 25>> squares;
  const auto uniform = [](int value, int count) { return (value + 0.5) / count; };
  for (int cell = 0; cell < 25; ++cell) {
    for (const int firstKind : {0, 1}) {
      for (const auto& first : orders) {
        for (const auto& second : orders) {
          auto& script = b->platform.scriptedRandom;
          script = {uniform(cell % 5, 5), uniform(cell / 5, 5), uniform(firstKind, 2)};
          for (const int v : first) script.push_back(uniform(v, 4));
          script.push_back(uniform(1 - firstKind, 2));
          for (const int v : second) script.push_back(uniform(v, 4));
          b->platform.randomCount = 0;
          b->build(5, 1, 1);
          ASSERT_EQ(b->platform.randomCount, 12);
          std::array<double, 25> square{};
          for (int i = 0; i < 25; ++i) square[i] = b->numbers()[i % 5 + 1][i / 5 + 1];
          squares.insert(square);
        }
      }
    }
  }
  EXPECT_EQ(squares.size(), 28800u);
}

}  // namespace
}  // namespace quill::testing
