// The size menu, the size entry, and the totals, cell metrics and page fit
// that follow every change of size, starting number or distance.
#include <gtest/gtest.h>

#include <string>

#include "platform/number_text.h"
#include "screens/settings_texts.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

bool isPrime(int value) {
  if (value < 2) return false;
  for (int divisor = 2; divisor * divisor <= value; ++divisor) {
    if (value % divisor == 0) return false;
  }
  return true;
}

class SizeSelection : public WindowTest {
 protected:
  void typeSize(const std::string& text) { retype(w.Text2, text); }
  void pressInSizeEntry(int key) {
    w.Text2.userKeyDown(key);
    w.Text2.userKeyUp(key);
  }
  // The size menu item checked, by caption, or "" when none is.
  std::string checkedSizeItem() const {
    std::string checked;
    for (const MenuItem* item : w.size.children()) {
      if (item->checked()) checked += item->caption();
    }
    return checked;
  }
};

TEST_F(SizeSelection, TotalsFollowSizeStartAndDistance) {
  struct Case {
    const char* size;
    const char* start;
    const char* distance;
    const char* magicTotal;
    const char* lastNumber;
  };
  const Case cases[] = {
      {"5", "1", "1", "Magic Total = 65", "Last number equals: 25"},
      {"7", "1", "1", "Magic Total = 175", "Last number equals: 49"},
      {"5", "10", "3", "Magic Total = 230", "Last number equals: 82"},
      {"5", "-5", "1", "Magic Total = 35", "Last number equals: 19"},
      {"7", "0.5", "-2", "Magic Total = -332.5", "Last number equals: -95.5"},
  };
  // The start-up captions are already what the refresh gives.
  EXPECT_EQ(w.Label11.caption(), "Magic Total = 65");
  EXPECT_EQ(w.Label18.caption(), "Last number equals: 25");
  for (const Case& c : cases) {
    typeSize(c.size);
    retype(w.text4, c.start);
    retype(w.Text5, c.distance);
    EXPECT_EQ(w.Label11.caption(), c.magicTotal) << c.size << " " << c.start << " " << c.distance;
    EXPECT_EQ(w.Label18.caption(), c.lastNumber) << c.size << " " << c.start << " " << c.distance;
  }
}

