// The print and puzzle menus: each choice stores its value and leaves exactly
// one mark on in its group; the practice requests set the run state.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class Menus : public WindowTest {
 protected:
  static std::string marks(const std::vector<MenuItem*>& group) {
    std::string on;
    for (const MenuItem* item : group) on += item->checked() ? "X" : ".";
    return on;
  }
};

TEST_F(Menus, EachGroupKeepsOneMarkAndItsValue) {
  struct Case {
    MenuItem& item;
    const int& value;
    int expected;
    std::vector<MenuItem*> group;
    const char* marks;
  };
  const std::vector<MenuItem*> print{&w.panswers, &w.ppuzzles, &w.pboth};
  const std::vector<MenuItem*> highlight{&w.highlighted, &w.nhighlighted};
  const std::vector<MenuItem*> difficulty{&w.easy, &w.challenging};
  EXPECT_EQ(marks(print), "..X");
  EXPECT_EQ(marks(highlight), "X.");
  EXPECT_EQ(marks(difficulty), ".X");
  const Case cases[] = {
      {w.panswers, w.printChoice, 0, print, "X.."},          {w.ppuzzles, w.printChoice, 1, print, ".X."},
      {w.pboth, w.printChoice, 2, print, "..X"},             {w.ppuzzles, w.printChoice, 1, print, ".X."},
      {w.nhighlighted, w.highlightAnswers, 0, highlight, ".X"}, {w.highlighted, w.highlightAnswers, 1, highlight, "X."},
  };
  for (const Case& c : cases) {
    c.item.userClick();
    EXPECT_EQ(c.value, c.expected) << c.item.caption();
    EXPECT_EQ(marks(c.group), c.marks) << c.item.caption();
  }
  w.easy.userClick();
  EXPECT_EQ(w.puzzle.difficultyLevel, Difficulty::Easy);
  EXPECT_EQ(marks(difficulty), "X.");
  w.challenging.userClick();
  EXPECT_EQ(w.puzzle.difficultyLevel, Difficulty::Challenging);
  EXPECT_EQ(marks(difficulty), ".X");
}

TEST_F(Menus, PracticeRequests) {
  w.correctCount = 4;
  w.incorrectCount = 2;
  w.runDone = 3;
  w.newsquare_Click();
  EXPECT_EQ(w.runState(), RunState::NewSquare);
  EXPECT_EQ(w.correctCount, 4);
  w.startover_Click();
  EXPECT_EQ(w.runState(), RunState::NewSquare);
  EXPECT_EQ(w.correctCount + w.incorrectCount + w.runDone, 0);
  w.qplaying_Click();
  EXPECT_EQ(w.runState(), RunState::Abort);
}

}  // namespace
}  // namespace quill::testing
