// The counting explanation: fixed for 5 by 5, computed up to 97, too large from 101.
#include <gtest/gtest.h>

#include <cstdint>
#include <regex>
#include <string>
#include <vector>

#include "support/window_fixture.h"

namespace quill::testing {
namespace {

class CountingExplanation : public WindowTest {
 protected:
  std::string heading(int n) const {
    const std::string t = std::to_string(n);
    return "How many (" + t + " by " + t + ") \"Complete\" Magic Squares are there?:";
  }
};

TEST_F(CountingExplanation, FiveByFiveTextsAreFixed) {
  w.sqr7.userClick();
  w.sqr5.userClick();
  // As designed, but without the trailing blank of the heading and the total.
  EXPECT_EQ(w.Label4.caption(), heading(5));
  EXPECT_EQ(w.Label3.caption(), "There are 576 fundamental squares.");
  EXPECT_EQ(w.Label5.caption(),
            "Each Square yields 25 other squares by row and column shift: (576 * 25 = 14400).");
  EXPECT_EQ(w.Label6.caption(),
            "Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800).");
  EXPECT_EQ(w.Label7.caption(), "Therefore, there are exactly 28800 \"Complete\" Magic Squares of (5 by 5).");
}

TEST_F(CountingExplanation, SevenAndElevenByHand) {
  w.sqr7.userClick();
  EXPECT_EQ(w.Label3.caption(), "There are 1555200 fundamental squares.");
  EXPECT_EQ(w.Label5.caption(),
            "Each Square yields 49 other squares by row and column shift: (1555200 * 49 = 76204800).");
  EXPECT_EQ(w.Label6.caption(),
            "Each Square can also be rotated three times to produce three more squares: "
            "(76204800 * 4 = 304819200).");
  EXPECT_EQ(w.Label7.caption(),
            "Therefore, there are exactly 304819200 \"Complete\" Magic Squares of (7 by 7).");

  w.sqr11.userClick();
  EXPECT_EQ(w.Label3.caption(), "There are 39504568320000 fundamental squares.");
  EXPECT_EQ(w.Label6.caption(),
            "Each Square can also be rotated three times to produce three more squares: "
            "(4.78005276672E+15 * 4 = 1.912021106688E+16).");

  w.sqr29.userClick();
  EXPECT_EQ(w.Label3.caption(), "There are 2.78870708040214E+59 fundamental squares.");
}

// An exact non-negative whole number in base 10^9 limbs, least significant first.
struct Decimal {
  explicit Decimal(std::uint32_t value) : limbs{value} {}
  std::vector<std::uint32_t> limbs;

  friend Decimal operator*(const Decimal& a, const Decimal& b) {
    std::vector<std::uint64_t> sum(a.limbs.size() + b.limbs.size() + 1, 0);
    for (std::size_t i = 0; i < a.limbs.size(); ++i) {
      std::uint64_t carry = 0;
      for (std::size_t j = 0; j < b.limbs.size() || carry; ++j) {
        const std::uint64_t term =
            sum[i + j] + carry + (j < b.limbs.size() ? std::uint64_t{a.limbs[i]} * b.limbs[j] : 0);
        sum[i + j] = term % kBase;
        carry = term / kBase;
      }
    }
    while (sum.size() > 1 && sum.back() == 0) sum.pop_back();
    Decimal product{0};
    product.limbs.assign(sum.begin(), sum.end());
    return product;
  }

  std::string digits() const {
    std::string text = std::to_string(limbs.back());
    for (auto limb = limbs.rbegin() + 1; limb != limbs.rend(); ++limb) {
      const std::string part = std::to_string(*limb);
      text += std::string(9 - part.size(), '0') + part;
    }
    return text;
  }

  // Plain digits below 10^15; above, rounded to 15 significant digits with
  // trailing zeros dropped, then "E+" and the exponent.
  std::string shown() const {
    std::string text = digits();
    if (text.size() <= 15) return text;
    int exponent = static_cast<int>(text.size()) - 1;
    std::string mantissa = text.substr(0, 15);
    if (text[15] >= '5') {
      std::size_t i = mantissa.size();
      while (i > 0 && mantissa[i - 1] == '9') mantissa[--i] = '0';
      if (i == 0) mantissa.insert(mantissa.begin(), '1'), mantissa.pop_back(), ++exponent;
      else ++mantissa[i - 1];
    }
    while (mantissa.size() > 1 && mantissa.back() == '0') mantissa.pop_back();
    std::string result = mantissa.substr(0, 1);
    if (mantissa.size() > 1) result += "." + mantissa.substr(1);
    return result + "E+" + (exponent < 10 ? "0" : "") + std::to_string(exponent);
  }

