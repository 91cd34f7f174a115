// An abort or a quit at any yield of a run or a practice leaves the main page
// as it was; the printer is chosen only between runs; practice played by
// keyboard and hints does what the same play by mouse and the menu does.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "patterns/hint.h"
#include "platform/number_text.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

// At each yield of a run (three 7 by 7 puzzles with answers and random
// starting numbers) or of a practice (with Create disabled and "Print only
// completed Squares" chosen), in a fresh window on the same seed: other keys,
// hints and clicks on the grid do nothing (no entry box while a puzzle is
// built);
// then Q, "Abort printing" or "Quit playing" brings the main page back
// exactly as it was. Between runs, "Printer..." asks the platform and
// changes nothing else.
TEST(Stopping, AtAnyYieldTheMainPageComesBackAsItWas) {
  struct Session : StartedWindow {
    explicit Session(bool practice) : StartedWindow(7) {
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
    whole.w.printer.userClick();
    EXPECT_EQ(whole.platform.printerChoices, 1);
    EXPECT_EQ(pageState(whole.w), before);
    for (int stopAt = 1; stopAt <= yields; ++stopAt) {
      Session s(practice);
      MainWindow& w = s.w;
      s.platform.onYield = [&](int count) {
        w.printer.userClick();  // hidden with its menu: never asked mid-run
        w.hint.userClick();
        // Keys do nothing but while a puzzle is in play: letters, arrows, Enter, Space, Escape, H.
        const int keyPresses[] = {'A', keys::left, keys::up, keys::right, keys::down, keys::enter, keys::space, keys::escape, keys::letterH};
        w.userKeyDown(keyPresses[count % 9]);
        if (count != stopAt) return;
        const bool building = w.caption().rfind("Creating", 0) == 0;
        for (int x = 1; x <= 5; ++x) clickCell(w, x, 3);
        EXPECT_TRUE(!building || !w.Text6.visible());
        if (practice) return w.qplaying.userClick();
        if (stopAt % 2) return w.userKeyDown(keys::letterQ);
        w.aprinting.userClick();
      };
      (practice ? w.Command4 : w.Command1).userClick();
      ASSERT_EQ(pageState(w), before) << "stopped at yield " << stopAt;
      ASSERT_EQ(w.state().startNumber, practice ? 1 : 5);
      ASSERT_TRUE(w.surface().ops().empty());
      ASSERT_FALSE(w.surface().cellCursor());
      ASSERT_TRUE(w.surface().hintMarks().empty());
      ASSERT_EQ(s.platform.printerChoices, 0);
      ASSERT_EQ(s.platform.pages.size(), !practice && stopAt > yields - 3 ? 1u : 0u) << stopAt;
    }
  }
}

// Practice played twice on one seed, once by mouse and once by keyboard, the
// same cells chosen in the same order: the arrows bring the cell cursor there
// (from the top-left cell of each puzzle, stopping at the edges, however far
// they are pressed), Enter or Space does what a click at the cell's centre
// does, and Escape closes the entry box with nothing counted; now and then a
// hint chooses the cell instead, by the menu or by H. After every step both
// windows read the same, and every cell is named by what it shows. In a
// puzzle of one blank, the first choice of the blank opens it. A hint counts
// nothing and opens the entry box on the blank the core's hint names for the
// cell under the cursor, whose line's other cells, the ones marked and
// described, are all known; the next entry takes the marks and the words
// away.
TEST(KeyboardPractice, KeysPlayWhatClicksPlay) {
  for (std::uint64_t seed = 1; seed <= 24; ++seed) {
    std::vector<std::string> traces[2];
    for (const bool keyboard : {false, true}) {
      StartedWindow s(seed);
      MainWindow& w = s.w;
      MenuItem* const sizes[] = {&w.sqr5, &w.sqr7, &w.sqr5, &w.sqr11, &w.sqr13};
      sizes[seed % 5]->userClick();
      if (seed % 3 == 0) w.easy.userClick();
      const bool oneBlank = seed % 4 == 0;
      retype(w.Text3, oneBlank ? "1" : seed % 2 ? "6" : "100");
      const int n = w.state().squareSize;
      RandomSource picks(seed * 31);
      const auto pick = [&](int count) { return static_cast<int>(picks.next() * count); };
      std::vector<std::string>& trace = traces[keyboard];
      int steps = 0;
      s.platform.onYield = [&](int) {
        if (!playing(w)) return;
        if (++steps > 60 || w.state().runDone >= (oneBlank ? 8 : 2)) return w.qplaying.userClick();
        if (keyboard && trace.empty()) {
          EXPECT_EQ(w.surface().cellCursor(), (GridCell{0, 0, 0}));
        }
        int x = 1 + pick(n), y = 1 + pick(n);
        const int overshoot = pick(3), space = pick(2), escape = pick(3) == 0, mode = pick(4);
        // The first choice of a puzzle's only blank opens it, whatever the maker tested last.
        const bool firstOfOnlyBlank = oneBlank && trace.empty(), hinted = pick(4) == 0 && !firstOfOnlyBlank;
        for (int cell = 0; firstOfOnlyBlank && cell < n * n; ++cell) {
          if (isBlank(w.square().squareNumbers[cell % n + 1][cell / n + 1])) x = cell % n + 1, y = cell / n + 1;
        }
        if (hinted) {
          // The hint the core gives for the cell under the cursor, which it prefers.
          const std::optional<GridCell> from = w.surface().cellCursor();
          ASSERT_TRUE(from);
          double total = 0;
          for (int i = 1; i <= n; ++i) total += w.square().squareRanks[i][1];
          const std::optional<Hint> expected = findHint(w.square(), {from->column + 1, from->row + 1}, total);
          const std::string caption = w.caption();
          if (keyboard) w.userKeyDown(keys::letterH); else w.hint.userClick();
          const std::optional<GridCell> at = w.surface().cellCursor();
          ASSERT_TRUE(at && w.Text6.visible() && w.caption() == caption);
          ASSERT_TRUE(expected && at->column + 1 == expected->cell.x && at->row + 1 == expected->cell.y);
          ASSERT_TRUE(isBlank(w.square().squareNumbers[at->column + 1][at->row + 1]));
          EXPECT_EQ(w.Text6.accessibleDescription(), w.surface().cellDescription(*at));
          EXPECT_EQ(w.Text6.accessibleDescription().rfind("Hint: ", 0), 0u);
          EXPECT_GE(w.surface().hintMarks().size(), 4u);
          for (const GridCell& marked : w.surface().hintMarks()) EXPECT_NE(w.surface().cellName(marked), "");
        } else if (keyboard) {
          const std::optional<GridCell> at = w.surface().cellCursor();
          ASSERT_TRUE(at);
          const auto press = [&](int key, int times) {
            for (int i = 0; i < times; ++i) w.userKeyDown(key);
          };
          // Towards the target, and past the edge now and then: the cursor stops there.
          const auto towards = [&](int to, int from, int back, int forth) {
            press(to == n || (to > from && to != 1) ? forth : back, std::abs(to - from) + (to == 1 || to == n ? overshoot : 0));
          };
          towards(x, at->column + 1, keys::left, keys::right);
          towards(y, at->row + 1, keys::up, keys::down);
          EXPECT_EQ(w.surface().cellCursor(), (GridCell{0, y - 1, x - 1}));
          const bool wasOpen = w.Text6.visible();
          w.userKeyDown(space ? keys::space : keys::enter);
          if (!wasOpen && w.Text6.visible() && escape) {
            const std::string caption = w.caption();
            w.Text6.userEdit("4");
            w.Text6.userKeyDown(keys::escape);
            EXPECT_FALSE(w.Text6.visible());
            EXPECT_EQ(w.caption(), caption);
            w.userKeyDown(keys::enter);  // the same cell opens again
            EXPECT_TRUE(w.Text6.visible());
          }
        } else {
          clickCell(w, x, y);
        }
        EXPECT_TRUE(!firstOfOnlyBlank || w.Text6.visible()) << "seed " << seed;
        if (w.Text6.visible()) {
          const auto [column, row] = w.selection();
          const std::string right = std::to_string(static_cast<long long>(w.square().squareRanks[column][row]));
          w.Text6.userEdit(mode == 0 ? "x" : mode == 1 ? "99" : right);
          w.Text6.userKeyDown(keys::enter);
          EXPECT_TRUE(w.surface().hintMarks().empty() && w.Text6.accessibleDescription().empty());
        }
        // Each cell is named by what it shows: its number, or nothing while blank.
        for (int row = 0; row < n; ++row) {
          for (int column = 0; column < n; ++column) {
            const double shown = w.square().squareNumbers[column + 1][row + 1];
            ASSERT_EQ(w.surface().cellName({0, row, column}), isBlank(shown) ? "" : numberText(shown));
          }
        }
        std::string state = pageState(w) + std::to_string(w.selection().originX) + "," +
                            std::to_string(w.selection().originY) + " " + std::to_string(w.Text6.rect().left) + "," +
                            std::to_string(w.Text6.rect().top) + "\n";
        for (const DrawOp& op : w.surface().ops()) state += op.text + std::to_string(op.x1 + op.y1);
        trace.push_back(state);
      };
      w.Command4.userClick();
      EXPECT_FALSE(w.surface().cellCursor());
    }
    ASSERT_GT(traces[0].size(), 10u) << seed;
    ASSERT_EQ(traces[0], traces[1]) << "seed " << seed;
  }
}

}  // namespace
}  // namespace quill::testing
