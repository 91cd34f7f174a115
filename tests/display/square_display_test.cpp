// The square display: cell geometry, the grid, numbers, sign shift, shading,
// and squares larger than the page printed tile by tile.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "construction/square_builder.h"
#include "platform/number_text.h"
#include "support/drawing.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class SquareDisplay : public WindowTest {
 protected:
  void buildAndPrepare(int n, double start, double distance) {
    w.squareSize = n;
    w.startNumber = start;
    w.distance = distance;
    FakePlatform quiet;
    RunControl run(quiet);
    auto builder = std::make_unique<SquareBuilder>(run);
    builder->buildsquare(n, start, distance);
    w.square() = builder->square();
    w.prepareLayout(false);
    w.placement = {};
  }
  const std::vector<DrawOp>& ops() { return w.surface().ops(); }
  const DrawOp* textOf(double number) {
    for (const DrawOp& op : ops()) {
      if (op.kind == DrawOp::Kind::Text && op.text == numberText(number)) return &op;
    }
    return nullptr;
  }
};

TEST_F(SquareDisplay, LayoutFollowsTheWidestNumber) {
  struct Case {
    int n;
    double start, distance;
    int numberChars, entryMaxLength, cellWidth, visibleColumns, visibleRows;
  };
  const Case cases[] = {
      {5, 1, 1, 2, 2, 24, 5, 5},        {5, 1000, 1, 4, 4, 32, 5, 5},     {5, 100, 1, 3, 3, 24, 5, 5},
      {5, -3, 1, 3, 2, 24, 5, 5},       {29, 1, 1, 3, 3, 24, 29, 29},     {29, 1000, 1, 4, 4, 32, 23, 29},
      {31, 1, 1, 3, 3, 24, 31, 29},     {19, 10000, 1, 5, 5, 40, 18, 19}, {101, 1, 1, 5, 5, 40, 18, 29},
  };
  for (const Case& c : cases) {
    w.squareSize = c.n;
    w.startNumber = c.start;
    w.distance = c.distance;
    w.prepareLayout(true);
    SCOPED_TRACE(::testing::Message() << c.n << " " << c.start);
    EXPECT_EQ(w.numberChars, c.numberChars);
    EXPECT_EQ(w.entryMaxLength, c.entryMaxLength);
    EXPECT_EQ(w.cellWidth, c.cellWidth);
    EXPECT_EQ(w.visibleColumns, c.visibleColumns);
    EXPECT_EQ(w.visibleRows, c.visibleRows);
    EXPECT_EQ(w.Text6.maxLength(), c.entryMaxLength);
  }
}

TEST_F(SquareDisplay, AFiveByFiveSquareOnTheSurface) {
  buildAndPrepare(5, 1, 1);
  w.showsquare();
  ASSERT_EQ(gridBoxes(ops()), (std::vector<GridBox>{{8, 8, 128, 98}}));
  int vertical = 0, horizontal = 0;
  for (const DrawOp& op : ops()) {
    if (op.kind != DrawOp::Kind::Box || op.colour != 0) continue;
    if (op.x1 == op.x2 && op.y1 == 8 && op.y2 == 98) ++vertical;
    if (op.y1 == op.y2 && op.x1 == 8 && op.x2 == 128) ++horizontal;
  }
  EXPECT_EQ(vertical, 6);
  EXPECT_EQ(horizontal, 6);
  const DrawOp* topLeft = textOf(w.square().squareNumbers[1][1]);
  ASSERT_NE(topLeft, nullptr);
  EXPECT_EQ(topLeft->x1, 10);
  EXPECT_EQ(topLeft->y1, 11);
  const DrawOp* bottomRight = textOf(w.square().squareNumbers[5][5]);
  EXPECT_EQ(bottomRight->x1, 10 + 4 * 24);
  EXPECT_EQ(bottomRight->y1, 11 + 4 * 18);
  EXPECT_EQ(cellTexts(ops()).size(), 25u);
  EXPECT_TRUE(platform.pages.empty());
}