  static constexpr std::uint64_t kBase = 1000000000;
};

// Every prime from 7 to 97, through the size entry: the four lines hold
// F = 3((n-1)!)², n², S = n²F and T = 4S, each the exact count in the number form.
TEST_F(CountingExplanation, ComputedTextsFollowTheFormula) {
  const std::string number = R"(((?:[0-9]+|[0-9](?:\.[0-9]+)?E\+[0-9]{2,})))";
  const std::regex fundamentalLine("There are " + number + " fundamental squares\\.");
  const std::regex shiftLine("Each Square yields ([0-9]+) other squares by row and column shift: \\(" +
                             number + " \\* ([0-9]+) = " + number + "\\)\\.");
  const std::regex rotationLine(
      "Each Square can also be rotated three times to produce three more squares: \\(" + number +
      " \\* 4 = " + number + "\\)\\.");
  const std::regex totalLine("Therefore, there are exactly " + number +
                             " \"Complete\" Magic Squares of \\(([0-9]+) by \\2\\)\\.");
  int primes = 0;
  for (int n = 7; n <= 97; n += 2) {
    bool prime = true;
    for (int divisor = 3; divisor * divisor <= n; divisor += 2) prime = prime && n % divisor != 0;
    if (!prime) continue;
    ++primes;
    retype(w.Text2, std::to_string(n));
    ASSERT_EQ(w.state().squareSize, n);
    SCOPED_TRACE(n);

    Decimal factorial{1};
    for (int factor = 2; factor < n; ++factor) factorial = factorial * Decimal{static_cast<std::uint32_t>(factor)};
    const Decimal fundamental = Decimal{3} * factorial * factorial;
    const Decimal shifted = Decimal{static_cast<std::uint32_t>(n * n)} * fundamental;
    const Decimal total = Decimal{4} * shifted;
    const auto expectShown = [](const std::string& text, const Decimal& value) {
      EXPECT_EQ(text, value.shown());
    };

    std::smatch m;
    const std::string line3 = w.Label3.caption();
    ASSERT_TRUE(std::regex_match(line3, m, fundamentalLine)) << line3;
    expectShown(m[1], fundamental);
    const std::string fText = m[1];

    const std::string line5 = w.Label5.caption();
    ASSERT_TRUE(std::regex_match(line5, m, shiftLine)) << line5;
    EXPECT_EQ(m[1], std::to_string(n * n));
    EXPECT_EQ(m[2], fText);
    EXPECT_EQ(m[3], std::to_string(n * n));
    expectShown(m[4], shifted);
    const std::string sText = m[4];

    const std::string line6 = w.Label6.caption();
    ASSERT_TRUE(std::regex_match(line6, m, rotationLine)) << line6;
    EXPECT_EQ(m[1], sText);
    expectShown(m[2], total);
    const std::string tText = m[2];

    const std::string line7 = w.Label7.caption();
    ASSERT_TRUE(std::regex_match(line7, m, totalLine)) << line7;
    EXPECT_EQ(m[1], tText);
    EXPECT_EQ(m[2], std::to_string(n));
    EXPECT_EQ(w.Label4.caption(), heading(n));
  }
  EXPECT_EQ(primes, 22);
}

TEST_F(CountingExplanation, FromOneHundredAndOneTheNumberIsTooLarge) {
  for (const int n : {101, 103, 997}) {
    retype(w.Text2, std::to_string(n));
    EXPECT_EQ(w.Label4.caption(), heading(n));
    EXPECT_EQ(w.Label3.caption(), "The number of Squares is too large!");
    EXPECT_EQ(w.Label5.caption(), "");
    EXPECT_EQ(w.Label6.caption(), "");
    EXPECT_EQ(w.Label7.caption(), "");
  }
  retype(w.Text2, "97");
  EXPECT_EQ(w.Label3.caption().rfind("There are ", 0), 0u);
}

TEST_F(CountingExplanation, StartAndDistanceLeaveItAlone) {
  w.sqr13.userClick();
  const std::string before = w.Label7.caption();
  retype(w.text4, "-40");
  retype(w.Text5, "7");
  EXPECT_EQ(w.Label7.caption(), before);
}

}  // namespace
}  // namespace quill::testing
