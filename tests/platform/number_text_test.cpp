// The number rules: captions, cells and entries all depend on them.
#include "platform/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

namespace quill {
namespace {

TEST(NumberText, WholeRealSmallAndHugeValues) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"}, {-0.0, "0"}, {65, "65"}, {-5, "-5"}, {2147483647.0, "2147483647"}, {-2147483648.0, "-2147483648"},
      {2147483648.0, "2147483648"}, {-2147483649.0, "-2147483649"}, {999999999999999.0, "999999999999999"},
      {1e15, "1E+15"}, {-1e15, "-1E+15"}, {4780052766720000.0, "4.78005276672E+15"},
      {19120211066880000.0, "1.912021106688E+16"}, {1234567890123456789.0, "1.23456789012346E+18"},
      {999999999999999.9, "1E+15"}, {1e100, "1E+100"}, {1e200, "1E+200"}, {0.5, ".5"}, {-0.25, "-.25"}, {2.5, "2.5"},
      {-2.5, "-2.5"}, {1.0 / 3.0, ".333333333333333"}, {-2.0 / 3.0, "-.666666666666667"},
      {123456.7890123456, "123456.789012346"}, {0.001, ".001"}, {1e-5, ".00001"}, {100.25, "100.25"},
      {12345678901234.5, "12345678901234.5"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(numberText(value), text) << "value " << value;
}

TEST(NumericValue, LeadingNumberOrZero) {
  const std::pair<const char*, double> cases[] = {
      {"12abc", 12},   {"  -3", -3},   {"1e5", 100000}, {".5", 0.5},   {"-", 0},
      {"e5", 0},       {"1E400", 0},   {"-1E400", 0},   {"1e-400", 0}, {"", 0},
      {"abc", 0},      {"+7", 7},      {"3.25", 3.25},  {"-.5", -0.5}, {"1e", 1},
      {"1e+", 1},      {"2E-2", 0.02}, {"7.", 7},       {"  42  ", 42}, {"1,5", 1},
      {"0x10", 0},     {"\t9", 9},     {"- 3", 0},      {".", 0},      {"--1", 0},
      {"999999999", 999999999}, {"1.5e3x", 1500}, {"0", 0}, {"00012", 12},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(numericValue(text), value) << "text \"" << text << "\"";
}

// Whatever a caption shows reads back as the value it came from, to the 15
// significant digits the caption keeps, over many magnitudes and signs.
TEST(NumberRules, TextReadsBackAsItsValue) {
  std::mt19937_64 generator(20261122);
  std::uniform_real_distribution<double> mantissa(1.0, 10.0);
  std::uniform_int_distribution<int> exponent(-12, 30);
  for (int i = 0; i < 20000; ++i) {
    const double sign = (i % 2 == 0) ? 1.0 : -1.0;
    const double value = sign * mantissa(generator) * std::pow(10.0, exponent(generator));
    const double back = numericValue(numberText(value));
    EXPECT_NEAR(back, value, std::fabs(value) * 1e-14) << numberText(value);
  }
  for (int whole = -3000; whole <= 3000; ++whole) {
    ASSERT_EQ(numericValue(numberText(whole)), whole);
    ASSERT_EQ(numberText(whole), std::to_string(whole));
  }
}

}  // namespace
}  // namespace quill
