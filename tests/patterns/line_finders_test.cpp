// Line walks on the torus, the blank markers, and the pattern families'
// trying and scoring procedures.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "patterns/line_types.h"
#include "support/magic.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

using Cell = std::pair<int, int>;

class LineFinders : public WindowTest {
 protected:
  // The cells a walk of the line visits through findline2, in order.
  std::vector<Cell> walk(int n, int type, Cell anchor) {
    w.squareSize = n;
    w.lineType = type;
    std::tie(w.cellX, w.cellY) = anchor;
    std::tie(w.cursorX, w.cursorY) = anchor;
    w.lineStep = 0;
    std::vector<Cell> cells;
    do {
      w.findline2();
      ++w.lineStep;
      w.cursorX = wrap(w.cursorX, n);
      w.cursorY = wrap(w.cursorY, n);
      cells.emplace_back(w.cursorX, w.cursorY);
    } while (cells.back() != anchor && static_cast<int>(cells.size()) <= n);
    return cells;
  }
  // The cells of the reserved line of this type and anchor, through findline1.
  std::set<Cell> reservedLine(int n, int type, Cell anchor) {
    w.squareSize = n;
    w.reservedType = type;
    std::tie(w.reservedX, w.reservedY) = anchor;
    std::set<Cell> cells;
    for (int x = 1; x <= n; ++x) {
      for (int y = 1; y <= n; ++y) {
        if (w.reservedLineMeets(x, y)) cells.emplace(x, y);
      }
    }
    return cells;
  }
  // A 5 by 5 square of 1..25 with the cell (x, y) under consideration and
  // every scoring value cleared.
  void fiveByFive(int x, int y) {
    w.squareSize = 5;
    w.startNumber = 1;
    w.distance = 1;
    w.buildsquare();
    w.cellX = x;
    w.cellY = y;
    w.lineUsable.fill(0);
    w.lineTally.fill(0);
    w.lineFailed.fill(0);
    w.lineBlankTally = 0;
    w.bestBlankTally = 0;
    w.patternFound = 0;
  }
};

TEST_F(LineFinders, WalksWrapAfterEachStepAndEndAtTheAnchor) {
  EXPECT_EQ(walk(7, 1, {7, 3}), (std::vector<Cell>{{1, 3}, {2, 3}, {3, 3}, {4, 3}, {5, 3}, {6, 3}, {7, 3}}));
  EXPECT_EQ(walk(5, 11, {4, 4}), (std::vector<Cell>{{3, 4}, {3, 3}, {4, 3}, {1, 1}, {4, 4}}));
  EXPECT_EQ(walk(5, 3, {1, 1}), (std::vector<Cell>{{2, 5}, {3, 4}, {4, 3}, {5, 2}, {1, 1}}));
}

// Every type from every anchor of every size: a straight line has n cells, a
// pattern the five cells of its family's shape around its centre; the
// reserved line's test agrees with the walk.
TEST_F(LineFinders, EveryLineHasItsShapeFromEveryAnchor) {
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
          if (n <= 11) {
            ASSERT_EQ(reservedLine(n, type, {x, y}), distinct);
          }
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

TEST_F(LineFinders, MarkersAreExactPowersOfTenAndNameTheirType) {
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

TEST_F(LineFinders, OnlyMainPlacementsStayInsideTheSquare) {
  fiveByFive(1, 1);
  w.crossDiagonalChoice = 1;
  w.d2scross();
  for (int type = 5; type <= 9; ++type) {
    EXPECT_EQ(w.lineUsable[type], type == 6 ? 1 : 0) << type;
    EXPECT_EQ(w.lineFailed[type], type == 6 ? 0 : 1) << type;
  }
  w.crossLineChoice = 1;
  w.scatteredCrossLineChoice = 1;
  w.d2scline();
  w.d2scline2();
  for (int type = 15; type <= 24; ++type) EXPECT_EQ(w.lineFailed[type], 1) << type;
  const SquareGrid before = w.squareNumbers;
  w.d1scline();
  w.d1scline2();
  EXPECT_EQ(w.squareNumbers, before);
  EXPECT_EQ(w.patternFound, 0);
  w.d1scross();
  EXPECT_EQ(w.squareNumbers[1][1], 1e205);  // the X centred on (2, 2)

  fiveByFive(1, 1);
  w.crossDiagonalChoice = 2;
  w.d2scross();
  for (int type = 5; type <= 9; ++type) EXPECT_EQ(w.lineUsable[type], 1) << type;
}

TEST_F(LineFinders, OnlyAMarkerOfTheSameTypeTakesALine) {
  const std::vector<Cell> xAround33 = {{3, 3}, {2, 2}, {4, 2}, {4, 4}, {2, 4}};
  for (const Cell& marked : xAround33) {
    for (const double marker : {1e204, 1e205}) {
      fiveByFive(3, 3);
      w.crossDiagonalChoice = 1;
      w.squareNumbers[marked.first][marked.second] = marker;
      w.d2scross();
      const bool taken = marker == 1e204;
      EXPECT_EQ(w.lineUsable[5], taken ? 0 : 1);
      EXPECT_EQ(w.lineFailed[5], taken ? 1 : 0);
      EXPECT_EQ(w.lineTally[5], taken ? 0 : 1);
    }
  }
}

TEST_F(LineFinders, TryingBlanksThroughTheFirstFreeLine) {
  fiveByFive(3, 3);
  w.crossDiagonalChoice = 1;
  w.d1scross();
  EXPECT_EQ(w.squareNumbers[3][3], 1e204);
  EXPECT_EQ(w.patternFound, 1);
}

TEST_F(LineFinders, ScoringKeepsOnlyTheBestCount) {
  fiveByFive(3, 3);
  w.crossDiagonalChoice = 1;
  w.squareNumbers[2][2] = 1e200;
  w.squareNumbers[4][4] = 1e201;
  w.bestBlankTally = 3;
  w.d2scross();
  EXPECT_EQ(w.lineUsable[5], 1);
  EXPECT_EQ(w.lineTally[5], 0);
  EXPECT_EQ(w.lineBlankTally, 0);
  EXPECT_EQ(w.bestBlankTally, 3);

  fiveByFive(3, 3);
  w.crossDiagonalChoice = 1;
  w.squareNumbers[2][2] = 1e200;
  w.squareNumbers[4][4] = 1e201;
  w.d2scross();
  EXPECT_EQ(w.lineTally[5], 2);
  EXPECT_EQ(w.bestBlankTally, 2);
}

}  // namespace
}  // namespace quill::testing
