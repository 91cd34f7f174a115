// The print count and "Fill Page", the page capacity, the starting number and the distance.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class NumericInputs : public WindowTest {
 protected:
  // The print count and whether "Fill Page" is checked, as the user sees them.
  std::string printCount() const { return w.Text1.text() + (w.Check12.checked() ? " filled" : ""); }
};

TEST_F(NumericInputs, FillPageIsCheckedExactlyWhenTheCountFillsThePage) {
  EXPECT_EQ(printCount(), "25 filled");
  w.sqr7.userClick();
  EXPECT_EQ(printCount(), "12 filled");
  retype(w.Text1, "5");
  EXPECT_EQ(printCount(), "5");
  retype(w.Text1, "12");
  EXPECT_EQ(printCount(), "12 filled");
  retype(w.Text1, "40");
  EXPECT_EQ(printCount(), "12 filled");
  retype(w.Text1, "many");  // no number reads as 0
  EXPECT_EQ(printCount(), "many");
  w.Check12.userClick();
  EXPECT_EQ(printCount(), "12 filled");
  w.Check12.userClick();  // clearing keeps the count
  EXPECT_EQ(printCount(), "12");
}

TEST_F(NumericInputs, ASmallCountSurvivesSizeChangesUntilItFillsThePage) {
  retype(w.Text1, "3");
  EXPECT_EQ(printCount(), "3");
  w.sqr11.userClick();  // holds 4
  EXPECT_EQ(printCount(), "3");
  w.sqr13.userClick();  // holds 4
  EXPECT_EQ(printCount(), "3");
  retype(w.Text1, "4");
  EXPECT_EQ(printCount(), "4 filled");
  w.sqr17.userClick();  // holds 1: the count is clamped and fills the page
  EXPECT_EQ(printCount(), "1 filled");
  w.sqr5.userClick();  // "Fill Page" still checked: the count follows the page
  EXPECT_EQ(printCount(), "25 filled");
}

TEST_F(NumericInputs, CheckingFillPageFirstThingComputesTheCapacity) {
  // No refresh has run yet, so the cell width is still unset.
  ASSERT_EQ(w.cellWidth(), 0);
  w.Check12.userClick();
  w.Check12.userClick();
  EXPECT_EQ(printCount(), "25 filled");
  EXPECT_EQ(w.cellWidth(), 24);
}

TEST_F(NumericInputs, PageCapacityOfTheMenuSizes) {
  const std::pair<MenuItem*, int> cases[] = {{&w.sqr5, 25},  {&w.sqr7, 12},  {&w.sqr11, 4},
                                             {&w.sqr13, 4},  {&w.sqr17, 1},  {&w.sqr19, 1},
                                             {&w.sqr23, 1},  {&w.sqr29, 1}};
  for (auto [item, capacity] : cases) {
    item->userClick();
    EXPECT_EQ(printCount(), std::to_string(capacity) + " filled") << item->caption();
  }
}

// Every prime size and every cell width: the capacity is what fits in whole
// rows and columns of the page (at least one), and that many squares laid
// out as a page lays them out stay on the page when one square fits at all.
TEST_F(NumericInputs, PageCapacityIsWhatFitsOnThePage) {
  // The largest size the entry takes, with 301-character numbers: no overflow.
  EXPECT_EQ(page::pageCapacity(999983, 8 * 301), 1);
  EXPECT_TRUE(page::largerThanPage(999983, 8 * 301));
  const int width = 753;
  const int height = 530;
  for (int n = 5; n <= 101; n += 2) {
    bool prime = true;
    for (int divisor = 3; divisor * divisor <= n; divisor += 2) prime = prime && n % divisor != 0;
    if (!prime) continue;
    for (int cellWidth = 24; cellWidth <= 184; cellWidth += 8) {
      const int capacity = page::pageCapacity(n, cellWidth);
      const int across = std::max(1, (width - 8 - n * cellWidth) / ((n + 1) * cellWidth) + 1);
      const int down = std::max(1, (height - 8 - 18 * n) / (18 * n + 18) + 1);
      ASSERT_EQ(capacity, across * down) << n << " " << cellWidth;

      if (n * cellWidth + 8 > width || 18 * n + 8 > height) continue;
      int left = 8;
      int top = 8;
      for (int square = 1; square <= capacity; ++square) {
        ASSERT_LE(left + n * cellWidth, width) << n << " " << cellWidth << " square " << square;
        ASSERT_LE(top + 18 * n, height) << n << " " << cellWidth << " square " << square;
        left += (n + 1) * cellWidth;
        if (left + n * cellWidth > width) left = 8, top += 18 * (n + 1);
      }
    }
  }
}

TEST_F(NumericInputs, StartingNumberTakesAnyValueAndDistanceIgnoresZero) {
  retype(w.text4, "10");
  retype(w.Text5, "3");
  EXPECT_EQ(w.Label11.caption(), "Magic Total = 230");
  retype(w.Text5, "0");
  EXPECT_EQ(w.state().distance, 3);
  EXPECT_EQ(w.Label11.caption(), "Magic Total = 230");
  retype(w.Text5, "none");
  EXPECT_EQ(w.state().distance, 3);
  retype(w.text4, "none");
  EXPECT_EQ(w.state().startNumber, 0);
  EXPECT_EQ(w.Label11.caption(), "Magic Total = 180");
  retype(w.text4, "-2.5");
  EXPECT_EQ(w.state().startNumber, -2.5);
  EXPECT_EQ(w.Label18.caption(), "Last number equals: 69.5");
  w.Text5.userEdit("1E400");  // beyond the double range: read as no number
  w.Text5.userKeyUp(48);
  EXPECT_EQ(w.state().distance, 3);
}

TEST_F(NumericInputs, NineDigitStartAndDistanceStillFitFivePerPage) {
  retype(w.text4, "999999999");
  retype(w.Text5, "999999999");
  EXPECT_EQ(w.Label18.caption(), "Last number is {very large!}");
  EXPECT_EQ(w.cellWidth(), 88);
  EXPECT_TRUE(w.Command4.enabled());
  EXPECT_FALSE(w.Label19.visible());
  EXPECT_EQ(printCount(), "5 filled");
}

}  // namespace
}  // namespace quill::testing