TEST_F(SizeSelection, LongTotalsAreVeryLarge) {
  // For 5 by 5 with distance 1 the magic total is 5s + 60 and the last number s + 24.
  struct Case {
    double start;
    const char* magicTotal;
    const char* lastNumber;
  };
  const Case cases[] = {
      {1999999988, "Magic Total = 10000000000", "Last number is {very large!}"},  // 11 characters
      {19999999988, "Magic Total is {very large!}", "Last number is {very large!}"},
      {-200000012, "Magic Total = -1000000000", "Last number is {very large!}"},
      {-2000000012, "Magic Total is {very large!}", "Last number is {very large!}"},
      {999976, "Magic Total = 4999940", "Last number equals: 1000000"},  // 7 characters
      {9999976, "Magic Total = 49999940", "Last number is {very large!}"},
      {-1000023, "Magic Total = -5000055", "Last number equals: -999999"},
      {-1000024, "Magic Total = -5000060", "Last number is {very large!}"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(magicTotalCaption({5, c.start, 1}), c.magicTotal) << c.start;
    EXPECT_EQ(lastNumberCaption({5, c.start, 1}), c.lastNumber) << c.start;
  }
}

TEST_F(SizeSelection, MenuSetsTheSizeAndItsCheckMark) {
  w.Text2.userEdit("103");  // no key released: the entry is not read
  for (MenuItem* item : w.size.children()) {
    if (item == &w.larger) continue;
    item->userClick();
    const std::string caption = item->caption();
    const std::string size = caption.substr(0, caption.find(' '));
    EXPECT_EQ(w.state().squareSize, std::stoi(size));
    EXPECT_EQ(w.Text2.text(), size);
    EXPECT_EQ(checkedSizeItem(), caption);
    EXPECT_TRUE(w.Command1.enabled());
  }
  w.larger.userClick();  // carries a check mark only
  EXPECT_EQ(w.state().squareSize, 29);
  EXPECT_EQ(checkedSizeItem(), "29 by 29");
}

// Up steps to the next prime of 5 or more, Down to the one below (never
// below 5); a value that is no whole number stays as typed, and so does one
// whose next prime would not fit the entry.
TEST_F(SizeSelection, ArrowStepsMatchAPrimeTableAndAreAccepted) {
  const std::pair<const char*, const char*> unchanged[] = {{"7.4", "7.4"}, {"1E+99", "1E+99"}, {"999983", "999983"}};
  for (const auto& [typed, shown] : unchanged) {
    typeSize(typed);
    pressInSizeEntry(keys::up);
    EXPECT_EQ(w.Text2.text(), shown);
  }
  typeSize("999983");
  pressInSizeEntry(keys::down);
  EXPECT_EQ(w.Text2.text(), "999979");
  typeSize("x");
  pressInSizeEntry(keys::up);
  EXPECT_EQ(w.Text2.text(), "5");
  for (int value = -10; value <= 260; ++value) {
    int above = std::max(value + 1, 5);
    while (!isPrime(above)) ++above;
    typeSize(std::to_string(value));
    pressInSizeEntry(keys::up);
    ASSERT_EQ(w.Text2.text(), std::to_string(above)) << value;
    EXPECT_EQ(w.state().squareSize, above);

    int below = value - 1;
    while (value > 5 && !isPrime(below)) --below;
    typeSize(std::to_string(value));
    pressInSizeEntry(keys::down);
    ASSERT_EQ(w.Text2.text(), std::to_string(value > 5 ? below : value)) << value;
  }
}

TEST_F(SizeSelection, TypedPrimesAreAcceptedAndEverythingElseIgnored) {
  struct Case {
    const char* typed;
    bool accepted;
  };
  const Case cases[] = {{"9", false},     {"3", false},      {"0", false},  {"-7", false},
                        {"7.4", false},   {"1E400", false},  {"abc", false}, {"1E+300", false},
                        {"13", true},     {"11abc", true},   {"1.3E1", true}, {"101", true},
                        {"103", true},    {"999983", true}};
  for (const Case& c : cases) {
    w.sqr7.userClick();
    typeSize(c.typed);
    EXPECT_EQ(w.Text2.text(), c.typed);  // the text stays as typed either way
    if (!c.accepted) {
      EXPECT_EQ(w.state().squareSize, 7) << c.typed;
      EXPECT_EQ(w.Label11.caption(), "Magic Total = 175") << c.typed;
      EXPECT_EQ(checkedSizeItem(), "7 by 7") << c.typed;
      continue;
    }
    const int size = static_cast<int>(numericValue(c.typed));
    EXPECT_EQ(w.state().squareSize, size) << c.typed;
    EXPECT_EQ(w.Command1.enabled(), size <= 101) << c.typed;
    const std::string t = std::to_string(size);
    EXPECT_EQ(checkedSizeItem(), size > 29 ? "Larger Size" : t + " by " + t) << c.typed;
  }
}

TEST_F(SizeSelection, CellMetricsAndPageFit) {
  struct Case {
    const char* size;
    const char* start;
    const char* distance;
    int numberChars;
    int cellWidth;
    bool fitsPage;
  };
  const Case cases[] = {
      {"5", "1", "1", 2, 24, true},
      {"5", "-5", "1", 3, 24, true},      // -5 .. 19: one character for the sign
      {"5", "-30", "1", 3, 24, true},     // -30 .. -6: both ends negative, nothing added
      {"5", "5", "-1", 3, 24, true},      // 5 .. -19
      {"5", "-100", "10", 4, 32, true},   // -100 .. 140: 140 is shorter than -100
      {"5", "-10", "10", 4, 32, true},    // -10 .. 230: 230 is as long as -10
      {"5", "-1000", "10", 5, 40, true},  // -1000 .. -760
      {"29", "1", "1", 3, 24, true},
      {"31", "1", "1", 3, 24, false},
      {"41", "1", "1", 4, 32, false},     // last number 1681
      {"19", "1000", "1000", 6, 48, false},
      {"5", "999999999", "999999999", 11, 88, true},
      {"5", "1E15", "1", 20, 160, false},
  };
  for (const Case& c : cases) {
    typeSize(c.size);
    retype(w.text4, c.start);
    retype(w.Text5, c.distance);
    SCOPED_TRACE(std::string(c.size) + " " + c.start + " " + c.distance);
    EXPECT_EQ(w.display().numberChars(), c.numberChars);
    EXPECT_EQ(w.cellWidth(), c.cellWidth);
    EXPECT_EQ(w.Command4.enabled(), c.fitsPage);
    EXPECT_EQ(w.Label19.visible(), !c.fitsPage);
  }
}

TEST_F(SizeSelection, ChangesOnAnotherPageShowWhenTheMainPageReturns) {
  typeSize("103");
  retype(w.text4, "1E15");  // too wide for the page at any size
  EXPECT_TRUE(w.Label19.visible());
  w.Command2.userClick();
  w.sqr7.userClick();  // the size menu works on the information page
  EXPECT_FALSE(w.Label19.visible());
  EXPECT_FALSE(w.Command4.enabled());
  EXPECT_EQ(w.Label4.caption(), "How many (7 by 7) \"Complete\" Magic Squares are there?:");
  w.Command3.userClick();
  EXPECT_TRUE(w.Label19.visible());
  EXPECT_TRUE(w.Command1.visible());
  EXPECT_TRUE(w.Command1.enabled());  // 7 by 7 can be created
}

}  // namespace
}  // namespace quill::testing
