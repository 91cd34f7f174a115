// An abort or a quit at any yield of a run or a practice leaves the main page
// as it was.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

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
      ASSERT_EQ(s.platform.pages.size(), !practice && stopAt > yields - 3 ? 1u : 0u) << stopAt;
    }
  }
}

}  // namespace
}  // namespace quill::testing
