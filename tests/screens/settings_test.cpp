// The three pages, through the user's actions: which controls each page
// shows, and the counting explanation of the size in force.
#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

#include "platform/number_text.h"
#include "screens/settings_texts.h"
#include "support/magic.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

std::set<std::string> words(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// What the user can see and use: the controls shown, and the controls and
// menu items hidden or disabled besides.
struct Look {
  std::set<std::string> shown, disabled, hiddenMenus;
  bool operator==(const Look&) const = default;
};
Look lookOf(const MainWindow& w) {
  Look look;
  for (const Control* c : w.controls()) {
    if (c->visible()) look.shown.insert(c->name());
    if (!c->enabled()) look.disabled.insert(c->name());
  }
  for (const MenuItem* m : w.menuItems()) {
    if (!m->visible()) look.hiddenMenus.insert(m->name());
    if (!m->enabled()) look.disabled.insert(m->name());
  }
  return look;
}
const std::string kInputs = "Text2 Label1 Text1 text4 Command1 Text5 Label8 Text3 Command2 Command4 Text6 ";
const Look kMainPage{words("Label20 Text7 Check1 Label2 Text2 Label1 Text1 Check12 Label9 text4 Command1 Label4 "
                           "Label10 Text5 Label3 Label5 Label18 Label6 Label8 Text3 Label7 Command2 Label11 Command4"),
                     words("Text6 Command3"), words("options1")};
const Look kInformationPage{words("Label12 Label13 Label14 Label15 Command3 Label16 Picture1 Label17 Picture2"),
                            words(kInputs + "chooseproperties"), words("options1 options2")};
const Look kPropertiesPage{words("Label22 Check2 Check3 Command6 Label21 Check4 Check5 Check6 Check7 Check8 Check9 "
                                 "Check10 Check11 Picture3 Picture6 Picture5 Picture4"),
                           words(kInputs + "Command3 chooseproperties"), words("options1 options2")};

class Settings : public WindowTest {};

TEST_F(Settings, EachPageShowsItsControlsAndOpensOnlyFromTheMainPage) {
  EXPECT_EQ(lookOf(w), kMainPage);
  w.Command2.userClick();
  EXPECT_EQ(lookOf(w), kInformationPage);
  w.chooseproperties.userClick();  // disabled here
  w.Command3.userClick();
  EXPECT_EQ(lookOf(w), kMainPage);
  w.chooseproperties.userClick();
  w.Command2.userClick();  // hidden here
  EXPECT_EQ(lookOf(w), kPropertiesPage);
  w.Command6.userClick();
  EXPECT_EQ(lookOf(w), kMainPage);

  // A Create button disabled by a size above 101 stays so through either
  // page; activation, once done, is not done again.
  retype(w.Text2, "103");
  w.userActivate();
  w.Command2.userClick();
  w.Command3.userClick();
  EXPECT_FALSE(w.Command1.enabled());
  w.chooseproperties.userClick();
  w.Command6.userClick();
  EXPECT_FALSE(w.Command1.enabled());

  EXPECT_THROW(w.quit.userClick(), ProgramEnded);
  w.Command2.userClick();
  EXPECT_NO_THROW(w.quit.userClick());  // its menu is hidden here
  EXPECT_THROW(w.userClose(), ProgramEnded);
}

// 5 by 5 has its fixed texts; from 7 to 97 the counts are F = 3((n-1)!)²,
// S = n²F and T = 4S; from 101 they are too large. The labels show the
// explanation of the size in force.
TEST_F(Settings, TheCountingExplanationFollowsTheSize) {
  const CountingExplanation five = countingExplanation(5);
  EXPECT_EQ(five.fundamental + five.shifted + five.rotated + five.total,
            "There are 576 fundamental squares.Each Square yields 25 other squares by row and column shift: (576 * "
            "25 = 14400).Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800)."
            "Therefore, there are exactly 28800 \"Complete\" Magic Squares of (5 by 5).");
  EXPECT_EQ(countingExplanation(17).fundamental, "There are 1.31328941009219E+27 fundamental squares.");
  const CountingExplanation large = countingExplanation(101);
  EXPECT_EQ(large.fundamental + large.shifted + large.rotated + large.total, "The number of Squares is too large!");
  for (const int n : primeSizes(97)) {
    const std::string nn = std::to_string(n * n), size = std::to_string(n);
    const CountingExplanation texts = countingExplanation(n);
    // The counts as shown, read back: F, then S after F and n², then T after S and 4.
    std::string sentence = texts.fundamental + texts.shifted + texts.rotated + texts.total;
    const double f = numericValue(sentence.substr(10)), s = numericValue(sentence.substr(sentence.find(" = ") + 3)),
                 t = numericValue(sentence.substr(sentence.rfind(" = ") + 3));
    long double exact = 3;
    for (int k = 2; k < n; ++k) exact *= static_cast<long double>(k) * k;
    SCOPED_TRACE(n);
    const auto near = [](double shown, long double value) { return std::fabs(shown / value - 1) < 1e-14L; };
    EXPECT_TRUE(n == 5 || (near(f, exact) && near(s, exact * n * n) && near(t, exact * n * n * 4)));
    EXPECT_EQ(texts.question, "How many (" + size + " by " + size + ") \"Complete\" Magic Squares are there?:");
    if (n == 5) continue;
    for (const auto& [shown, as] : {std::pair{f, "F"}, {s, "S"}, {t, "T"}}) {
      for (std::size_t at; (at = sentence.find(numberText(shown))) != std::string::npos;) {
        sentence.replace(at, numberText(shown).size(), as);
      }
    }
    EXPECT_EQ(sentence, "There are F fundamental squares.Each Square yields " + nn + " other squares by row and column "
                        "shift: (F * " + nn + " = S).Each Square can also be rotated three times to produce three more "
                        "squares: (S * 4 = T).Therefore, there are exactly T \"Complete\" Magic Squares of (" +
                        size + " by " + size + ").");
  }
  for (const char* size : {"7", "101", "5", "29"}) {
    retype(w.Text2, size);
    const CountingExplanation texts = countingExplanation(std::stoi(size));
    EXPECT_EQ(w.Label4.caption() + w.Label3.caption() + w.Label5.caption() + w.Label6.caption() + w.Label7.caption(),
              texts.question + texts.fundamental + texts.shifted + texts.rotated + texts.total);
  }
}

}  // namespace
}  // namespace quill::testing
