// The three pages and the settings on them, through the user's actions: which
// controls each page shows, the captions, cell width, page fit and print count
// that follow the size, starting number and distance, the size entry, and the
// counting explanation.
#include <gtest/gtest.h>

#include <algorithm>
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

class Settings : public WindowTest {
 protected:
  std::string printCount() const { return w.Text1.text() + (w.Check12.checked() ? " filled" : ""); }
  std::string checkedSizeItem() const {
    std::string checked;
    for (const MenuItem* item : w.size.children()) checked += item->checked() ? item->caption() : "";
    return checked;
  }
};

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

// Each row types the size, starting number and distance, in order, into
// the window as it was left by the row before.
TEST_F(Settings, CaptionsCellWidthAndPageFitFollowTheNumbers) {
  struct Case {
    const char *size, *start, *distance, *magicTotal, *lastNumber;
    int cellWidth;
    bool fits;
    const char* printCount;
  };
  const Case cases[] = {
      {"5", "1", "1", "= 65", "equals: 25", 24, true, "25 filled"},
      {"7", "1", "1", "= 175", "equals: 49", 24, true, "12 filled"},
      {"5", "10", "3", "= 230", "equals: 82", 24, true, "25 filled"},
      {"5", "10", "0", "= 230", "equals: 82", 24, true, "25 filled"},  // a distance of 0 is ignored
      {"5", "none", "x", "= 180", "equals: 72", 24, true, "25 filled"},
      {"5", "-5", "1", "= 35", "equals: 19", 24, true, "25 filled"},    // room for the sign
      {"5", "-30", "1", "= -90", "equals: -6", 24, true, "25 filled"},
      {"7", "0.5", "-2", "= -332.5", "equals: -95.5", 40, true, "6 filled"},
      {"5", "-100", "10", "= 100", "equals: 140", 32, true, "20 filled"},
      {"5", "-10", "10", "= 550", "equals: 230", 32, true, "20 filled"},
      {"5", "-1000", "10", "= -4400", "equals: -760", 40, true, "15 filled"},
      {"11", "1", "1", "= 671", "equals: 121", 24, true, "4 filled"},
      {"17", "1", "1", "= 2465", "equals: 289", 24, true, "1 filled"},
      {"29", "1", "1", "= 12209", "equals: 841", 24, true, "1 filled"},
      {"31", "1", "1", "= 14911", "equals: 961", 24, false, "1 filled"},
      {"41", "1", "1", "= 34481", "equals: 1681", 32, false, "1 filled"},
      {"19", "1000", "1000", "= 3439000", "equals: 361000", 48, false, "1 filled"},
      {"5", "999999999", "999999999", "= 64999999935", "is {very large!}", 88, true, "5 filled"},
      {"5", "1E15", "1", "is {very large!}", "is {very large!}", 160, false, "5 filled"},
      {"5", "999976", "1", "= 4999940", "equals: 1000000", 56, true, "10 filled"},
      {"5", "9999976", "1", "= 49999940", "is {very large!}", 64, true, "10 filled"},
      {"5", "-1000023", "1", "= -5000055", "equals: -999999", 64, true, "10 filled"},
      {"5", "-1000024", "1", "= -5000060", "is {very large!}", 64, true, "10 filled"},
      {"5", "-2.5", "3", "= 167.5", "equals: 69.5", 40, true, "15 filled"},
  };
  for (const Case& c : cases) {
    retype(w.Text2, c.size);
    retype(w.text4, c.start);
    retype(w.Text5, c.distance);
    SCOPED_TRACE(std::string(c.size) + " " + c.start + " " + c.distance);
    EXPECT_EQ(w.Label11.caption(), std::string("Magic Total ") + c.magicTotal);
    EXPECT_EQ(w.Label18.caption(), std::string("Last number ") + c.lastNumber);
    EXPECT_EQ(w.cellWidth(), c.cellWidth);
    EXPECT_EQ(w.Command4.enabled(), c.fits);
    EXPECT_EQ(w.Label19.visible(), !c.fits);
    EXPECT_EQ(printCount(), c.printCount);
  }
  // Totals of up to 11 characters are shown (5s + 60 for 5 by 5 from s).
  for (const auto& [start, total] : {std::pair{1999999988.0, "= 10000000000"}, {19999999988.0, "is {very large!}"},
                                     {-200000012.0, "= -1000000000"}, {-2000000012.0, "is {very large!}"}}) {
    EXPECT_EQ(magicTotalCaption({5, start, 1}), std::string("Magic Total ") + total);
  }
  w.Text5.userEdit("1E400");  // beyond the double range: no number, so ignored
  w.Text5.userKeyUp('0');
  EXPECT_EQ(w.state().distance, 3);
}

