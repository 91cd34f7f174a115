// The properties page: two switches, four exclusive pairs and the "Done" rule.
#include <gtest/gtest.h>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class PropertyOptions : public WindowTest {
 protected:
  PropertyOptions() { w.chooseproperties.userClick(); }

  struct Pair {
    Control& onlyMain;
    Control& all;
    const int& choice;
  };
  std::vector<Pair> pairs() {
    return {{w.Check4, w.Check5, w.state().puzzle.crossDiagonalChoice},
            {w.Check6, w.Check7, w.state().puzzle.crossLineChoice},
            {w.Check8, w.Check9, w.state().puzzle.scatteredCrossDiagonalChoice},
            {w.Check10, w.Check11, w.state().puzzle.scatteredCrossLineChoice}};
  }
  // The choice always says which box is checked, and never both are.
  static void expectConsistent(const Pair& p, int choice) {
    EXPECT_EQ(p.choice, choice);
    EXPECT_EQ(p.onlyMain.checked(), choice == 1) << p.onlyMain.name();
    EXPECT_EQ(p.all.checked(), choice == 2) << p.all.name();
  }
};

TEST_F(PropertyOptions, EachPairExcludesItselfInBothOrders) {
  for (const Pair& p : pairs()) {
    p.onlyMain.userClick();
    expectConsistent(p, 1);
    p.all.userClick();  // clears the only-main box
    expectConsistent(p, 2);
    p.all.userClick();
    expectConsistent(p, 0);

    p.all.userClick();
    expectConsistent(p, 2);
    p.onlyMain.userClick();  // clears the all box
    expectConsistent(p, 1);
    p.onlyMain.userClick();
    expectConsistent(p, 0);
  }
  // The pairs do not touch one another or the switches.
  pairs()[0].all.userClick();
  pairs()[2].onlyMain.userClick();
  EXPECT_EQ(w.state().puzzle.crossDiagonalChoice, 2);
  EXPECT_EQ(w.state().puzzle.crossLineChoice, 0);
  EXPECT_EQ(w.state().puzzle.scatteredCrossDiagonalChoice, 1);
  EXPECT_EQ(w.state().puzzle.scatteredCrossLineChoice, 0);
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 1);
}

TEST_F(PropertyOptions, SwitchesAreIndependent) {
  w.Check3.userClick();
  EXPECT_EQ(w.state().puzzle.allDiagonalsChoice, 1);
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 1);
  w.Check2.userClick();
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 0);
  EXPECT_EQ(w.state().puzzle.allDiagonalsChoice, 1);
}

TEST_F(PropertyOptions, DoneNeverLeavesBothSwitchesOff) {
  w.Check2.userClick();
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 0);
  w.Command6.userClick();
  EXPECT_TRUE(w.Check2.checked());
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 1);
  EXPECT_TRUE(w.Label11.visible());  // back on the main page
}

TEST_F(PropertyOptions, DoneKeepsAloneAllDiagonalsAndThePairs) {
  w.Check3.userClick();
  w.Check2.userClick();
  w.Check5.userClick();
  w.Command6.userClick();
  EXPECT_FALSE(w.Check2.checked());
  EXPECT_EQ(w.state().puzzle.mainLinesChoice, 0);
  EXPECT_EQ(w.state().puzzle.allDiagonalsChoice, 1);
  EXPECT_EQ(w.state().puzzle.crossDiagonalChoice, 2);

  // The choices outlast the page.
  w.chooseproperties.userClick();
  EXPECT_TRUE(w.Check5.checked());
  EXPECT_TRUE(w.Check3.checked());
}

}  // namespace
}  // namespace quill::testing
