// Runs on the fake platform, through the user's actions: puzzles printed with
// their answers, and an abort or a quit at any yield of a run or a practice
// leaving the main page as it was.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/number_text.h"
#include "platform/surface.h"
#include "support/magic.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

// Reading a printed page back: where its grids are and what their cells show.
struct GridBox {
  float left, top, right, bottom;
  bool operator==(const GridBox&) const = default;
};

// The white backgrounds of the grids, in drawing order.
inline std::vector<GridBox> gridBoxes(const std::vector<DrawOp>& ops) {
  std::vector<GridBox> grids;
  for (const DrawOp& op : ops) {
    if (op.kind == DrawOp::Kind::Box && op.colour == 15 && op.x2 > op.x1 && op.y2 > op.y1) {
      grids.push_back({op.x1, op.y1, op.x2, op.y2});
    }
  }
  return grids;
}

struct CellView {
  std::string text;  // empty for a blank
  bool shaded = false;
};

// The cells of an n by n grid, row by row: each one's text and shading.
inline std::vector<CellView> cellsIn(const std::vector<DrawOp>& ops, const GridBox& grid, int n) {
  const float width = (grid.right - grid.left) / static_cast<float>(n);
  const float height = (grid.bottom - grid.top) / static_cast<float>(n);
  std::vector<CellView> cells(static_cast<std::size_t>(n) * n);
  for (const DrawOp& op : ops) {
    if (op.x1 <= grid.left || op.x1 >= grid.right || op.y1 <= grid.top || op.y1 >= grid.bottom) continue;
    const auto column = static_cast<std::size_t>((op.x1 - grid.left) / width);
    const auto row = static_cast<std::size_t>((op.y1 - grid.top) / height);
    CellView& cell = cells[row * n + column];
    if (op.kind == DrawOp::Kind::Text) cell.text = op.text;
    if (op.kind == DrawOp::Kind::Box && op.colour == 7 && op.x2 > op.x1) cell.shaded = true;
  }
  return cells;
}

// A printed square's numbers, row by row, read from its grid on the page.
Rows numbersIn(const PrintedPage& page, const GridBox& grid, int n) {
  const std::vector<CellView> cells = cellsIn(page.drawing, grid, n);
  Rows rows(static_cast<std::size_t>(n));
  for (std::size_t i = 0; i < cells.size(); ++i) rows[i / n].push_back(numericValue(cells[i].text));
  return rows;
}

// Practice: whether a puzzle is in play; a press in a cell.
bool playing(const MainWindow& w) { return w.caption().rfind("Number of", 0) == 0 && w.runState() == RunState::Puzzle; }
void click(MainWindow& w, int x, int y) {
  w.userMouseDown(1, 0, static_cast<float>(8 + (x - 1) * w.cellWidth() + w.cellWidth() / 2),
                  static_cast<float>(8 + (y - 1) * page::kRowHeight + 9));
}

class Runs : public WindowTest {};

TEST_F(Runs, PuzzlesAndAnswersShowTheSameSquaresWithTheFormerBlanksShaded) {
  w.sqr7.userClick();
  w.Check12.userClick();
  retype(w.Text1, "3");
  retype(w.Text3, "12");
  std::string firstTitle;
  platform.onYield = [&](int) {
    if (firstTitle.empty()) firstTitle = w.caption();
  };
  for (const bool highlighted : {true, false}) {
    platform.pages.clear();
    (highlighted ? w.highlighted : w.nhighlighted).userClick();
    w.Command1.userClick();
    ASSERT_EQ(platform.pages.size(), 2u);
    const std::vector<GridBox> puzzles = gridBoxes(platform.pages[0].drawing);
    ASSERT_EQ(puzzles.size(), 3u);
    EXPECT_EQ(puzzles, gridBoxes(platform.pages[1].drawing));
    EXPECT_EQ(puzzles[2], (GridBox{392, 8, 392 + 168, 8 + 126}));
    for (const GridBox& grid : puzzles) {
      const Rows rows = numbersIn(platform.pages[1], grid, 7);
      expectCompleteMagic(rows);
      const std::vector<CellView> puzzle = cellsIn(platform.pages[0].drawing, grid, 7);
      const std::vector<CellView> answer = cellsIn(platform.pages[1].drawing, grid, 7);
      int blanks = 0;
      for (std::size_t i = 0; i < puzzle.size(); ++i) {
        const bool blank = puzzle[i].text.empty();
        blanks += blank ? 1 : 0;
        EXPECT_TRUE((blank || puzzle[i].text == answer[i].text) && !puzzle[i].shaded);
        EXPECT_EQ(answer[i].shaded, blank && highlighted) << i;
      }
      EXPECT_EQ(blanks, 12);
    }
  }
  EXPECT_EQ(firstTitle, "Creating (7 by 7) Complete Magic Square(s): 3 out of 3 puzzles and answers left to print.");
}

// At each yield of a run (three 7 by 7 puzzles with answers and random
// starting numbers) or of a practice (with Create disabled and "Print only
// completed Squares" chosen), in a fresh window on the same seed: other keys
// and clicks on the grid do nothing (no entry box while a puzzle is built);
// then Q, "Abort printing" or "Quit playing" brings the main page back
// exactly as it was.
TEST(Stopping, AtAnyYieldTheMainPageComesBackAsItWas) {
  struct Session {
    explicit Session(bool practice) {
      platform.attach(window.get());
      w.userActivate();
      if (practice) {
        w.panswers.userClick();
        w.Command1.setEnabled(false);
      } else {
        w.sqr7.userClick();
        w.Check12.userClick();
        retype(w.Text1, "3");
        retype(w.text4, "5");
        w.Check1.userClick();
      }
    }
    FakePlatform platform{7};
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(platform);
    MainWindow& w = *window;
  };
  for (const bool practice : {false, true}) {
    Session whole(practice);
    const std::string before = pageState(whole.w);
    whole.platform.onYield = [&](int) {
      if (playing(whole.w)) whole.w.qplaying.userClick();
    };
    (practice ? whole.w.Command4 : whole.w.Command1).userClick();
    const int yields = whole.platform.yieldCount;
    ASSERT_GT(yields, practice ? 20 : 100);
    for (int stopAt = 1; stopAt <= yields; ++stopAt) {
      Session s(practice);
      MainWindow& w = s.w;
      s.platform.onYield = [&](int count) {
        w.userKeyDown('A');
        if (count != stopAt) return;
        const bool building = w.caption().rfind("Creating", 0) == 0;
        for (int x = 1; x <= 5; ++x) click(w, x, 3);
        EXPECT_TRUE(!building || !w.Text6.visible());
        if (practice) return w.qplaying.userClick();
        if (stopAt % 2) return w.userKeyDown(keys::letterQ);
        w.aprinting.userClick();
      };
      (practice ? w.Command4 : w.Command1).userClick();
      ASSERT_EQ(pageState(w), before) << "stopped at yield " << stopAt;
      ASSERT_EQ(w.state().startNumber, practice ? 1 : 5);
      ASSERT_TRUE(w.surface().ops().empty());
      ASSERT_EQ(s.platform.pages.size(), !practice && stopAt > yields - 3 ? 1u : 0u) << stopAt;
    }
  }
}

}  // namespace
}  // namespace quill::testing