TEST_F(SquareDisplay, NonNegativeNumbersStandClearOfTheMinusSigns) {
  buildAndPrepare(5, -3, 1);
  w.showsquare();
  for (int y = 1; y <= 5; ++y) {
    for (int x = 1; x <= 5; ++x) {
      const double number = w.square().squareNumbers[x][y];
      const DrawOp* text = textOf(number);
      ASSERT_NE(text, nullptr) << number;
      EXPECT_EQ(text->x1, 8 + (x - 1) * 24 + (number >= 0 ? 5 : 2)) << number;
    }
  }
}

TEST_F(SquareDisplay, BlanksAreEmptyInThePuzzleAndShadedInTheAnswers) {
  buildAndPrepare(7, 1, 1);
  const double answer = w.square().squareRanks[2][3];
  w.square().squareNumbers[2][3] = kBlankMarker;
  const float cellLeft = 8 + 24, cellTop = 8 + 2 * 18;
  const auto shaded = [&] {
    return std::any_of(ops().begin(), ops().end(), [&](const DrawOp& op) {
      return op.kind == DrawOp::Kind::Box && op.colour == 7 && op.x1 == cellLeft + 1 && op.y1 == cellTop + 1 &&
             op.x2 == cellLeft + 23 && op.y2 == cellTop + 17;
    });
  };
  struct Case {
    int showAnswers, printChoice, highlightAnswers;
    bool answerShown, shadedExpected;
  };
  for (const Case c : {Case{0, 1, 1, false, false}, Case{1, 1, 1, true, true}, Case{1, 2, 0, true, false},
                       Case{1, 0, 1, true, false}}) {
    w.surface().clear();
    w.showAnswers = c.showAnswers;
    w.printChoice = c.printChoice;
    w.highlightAnswers = c.highlightAnswers;
    w.showsquare();
    SCOPED_TRACE(::testing::Message() << c.showAnswers << c.printChoice << c.highlightAnswers);
    EXPECT_EQ(textOf(answer) != nullptr, c.answerShown);
    EXPECT_EQ(shaded(), c.shadedExpected);
    EXPECT_EQ(cellTexts(ops()).size(), c.answerShown ? 49u : 48u);
  }
}

// Squares wider or taller than the page: every cell is printed exactly once,
// every tile on a page of its own with its label, and the surface ends empty.
TEST_F(SquareDisplay, TiledSquaresPutEveryCellOnPaperOnce) {
  struct Case {
    int n;
    double start;
    int tiles;
  };
  // 19 by 19 with five-character numbers: 18 columns, then a one-column tile.
  for (const Case c : {Case{29, 1000, 2}, Case{19, 10000, 2}, Case{31, 1, 2}, Case{53, 1, 3 * 2},
                       Case{101, 1, 6 * 4}}) {
    SCOPED_TRACE(c.n);
    platform.pages.clear();
    buildAndPrepare(c.n, c.start, 1);
    const int columns = w.visibleColumns, rows = w.visibleRows;
    w.showAnswers = 1;
    w.printChoice = 0;
    w.showsquare();
    EXPECT_EQ(w.visibleColumns, columns);
    EXPECT_EQ(w.visibleRows, rows);
    EXPECT_TRUE(ops().empty());
    ASSERT_EQ(platform.pages.size(), static_cast<std::size_t>(c.tiles));

    std::vector<double> printed;
    for (const PrintedPage& page : platform.pages) {
      const std::vector<std::string> texts = cellTexts(page.drawing);
      EXPECT_FALSE(texts.empty());
      EXPECT_EQ(gridBoxes(page.drawing).size(), 1u);
      EXPECT_EQ(std::count_if(page.drawing.begin(), page.drawing.end(),
                              [](const DrawOp& op) { return op.text.find(',') != std::string::npos; }),
                1);
      for (const std::string& text : texts) printed.push_back(numericValue(text));
    }
    std::sort(printed.begin(), printed.end());
    std::vector<double> all(static_cast<std::size_t>(c.n * c.n));
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = c.start + static_cast<double>(i);
    EXPECT_EQ(printed, all);
  }
}

}  // namespace
}  // namespace quill::testing
