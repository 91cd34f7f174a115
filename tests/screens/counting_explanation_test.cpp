// The counting explanation: fixed for 5 by 5, the exact counts from 7 to 97,
// too large from 101; the labels show it for the size in force.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "screens/settings_texts.h"
#include "support/magic.h"
#include "support/window_fixture.h"

namespace quill::testing {
namespace {

std::string question(int n) {
  const std::string t = std::to_string(n);
  return "How many (" + t + " by " + t + ") \"Complete\" Magic Squares are there?:";
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

// Every prime from 7 to 97: F = 3((n-1)!)², S = n²F and T = 4S, each the
// exact count in the number form.
TEST(CountingExplanation, EverySizeShowsTheExactCounts) {
  const CountingExplanation five = countingExplanation(5);
  EXPECT_EQ(five.fundamental, "There are 576 fundamental squares.");
  EXPECT_EQ(five.shifted, "Each Square yields 25 other squares by row and column shift: (576 * 25 = 14400).");
  EXPECT_EQ(five.rotated, "Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800).");
  EXPECT_EQ(five.total, "Therefore, there are exactly 28800 \"Complete\" Magic Squares of (5 by 5).");
  for (const int n : {101, 103, 997}) {
    const CountingExplanation large = countingExplanation(n);
    EXPECT_EQ(large.question, question(n));
    EXPECT_EQ(large.fundamental + large.shifted + large.rotated + large.total, "The number of Squares is too large!");
  }
  for (const int n : primeSizes(97)) {
    if (n == 5) continue;
    Decimal factorial{1};
    for (int factor = 2; factor < n; ++factor) factorial = factorial * Decimal{static_cast<std::uint32_t>(factor)};
    const std::string f = (Decimal{3} * factorial * factorial).shown();
    const std::string s = (Decimal{static_cast<std::uint32_t>(n * n)} * Decimal{3} * factorial * factorial).shown();
    const std::string t =
        (Decimal{4} * Decimal{static_cast<std::uint32_t>(n * n)} * Decimal{3} * factorial * factorial).shown();
    const std::string nn = std::to_string(n * n), size = std::to_string(n);
    const CountingExplanation texts = countingExplanation(n);
    SCOPED_TRACE(n);
    EXPECT_EQ(texts.question, question(n));
    EXPECT_EQ(texts.fundamental, "There are " + f + " fundamental squares.");
    EXPECT_EQ(texts.shifted, "Each Square yields " + nn + " other squares by row and column shift: (" + f + " * " + nn +
                                 " = " + s + ").");
    EXPECT_EQ(texts.rotated,
              "Each Square can also be rotated three times to produce three more squares: (" + s + " * 4 = " + t + ").");
    EXPECT_EQ(texts.total, "Therefore, there are exactly " + t + " \"Complete\" Magic Squares of (" + size + " by " +
                               size + ").");
  }
}

// The labels follow the size, from the menu or the entry, and nothing else.
class CountingLabels : public WindowTest {};

TEST_F(CountingLabels, TheLabelsShowTheExplanationOfTheSizeInForce) {
  for (const char* size : {"7", "101", "5", "29"}) {
    retype(w.Text2, size);
    const CountingExplanation texts = countingExplanation(std::stoi(size));
    EXPECT_EQ(w.Label4.caption() + w.Label3.caption() + w.Label5.caption() + w.Label6.caption() + w.Label7.caption(),
              texts.question + texts.fundamental + texts.shifted + texts.rotated + texts.total)
        << size;
  }
  const std::string before = w.Label7.caption();
  retype(w.text4, "-40");
  retype(w.Text5, "7");
  EXPECT_EQ(w.Label7.caption(), before);
}

}  // namespace
}  // namespace quill::testing
