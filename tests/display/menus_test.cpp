// The print and puzzle menus: each choice leaves exactly one mark on in its
// group. (The practice requests are played in the practice tests.)
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

// The values themselves show in what runs print and make (creation run tests).
TEST_F(Menus, EachGroupKeepsOneMark) {
  const std::vector<MenuItem*> print{&w.panswers, &w.ppuzzles, &w.pboth};
  const std::vector<MenuItem*> highlight{&w.highlighted, &w.nhighlighted};
  const std::vector<MenuItem*> difficulty{&w.easy, &w.challenging};
  EXPECT_EQ(marks(print) + marks(highlight) + marks(difficulty), "..XX..X");
  const std::pair<MenuItem*, const char*> clicks[] = {
      {&w.panswers, "X..X..X"}, {&w.ppuzzles, ".X.X..X"},     {&w.pboth, "..XX..X"},
      {&w.nhighlighted, "..X.X.X"}, {&w.highlighted, "..XX..X"}, {&w.easy, "..XX.X."},
      {&w.challenging, "..XX..X"}};
  for (const auto& [item, expected] : clicks) {
    item->userClick();
    EXPECT_EQ(marks(print) + marks(highlight) + marks(difficulty), expected) << item->caption();
  }
  w.easy.userClick();
  EXPECT_EQ(w.state().puzzle.difficultyLevel, Difficulty::Easy);
  w.panswers.userClick();
  EXPECT_EQ(w.state().printChoice, PrintChoice::Squares);
}

}  // namespace
}  // namespace quill::testing
