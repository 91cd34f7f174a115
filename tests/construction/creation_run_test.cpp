// The creation run on the fake platform: pages, captions, corrected inputs,
// random starting numbers, and an abort at any yield.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/number_text.h"
#include "support/drawing.h"
#include "support/magic.h"
#include "support/page_state.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class CreationRun : public WindowTest {
 protected:
  // Records each new title the run shows, checked at every yield.
  void recordCaptions() {
    platform.onYield = [this](int) {
      if (captions.empty() || captions.back() != w.caption()) captions.push_back(w.caption());
    };
  }
  void run() {
    w.Command1.userClick();
    if (captions.empty() || captions.back() != w.caption()) captions.push_back(w.caption());
  }
  void setCount(const std::string& count) {
    w.Check12.userClick();  // clear "Fill Page"
    retype(w.Text1, count);
  }
  // The numbers of a grid of an n by n square, row by row.
  static Rows numbersIn(const PrintedPage& page, const GridBox& grid, int n) {
    const std::vector<std::string> texts = textsIn(page.drawing, grid);
    Rows rows(static_cast<std::size_t>(n));
    for (std::size_t i = 0; i < texts.size(); ++i) rows[i / n].push_back(numericValue(texts[i]));
    return rows;
  }
  std::vector<std::string> captions;
};

std::string progress(int left, int total, const char* what, int n = 5) {
  const std::string t = std::to_string(n);
  return "Creating (" + t + " by " + t + ") Complete Magic Square(s): " + std::to_string(left) + " out of " +
         std::to_string(total) + " " + what + " left to print.";
}

TEST_F(CreationRun, TwentyFiveSquaresFillOnePage) {
  w.panswers.userClick();
  recordCaptions();
  run();
  ASSERT_EQ(platform.pages.size(), 1u);
  const PrintedPage& page = platform.pages[0];
  EXPECT_TRUE(page.visibleControls.empty());
  const std::vector<GridBox> grids = gridBoxes(page.drawing);
  ASSERT_EQ(grids.size(), 25u);
  for (std::size_t i = 0; i < grids.size(); ++i) {
    const float left = 8 + 144 * static_cast<float>(i % 5);
    const float top = 8 + 108 * static_cast<float>(i / 5);
    EXPECT_EQ(grids[i], (GridBox{left, top, left + 120, top + 90})) << i;
    const Rows rows = numbersIn(page, grids[i], 5);
    expectCompleteMagic(rows, firstRowSum(rows));
  }
  std::vector<std::string> expected;
  for (int left = 25; left >= 1; --left) expected.push_back(progress(left, 25, "squares"));
  expected.push_back("Quillion");
  EXPECT_EQ(captions, expected);
  EXPECT_TRUE(w.surface().ops().empty());
}

TEST_F(CreationRun, PuzzlesAndAnswersPrintTwoPagesWithTheSameSquares) {
  w.sqr7.userClick();
  setCount("3");
  retype(w.Text3, "12");
  for (const bool highlighted : {true, false}) {
    platform.pages.clear();
    captions.clear();
    (highlighted ? w.highlighted : w.nhighlighted).userClick();
    recordCaptions();
    run();
    ASSERT_EQ(platform.pages.size(), 2u);
    const std::vector<GridBox> puzzles = gridBoxes(platform.pages[0].drawing);
    const std::vector<GridBox> answers = gridBoxes(platform.pages[1].drawing);
    ASSERT_EQ(puzzles.size(), 3u);
    EXPECT_EQ(puzzles, answers);
    EXPECT_EQ(puzzles[2], (GridBox{392, 8, 392 + 168, 8 + 126}));
    for (const GridBox& grid : answers) {
      const Rows rows = numbersIn(platform.pages[1], grid, 7);
      expectCompleteMagic(rows, firstRowSum(rows));
      // The puzzle shows every answer except at its 12 blanks, which the
      // answer page shades when answers are highlighted.
      const std::vector<CellView> puzzle = cellsIn(platform.pages[0].drawing, grid, 7);
      const std::vector<CellView> answer = cellsIn(platform.pages[1].drawing, grid, 7);
      int blanks = 0;
      for (std::size_t i = 0; i < puzzle.size(); ++i) {
        const bool blank = puzzle[i].text.empty();
        blanks += blank ? 1 : 0;
        if (!blank) {
          EXPECT_EQ(puzzle[i].text, answer[i].text);
        }
        EXPECT_FALSE(puzzle[i].shaded);
        EXPECT_EQ(answer[i].shaded, blank && highlighted) << i;
      }
      EXPECT_EQ(blanks, 12);
    }
    EXPECT_EQ(captions.front(), progress(3, 3, "puzzles and answers", 7));
    EXPECT_EQ(captions.back(), "Quillion");
  }
}

