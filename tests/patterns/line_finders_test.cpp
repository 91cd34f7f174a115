// Line walks on the torus and the blank markers.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "construction/square.h"
#include "patterns/line_types.h"
#include "support/magic.h"

namespace quill::testing {
namespace {

using Cell = std::pair<int, int>;

// The cells a walk of the line visits, in order, wrapped after each step.
std::vector<Cell> walk(int n, int type, Cell anchor) {
  const Position start{anchor.first, anchor.second};
  Position at = start;
  std::vector<Cell> cells;
  for (int lineStep = 0; cells.empty() || (cells.back() != anchor && static_cast<int>(cells.size()) <= n); ++lineStep) {
    at = stepAlong(type, start, at, lineStep);
    at = {wrap(at.x, n), wrap(at.y, n)};
    cells.emplace_back(at.x, at.y);
  }
  return cells;
}

TEST(LineFinders, WalksWrapAfterEachStepAndEndAtTheAnchor) {
  EXPECT_EQ(walk(7, 1, {7, 3}), (std::vector<Cell>{{1, 3}, {2, 3}, {3, 3}, {4, 3}, {5, 3}, {6, 3}, {7, 3}}));
  EXPECT_EQ(walk(5, 11, {4, 4}), (std::vector<Cell>{{3, 4}, {3, 3}, {4, 3}, {1, 1}, {4, 4}}));
  EXPECT_EQ(walk(5, 3, {1, 1}), (std::vector<Cell>{{2, 5}, {3, 4}, {4, 3}, {5, 2}, {1, 1}}));
}

// Every type from every anchor of every size: a straight line has n cells, a
// pattern the five cells of its family's shape around its centre.
TEST(LineFinders, EveryLineHasItsShapeFromEveryAnchor) {
  struct Shape {
    int reach;       // how far the arms reach from the centre
    bool diagonal;   // an X rather than a plus
  };
  const Shape shapes[4] = {{1, true}, {2, true}, {1, false}, {2, false}};
  // The centre relative to the anchor for the five types of a family, per unit of reach.
  const Offset centres[2][5] = {{{0, 0}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}},
                                {{0, 0}, {0, 1}, {1, 0}, {-1, 0}, {0, -1}}};
  for (const int n : primeSizes(29)) {
    for (int type = 1; type <= 24; ++type) {
      for (int x = 1; x <= n; ++x) {
        for (int y = 1; y <= n; ++y) {
          SCOPED_TRACE(::testing::Message() << n << " type " << type << " at " << x << "," << y);
          const std::vector<Cell> cells = walk(n, type, {x, y});
          const std::set<Cell> distinct(cells.begin(), cells.end());
          ASSERT_EQ(cells.back(), Cell(x, y));
          ASSERT_EQ(distinct.size(), cells.size());
          if (isStraight(type)) {
            ASSERT_EQ(static_cast<int>(cells.size()), n);
            continue;
          }
          const int family = (type - 5) / 5;
          const Shape shape = shapes[family];
          const Offset centre = centres[shape.diagonal ? 0 : 1][(type - 5) % 5];
          const int cx = x + centre.dx * shape.reach, cy = y + centre.dy * shape.reach;
          std::set<Cell> expected{{wrap(cx, n), wrap(cy, n)}};
          for (const int sx : {-1, 1}) {
            for (const int sy : {-1, 1}) {
              const int dx = shape.diagonal ? sx : (sy < 0 ? sx : 0);
              const int dy = shape.diagonal ? sy : (sy < 0 ? 0 : sx);
              expected.emplace(wrap(cx + dx * shape.reach, n), wrap(cy + dy * shape.reach, n));
            }
          }
          ASSERT_EQ(distinct, expected);
        }
      }
    }
  }
}

TEST(LineFinders, MarkersAreExactPowersOfTenAndNameTheirType) {
  for (int type = 1; type <= 24; ++type) {
    EXPECT_EQ(kLineMarker[type], std::stod("1e" + std::to_string(199 + type)));
    EXPECT_EQ(markerType(kLineMarker[type]), type);
    EXPECT_TRUE(isBlank(kLineMarker[type]));
  }
  EXPECT_EQ(markerType(1e223), 24);
  EXPECT_EQ(markerType(1e200), 1);
  EXPECT_EQ(markerType(5e200), 0);
  EXPECT_EQ(markerType(25), 0);
  EXPECT_FALSE(isBlank(9.99e199));
}

}  // namespace
}  // namespace quill::testing
