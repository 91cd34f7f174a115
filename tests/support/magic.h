// The property every finished square has (each row, column and broken
// diagonal in both directions sums to the same total), and the sizes it has.
#pragma once

#include <gtest/gtest.h>

#include <vector>

namespace quill::testing {

using Rows = std::vector<std::vector<double>>;

// The square sizes: the primes from 5 up to the given one.
inline std::vector<int> primeSizes(int upTo = 101) {
  std::vector<int> sizes;
  for (int n = 5; n <= upTo; n += 2) {
    bool prime = true;
    for (int d = 3; d * d <= n; d += 2) prime = prime && n % d != 0;
    if (prime) sizes.push_back(n);
  }
  return sizes;
}

inline void expectCompleteMagic(const Rows& rows, double total) {
  const auto n = static_cast<int>(rows.size());
  for (int c = 0; c < n; ++c) {
    ASSERT_EQ(rows[c].size(), rows.size()) << "row " << c + 1;
    double row = 0, column = 0, down = 0, up = 0;
    for (int i = 0; i < n; ++i) {
      row += rows[c][i];
      column += rows[i][c];
      down += rows[i][(c + i) % n];
      up += rows[i][(c - i + n) % n];
    }
    ASSERT_EQ(row, total) << "row " << c + 1;
    ASSERT_EQ(column, total) << "column " << c + 1;
    ASSERT_EQ(down, total) << "diagonal " << c + 1;
    ASSERT_EQ(up, total) << "anti-diagonal " << c + 1;
  }
}

}  // namespace quill::testing
