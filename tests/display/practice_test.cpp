// Practice on the fake platform: the user's clicks, typing and menu choices
// are played at the yields of the practice run.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/number_text.h"
#include "support/page_state.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

using Cell = std::pair<int, int>;

std::string score(int solved, int correct, int incorrect, int n = 5) {
  const std::string t = std::to_string(n);
  return "Number of (" + t + " by " + t + ") Complete Magic Square(s) solved: " + std::to_string(solved) +
         " / Numbers correct: " + std::to_string(correct) + " / Numbers incorrect: " + std::to_string(incorrect);
}

class Practice : public WindowTest {
 protected:
  Practice() { retype(w.Text3, "4"); }

  bool playing() const { return w.caption().rfind("Number of", 0) == 0 && w.runState() == RunState::Puzzle; }
  std::vector<Cell> blanks() const {
    std::vector<Cell> cells;
    for (int y = 1; y <= w.state().squareSize; ++y) {
      for (int x = 1; x <= w.state().squareSize; ++x) {
        if (isBlank(w.square().squareNumbers[x][y])) cells.emplace_back(x, y);
      }
    }
    return cells;
  }
  // A press in the middle of a cell's pixels.
  void click(Cell cell) {
    w.userMouseDown(1, 0, static_cast<float>(MainWindow::kPracticeCorner.gridLeft + (cell.first - 1) * w.cellWidth() + w.cellWidth() / 2),
                    static_cast<float>(MainWindow::kPracticeCorner.gridTop + (cell.second - 1) * page::kRowHeight + 9));
  }
  void enter(const std::string& text) {
    w.Text6.userEdit(text);
    w.Text6.userKeyDown(keys::enter);
  }
  std::string answerAt(Cell cell) const { return numberText(w.square().squareRanks[cell.first][cell.second]); }
  // Plays `step` at every yield while a puzzle is in play; records each new caption.
  void practise(const std::function<void()>& step) {
    platform.onYield = [this, step](int) {
      if (captions.empty() || captions.back() != w.caption()) captions.push_back(w.caption());
      if (playing()) step();
    };
    w.Command4.userClick();
  }
  bool seen(const std::string& caption) const {
    return std::find(captions.begin(), captions.end(), caption) != captions.end();
  }
  std::vector<std::string> captions;
};

TEST_F(Practice, SolvingEveryBlankCountsTheSquareAndBuildsTheNext) {
  int firstBlanks = -1;
  practise([&] {
    if (w.state().runDone == 1) return w.qplaying.userClick();
    const std::vector<Cell> open = blanks();
    if (firstBlanks < 0) firstBlanks = static_cast<int>(open.size());
    ASSERT_FALSE(open.empty());
    const Cell cell = open.front();
    click(cell);
    // The box lies exactly over the cell, as wide as the cell and one line more.
    ASSERT_TRUE(w.Text6.visible() && w.Text6.enabled());
    EXPECT_EQ(w.Text6.rect().left / 15, MainWindow::kPracticeCorner.gridLeft + (cell.first - 1) * w.cellWidth());
    EXPECT_EQ(w.Text6.rect().top / 15, MainWindow::kPracticeCorner.gridTop + (cell.second - 1) * page::kRowHeight);
    EXPECT_EQ(w.Text6.rect().width / 15, w.cellWidth() + 1);
    EXPECT_EQ(w.Text6.rect().height / 15, page::kRowHeight);
    const std::string answer = answerAt(cell);
    enter(answer);
    EXPECT_FALSE(w.Text6.visible());
    // Written in print form from one unit left of the cell's edge.
    const auto& ops = w.surface().ops();
    EXPECT_EQ(ops.back().text, " " + answer + " ");
    EXPECT_EQ(ops[ops.size() - 2].x1, static_cast<float>(MainWindow::kPracticeCorner.gridLeft + (cell.first - 1) * w.cellWidth() - 1));
    EXPECT_EQ(ops[ops.size() - 2].y1, static_cast<float>(MainWindow::kPracticeCorner.gridTop + (cell.second - 1) * page::kRowHeight + 3));
  });
  ASSERT_EQ(firstBlanks, 4);
  const std::string creating = "Creating (5 by 5) Complete Magic Square (with blanks)";
  EXPECT_EQ(std::count(captions.begin(), captions.end(), creating), 2);
  EXPECT_TRUE(seen(score(0, 1, 0)));
  EXPECT_TRUE(seen(score(1, 4, 0)));
  EXPECT_EQ(w.caption(), "Quillion");
}

