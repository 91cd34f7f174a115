// The square display: cell geometry, the grid, numbers, sign shift, shading,
// and squares larger than the page printed tile by tile.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "construction/square_builder.h"
#include "platform/number_text.h"
#include "support/drawing.h"
#include "display/square_display.h"
#include "support/fake_platform.h"

namespace quill::testing {
namespace {

class SquareDisplayTest : public ::testing::Test {
 protected:
  void buildAndPrepare(int n, double start, double distance) {
    numbers = {n, start, distance};
    RunControl run(platform);
    auto builder = std::make_unique<SquareBuilder>(run);
    builder->buildsquare(n, start, distance);
    square = std::make_unique<Square>(builder->square());
    display.prepareLayout(n, numbers);
  }
  void show(SquareView view = {}) { display.showsquare(*square, {}, numbers, view); }
  const std::vector<DrawOp>& ops() { return surface.ops(); }
  const DrawOp* textOf(double number) {
    for (const DrawOp& op : ops()) {
      if (op.kind == DrawOp::Kind::Text && op.text == numberText(number)) return &op;
    }
    return nullptr;
  }

  SquareDisplayTest() { platform.attach(&form); }
  FakePlatform platform;
  Form form;  // what a printed page is taken from
  Surface& surface = form.surface();
  SquareDisplay display{platform, surface};
  Progression numbers;
  std::unique_ptr<Square> square;
};

TEST_F(SquareDisplayTest, LayoutFollowsTheWidestNumber) {
  struct Case {
    int n;
    double start, distance;
    int numberChars, entryMaxLength, cellWidth, visibleColumns, visibleRows;
  };
  const Case cases[] = {
      {5, 1, 1, 2, 2, 24, 5, 5},        {11, 0, 1, 3, 3, 24, 11, 11},        {5, 1000, 1, 4, 4, 32, 5, 5},     {5, 100, 1, 3, 3, 24, 5, 5},
      {5, -3, 1, 3, 2, 24, 5, 5},       {29, 1, 1, 3, 3, 24, 29, 29},     {29, 1000, 1, 4, 4, 32, 23, 29},
      {31, 1, 1, 3, 3, 24, 31, 29},     {19, 10000, 1, 5, 5, 40, 18, 19}, {101, 1, 1, 5, 5, 40, 18, 29},
  };
  for (const Case& c : cases) {
    display.prepareLayout(c.n, {c.n, c.start, c.distance});
    SCOPED_TRACE(::testing::Message() << c.n << " " << c.start);
    EXPECT_EQ(display.numberChars(), c.numberChars);
    EXPECT_EQ(display.entryMaxLength(), c.entryMaxLength);
    EXPECT_EQ(display.cellWidth(), c.cellWidth);
    EXPECT_EQ(display.visibleColumns(), c.visibleColumns);
    EXPECT_EQ(display.visibleRows(), c.visibleRows);
  }
}

// Six lines each way; each number from its cell's corner, shifted right by
// a sign's width when it has none and some number of the square has.
TEST_F(SquareDisplayTest, AFiveByFiveSquareOnTheSurface) {
  buildAndPrepare(5, -3, 1);
  show();
  ASSERT_EQ(gridBoxes(ops()), (std::vector<GridBox>{{8, 8, 128, 98}}));
  int vertical = 0, horizontal = 0;
  for (const DrawOp& op : ops()) {
    if (op.kind != DrawOp::Kind::Box || op.colour != 0) continue;
    vertical += op.x1 == op.x2 && op.y1 == 8 && op.y2 == 98 ? 1 : 0;
    horizontal += op.y1 == op.y2 && op.x1 == 8 && op.x2 == 128 ? 1 : 0;
  }
  EXPECT_EQ(vertical * 10 + horizontal, 66);
  for (int y = 1; y <= 5; ++y) {
    for (int x = 1; x <= 5; ++x) {
      const double number = square->squareNumbers[x][y];
      const DrawOp* text = textOf(number);
      ASSERT_NE(text, nullptr) << number;
      EXPECT_EQ(text->x1, 8 + (x - 1) * 24 + (number >= 0 ? 5 : 2)) << number;
      EXPECT_EQ(text->y1, 11 + (y - 1) * 18) << number;
    }
  }
  EXPECT_EQ(cellTexts(ops()).size(), 25u);
  EXPECT_TRUE(platform.pages.empty());
}

// Squares wider or taller than the page: every cell is printed exactly once,
// every tile on a page of its own with its label, and the surface ends empty.
TEST_F(SquareDisplayTest, TiledSquaresPutEveryCellOnPaperOnce) {
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
    const int columns = display.visibleColumns(), rows = display.visibleRows();
    show({true, false});
    EXPECT_EQ(display.visibleColumns(), columns);
    EXPECT_EQ(display.visibleRows(), rows);
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
