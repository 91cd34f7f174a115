// Runs on the fake platform, through the user's actions: the pages a creation
// run prints and where, puzzles with their answers, squares larger than the
// page in tiles, practice with its entry box and score, and an abort or a
// quit at any yield leaving the main page as it was.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <tuple>
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

// Practice: whether a puzzle is in play, its first blank, a press in a cell, an entry.
bool playing(const MainWindow& w) { return w.caption().rfind("Number of", 0) == 0 && w.runState() == RunState::Puzzle; }
std::vector<std::pair<int, int>> blanksOf(const MainWindow& w) {
  std::vector<std::pair<int, int>> cells;
  for (int y = 1; y <= w.state().squareSize; ++y) {
    for (int x = 1; x <= w.state().squareSize; ++x) {
      if (isBlank(w.square().squareNumbers[x][y])) cells.emplace_back(x, y);
    }
  }
  return cells;
}
void click(MainWindow& w, int x, int y) {
  w.userMouseDown(1, 0, static_cast<float>(8 + (x - 1) * w.cellWidth() + w.cellWidth() / 2),
                  static_cast<float>(8 + (y - 1) * page::kRowHeight + 9));
}
void enter(MainWindow& w, const std::string& text) {
  w.Text6.userEdit(text);
  w.Text6.userKeyDown(keys::enter);
}

class Runs : public WindowTest {
 protected:
  // Clicks the button; at every yield notes a new title, then plays `step`.
  void run(Control& button, const std::function<void()>& step = {}) {
    platform.onYield = [this, step](int) {
      note();
      if (step) step();
    };
    button.userClick();
    note();
  }
  void note() {
    if (captions.empty() || captions.back() != w.caption()) captions.push_back(w.caption());
  }
  std::vector<std::string> captions;
};

std::string progress(int left, int total, const char* what, int n = 5) {
  const std::string t = std::to_string(n);
  return "Creating (" + t + " by " + t + ") Complete Magic Square(s): " + std::to_string(left) + " out of " +
         std::to_string(total) + " " + what + " left to print.";
}

// Random starting numbers from 1 to 10: each square is magic on its own.
TEST_F(Runs, TwentyFiveSquaresFillOnePageInRowsOfFive) {
  w.panswers.userClick();
  w.Check1.userClick();
  run(w.Command1);
  ASSERT_EQ(platform.pages.size(), 1u);
  EXPECT_TRUE(platform.pages[0].visibleControls.empty());
  const std::vector<GridBox> grids = gridBoxes(platform.pages[0].drawing);
  ASSERT_EQ(grids.size(), 25u);
  std::set<double> starts;
  for (std::size_t i = 0; i < grids.size(); ++i) {
    const float left = 8 + 144 * static_cast<float>(i % 5), top = 8 + 108 * static_cast<float>(i / 5);
    EXPECT_EQ(grids[i], (GridBox{left, top, left + 120, top + 90})) << i;
    const Rows rows = numbersIn(platform.pages[0], grids[i], 5);
    expectCompleteMagic(rows);
    starts.insert(std::accumulate(rows[0].begin(), rows[0].end(), 0.0) / 5 - 12);
  }
  EXPECT_TRUE(*starts.begin() >= 1 && *starts.rbegin() <= 10 && starts.size() > 1);
  std::vector<std::string> expected;
  for (int left = 25; left >= 1; --left) expected.push_back(progress(left, 25, "squares"));
  expected.push_back("Quillion");
  EXPECT_EQ(captions, expected);
  EXPECT_TRUE(w.surface().ops().empty());
}

TEST_F(Runs, PuzzlesAndAnswersShowTheSameSquaresWithTheFormerBlanksShaded) {
  w.sqr7.userClick();
  w.Check12.userClick();
  retype(w.Text1, "3");
  retype(w.Text3, "12");
  for (const bool highlighted : {true, false}) {
    platform.pages.clear();
    (highlighted ? w.highlighted : w.nhighlighted).userClick();
    run(w.Command1);
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
  EXPECT_EQ(captions.front(), progress(3, 3, "puzzles and answers", 7));
}

// Each blank clicked opens the box over exactly its cell; the answer is
// written in print form from one unit left of the cell; a solved square is
// counted and the next one built.
TEST_F(Runs, PracticeSolvesEveryBlankAndCountsTheSquare) {
  retype(w.Text3, "4");
  int firstBlanks = 0;
  run(w.Command4, [&] {
    if (!playing(w)) return;
    if (w.state().runDone == 1) return w.qplaying.userClick();
    if (firstBlanks == 0) firstBlanks = static_cast<int>(blanksOf(w).size());
    const auto [x, y] = blanksOf(w).front();
    click(w, x, y);
    const int left = 8 + (x - 1) * w.cellWidth(), top = 8 + (y - 1) * page::kRowHeight;
    const TwipRect box = w.Text6.rect();
    EXPECT_TRUE(w.Text6.visible() && w.Text6.enabled());
    EXPECT_EQ(std::tuple(box.left, box.top, box.width, box.height),
              std::tuple(left * 15, top * 15, (w.cellWidth() + 1) * 15, page::kRowHeight * 15));
    const std::string answer = numberText(w.square().squareRanks[x][y]);
    enter(w, answer);
    EXPECT_FALSE(w.Text6.visible());
    const auto& ops = w.surface().ops();
    EXPECT_EQ(ops.back().text, " " + answer + " ");
    EXPECT_EQ(std::pair(ops[ops.size() - 2].x1, ops[ops.size() - 2].y1),
              std::pair(static_cast<float>(left - 1), static_cast<float>(top + 3)));
  });
  EXPECT_EQ(firstBlanks, 4);
  const std::string score = "Number of (5 by 5) Complete Magic Square(s) solved: ";
  EXPECT_EQ(std::count(captions.begin(), captions.end(), "Creating (5 by 5) Complete Magic Square (with blanks)"), 2);
  EXPECT_EQ(std::count(captions.begin(), captions.end(), score + "1 / Numbers correct: 4 / Numbers incorrect: 0"), 1);
  EXPECT_EQ(w.caption(), "Quillion");
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