// Up steps to the next prime of 5 or more, Down to the one below (never below
// 5); text that is no whole number, or whose next prime would not fit, stays.
TEST_F(Settings, TheSizeEntryTakesPrimesAndStepsBetweenThem) {
  const auto isPrime = [](int v) {
    for (int d = 2; d * d <= v; ++d) v = v % d == 0 ? 0 : v;
    return v >= 2;
  };
  const auto press = [&](int key) { w.Text2.userKeyDown(key), w.Text2.userKeyUp(key); };
  for (int value = -10; value <= 260; ++value) {
    int above = std::max(value + 1, 5), below = value - 1;
    while (!isPrime(above)) ++above;
    while (value > 5 && !isPrime(below)) --below;
    retype(w.Text2, std::to_string(value));
    press(keys::up);
    ASSERT_EQ(w.Text2.text(), std::to_string(above)) << value;
    ASSERT_EQ(w.state().squareSize, above);
    retype(w.Text2, std::to_string(value));
    press(keys::down);
    ASSERT_EQ(w.Text2.text(), std::to_string(value > 5 ? below : value)) << value;
  }
  for (const auto& [typed, shown] : {std::pair{"7.4", "7.4"}, {"1E+99", "1E+99"}, {"999983", "999983"}, {"x", "5"}}) {
    retype(w.Text2, typed);
    press(keys::up);
    EXPECT_EQ(w.Text2.text(), shown);
  }
  for (const char* typed : {"9", "3", "0", "-7", "7.4", "1E400", "abc", "1E+300", "13", "11abc", "1.3E1", "101",
                            "103", "999983"}) {
    w.sqr7.userClick();
    retype(w.Text2, typed);
    const double value = numericValue(typed);
    const bool accepted = value == std::floor(value) && value < 1e6 && value >= 5 && isPrime(static_cast<int>(value));
    const int size = accepted ? static_cast<int>(value) : 7;
    const std::string t = std::to_string(size);
    EXPECT_EQ(w.Text2.text(), typed);
    EXPECT_EQ(w.state().squareSize, size) << typed;
    EXPECT_EQ(w.Command1.enabled(), size <= 101) << typed;
    EXPECT_EQ(checkedSizeItem(), size > 29 ? "Larger Size" : t + " by " + t) << typed;
    EXPECT_EQ(w.Label11.caption(), magicTotalCaption({size, 1, 1})) << typed;
  }
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
  EXPECT_EQ(countingExplanation(7).fundamental, "There are 1555200 fundamental squares.");
  EXPECT_EQ(countingExplanation(17).fundamental, "There are 1.31328941009219E+27 fundamental squares.");
  for (const int n : {101, 103}) {
    const CountingExplanation large = countingExplanation(n);
    EXPECT_EQ(large.fundamental + large.shifted + large.rotated + large.total, "The number of Squares is too large!");
  }
  for (const int n : primeSizes(97)) {
    if (n == 5) continue;
    long double f = 3;
    for (int k = 2; k < n; ++k) f *= static_cast<long double>(k) * k;
    const long double s = f * n * n, t = 4 * s;
    const std::string nn = std::to_string(n * n), size = std::to_string(n);
    const CountingExplanation texts = countingExplanation(n);
    const auto number = [](const std::string& text, const std::string& before) {
      return numericValue(text.substr(text.find(before) + before.size()));
    };
    const auto near = [](double shown, long double exact) { return std::fabs(shown / exact - 1) < 1e-14L; };
    SCOPED_TRACE(n);
    EXPECT_TRUE(near(number(texts.fundamental, "There are "), f));
    EXPECT_TRUE(near(number(texts.shifted, " * " + nn + " = "), s));
    EXPECT_TRUE(near(number(texts.rotated, " * 4 = "), t));
    EXPECT_EQ(texts.question, "How many (" + size + " by " + size + ") \"Complete\" Magic Squares are there?:");
    EXPECT_EQ(texts.shifted.rfind("Each Square yields " + nn + " other squares by row and column shift: (", 0), 0u);
    EXPECT_EQ(texts.rotated.rfind("Each Square can also be rotated three times to produce three more squares: (", 0),
              0u);
    EXPECT_EQ(texts.total, "Therefore, there are exactly " + texts.rotated.substr(texts.rotated.find(" = ") + 3,
                                                                                 texts.rotated.size() -
                                                                                     texts.rotated.find(" = ") - 5) +
                               " \"Complete\" Magic Squares of (" + size + " by " + size + ").");
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