TEST_F(CreationRun, TiledSquaresPrintTheirTilesAndNoBlankSheet) {
  struct Case {
    const char* size;
    int printChoice;
    std::size_t pages;
  };
  for (const Case c : {Case{"31", 0, 2}, Case{"31", 2, 4}, Case{"53", 1, 6}}) {
    platform.pages.clear();
    platform.documentEnds.clear();
    retype(w.Text2, c.size);
    (c.printChoice == 0 ? w.panswers : c.printChoice == 1 ? w.ppuzzles : w.pboth).userClick();
    run();
    EXPECT_EQ(platform.pages.size(), c.pages) << c.size;
    EXPECT_EQ(platform.documentEnds, std::vector<std::size_t>{c.pages});  // the whole run, one document
  }
}

TEST_F(CreationRun, UnusableInputsAreCorrectedOnThePage) {
  retype(w.Text5, "-3");
  EXPECT_EQ(w.state().distance, -3);
  setCount("2");
  w.Text3.userEdit("abc");
  w.Text7.userEdit("0");
  run();
  EXPECT_EQ(w.Text5.text(), "1");
  EXPECT_EQ(w.state().distance, 1);
  EXPECT_EQ(w.Text3.text(), "1");
  EXPECT_EQ(w.state().puzzle.blankTarget, 1);
  EXPECT_EQ(w.Text7.text(), "2");

  // A negative text without a key release keeps the distance in force.
  retype(w.Text5, "4");
  w.Text5.userEdit("-2");
  run();
  EXPECT_EQ(w.Text5.text(), "-2");
  EXPECT_EQ(w.state().distance, 4);
}

TEST_F(CreationRun, RandomStartingNumbersStayWithinTheAllowance) {
  w.panswers.userClick();
  w.Check1.userClick();
  run();
  ASSERT_EQ(platform.pages.size(), 1u);
  std::map<double, int> starts;
  for (const GridBox& grid : gridBoxes(platform.pages[0].drawing)) {
    double smallest = 1e9;
    for (const auto& row : numbersIn(platform.pages[0], grid, 5)) {
      for (double v : row) smallest = std::min(smallest, v);
    }
    ++starts[smallest];
  }
  EXPECT_GE(starts.begin()->first, 1);
  EXPECT_LE(starts.rbegin()->first, 10);
  EXPECT_GT(starts.size(), 1u);
  EXPECT_EQ(w.state().startNumber, 1);
}

TEST_F(CreationRun, WithoutAPrintCountPagesGoOnUntilAborted) {
  w.panswers.userClick();
  setCount("0");
  recordCaptions();
  platform.onYield = [&](int) {
    if (captions.empty() || captions.back() != w.caption()) captions.push_back(w.caption());
    if (platform.pages.size() == 3) w.aprinting.userClick();
  };
  run();
  EXPECT_EQ(platform.pages.size(), 3u);
  EXPECT_EQ(platform.documentEnds, (std::vector<std::size_t>{1, 2, 3}));  // each page as it is done
  // After the first page each page begins with a key square, drawn over by the first square.
  EXPECT_EQ(gridBoxes(platform.pages[0].drawing).size(), 25u);
  EXPECT_EQ(gridBoxes(platform.pages[1].drawing).size(), 26u);
  EXPECT_EQ(gridBoxes(platform.pages[2].drawing).size(), 26u);
  EXPECT_NE(std::find_if(captions.begin(), captions.end(),
                         [](const std::string& c) { return c.rfind("Creating Giant (5 by 5)", 0) == 0; }),
            captions.end());
  EXPECT_EQ(w.caption(), "Quillion");
}

// An abort, by Q or by the menu, at each yield of a run of three 7 by 7
// puzzles with answers and random starting numbers brings the main page back
// exactly as it was; other keys do nothing.
TEST(CreationRunAbort, AbortAtEveryYieldRestoresTheMainPage) {
  // A fresh window on the same seed each time, so every run draws alike.
  struct Session {
    FakePlatform platform{7};
    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(platform);
    MainWindow& w = *window;
    Session() {
      platform.attach(window.get());
      w.userActivate();
      w.sqr7.userClick();
      w.Check12.userClick();
      retype(w.Text1, "3");
      retype(w.text4, "5");
      w.Check1.userClick();
    }
  };
  Session whole;
  const auto before = pageState(whole.w);
  whole.w.Command1.userClick();
  const int yields = whole.platform.yieldCount;
  ASSERT_GT(yields, 100);
  ASSERT_EQ(whole.platform.pages.size(), 2u);

  for (int abortAt = 1; abortAt <= yields; ++abortAt) {
    Session s;
    s.platform.onYield = [&](int count) {
      s.w.userKeyDown('A');  // only Q and the menu abort
      if (count == abortAt) (abortAt % 2 ? s.w.userKeyDown(keys::letterQ) : s.w.aprinting.userClick());
    };
    s.w.Command1.userClick();
    ASSERT_EQ(differences(pageState(s.w), before), "") << "abort at yield " << abortAt;
    ASSERT_EQ(s.w.caption(), "Quillion");
    ASSERT_EQ(s.w.state().startNumber, 5);
    ASSERT_TRUE(s.w.surface().ops().empty());
    ASSERT_EQ(s.platform.pages.size(), abortAt > yields - 3 ? 1u : 0u) << abortAt;
  }
}

}  // namespace
}  // namespace quill::testing