// From -12 to 12, every answer leaves the box room for one more character.
TEST_F(Practice, OnlyNumbersCountAsWrongTries) {
  retype(w.text4, "-12");
  practise([&] {
    Cell cell = blanks().front();
    if (w.square().squareRanks[cell.first][cell.second] == 0) cell = blanks().back();
    const double answer = w.square().squareRanks[cell.first][cell.second];
    click(cell);
    enter(numberText(answer + 1));  // wrong
    EXPECT_EQ(w.caption(), score(0, 0, 1));
    EXPECT_TRUE(w.Text6.visible());
    EXPECT_EQ(w.Text6.text(), "");
    enter("0");  // wrong, and counted although its value is 0
    enter("abc");
    enter("");
    EXPECT_EQ(w.state().incorrectCount, 2);
    enter(numberText(answer) + "x");  // the leading number counts
    EXPECT_EQ(w.caption(), score(0, 1, 2));

    // Where the answer is 0, a text without a number is right.
    Cell zero;
    for (int x = 1; x <= 5; ++x) {
      for (int y = 1; y <= 5; ++y) {
        if (w.square().squareRanks[x][y] == 0) zero = {x, y};
      }
    }
    w.square().squareNumbers[zero.first][zero.second] = 1e200;
    click(zero);
    enter("abc");
    EXPECT_EQ(w.caption(), score(0, 2, 2));
    w.qplaying.userClick();
  });
}

TEST_F(Practice, NewSquareKeepsTheScoreAndStartOverClearsIt) {
  int puzzles = 0;
  practise([&] {
    ++puzzles;
    if (puzzles == 1) {
      const Cell cell = blanks().front();
      click(cell);
      enter(answerAt(cell));
      w.newsquare.userClick();
    } else if (puzzles == 2) {
      EXPECT_EQ(w.caption(), score(0, 1, 0));  // not counted as solved
      w.startover.userClick();
    } else {
      EXPECT_EQ(w.caption(), score(0, 0, 0));
      w.qplaying.userClick();
    }
  });
  EXPECT_EQ(puzzles, 3);
}

// A click on a number selects its cell but opens no box; a box already open
// stays, and Enter in it then answers for the selected cell.
TEST_F(Practice, ClicksSelectCellsButOnlyBlanksOpenTheBox) {
  practise([&] {
    const Cell blank = blanks().front();
    Cell given{1, 1};
    while (isBlank(w.square().squareNumbers[given.first][given.second])) ++given.first;
    click(given);
    EXPECT_FALSE(w.Text6.visible());
    EXPECT_EQ(Cell(w.selection().originX, w.selection().originY), given);
    click(blank);
    const int boxLeft = w.Text6.rect().left;
    click(blank);  // the same cell again: nothing changes
    w.Text6.userEdit("1");
    click(given);
    EXPECT_EQ(w.Text6.text(), "1");
    EXPECT_EQ(w.Text6.rect().left, boxLeft);
    w.userMouseDown(1, 0, 700, 500);  // outside the grid
    EXPECT_EQ(Cell(w.selection().originX, w.selection().originY), given);
    enter(answerAt(given));
    EXPECT_EQ(w.state().correctCount, 1);
    w.qplaying.userClick();
  });
}

// "Quit playing" at any yield, while building or playing, after a click on
// the grid, brings the main page back as it was, with the print choice and
// Command1 as they were.
TEST_F(Practice, QuittingAtAnyYieldRestoresTheMainPage) {
  w.panswers.userClick();
  for (const bool createEnabled : {true, false}) {
    w.Command1.setEnabled(createEnabled);
    const auto before = pageState(w);
    platform.yieldCount = 0;
    platform.onYield = nullptr;
    int yields = 0;
    practise([&] {
      yields = platform.yieldCount;
      EXPECT_FALSE(blanks().empty());  // a puzzle, whatever the print choice
      w.qplaying.userClick();
    });
    ASSERT_GT(yields, 20);
    for (int quitAt = 1; quitAt <= yields; quitAt += createEnabled ? 1 : 7) {
      platform.yieldCount = 0;
      platform.onYield = [&](int count) {
        if (count != quitAt) return;
        // A click first: while a puzzle is built it opens no box; in play it may.
        const bool building = w.caption().rfind("Creating", 0) == 0;
        for (int x = 1; x <= 5; ++x) click({x, 3});
        if (building) {
          EXPECT_FALSE(w.Text6.visible());
        }
        w.qplaying.userClick();
      };
      w.Command4.userClick();
      ASSERT_EQ(differences(pageState(w), before), "") << "quit at yield " << quitAt;
      ASSERT_EQ(w.state().printChoice, PrintChoice::Squares);
      ASSERT_EQ(w.caption(), "Quillion");
      ASSERT_FALSE(w.Label19.visible());
      ASSERT_TRUE(w.surface().ops().empty());
      ASSERT_EQ(w.runState(), RunState::Abort);
    }
  }
}

}  // namespace
}  // namespace quill::testing
