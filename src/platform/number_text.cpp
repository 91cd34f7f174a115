// Number-to-text and text-to-number, the same whatever the locale and whichever
// C library the program is built with (glibc natively, musl in the browser).
#include "platform/number_text.h"

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <locale.h>

namespace quill {

namespace {

constexpr double kInt32Min = -2147483648.0;
constexpr double kInt32Max = 2147483647.0;

// Digits and decimal exponent of |value| rounded to 15 significant digits,
// trailing zeros dropped: 1234.5 gives {"12345", 3}.
struct Significand {
  std::string digits;
  int exponent = 0;
};

Significand significand(double magnitude) {
  char buffer[64];
  // d.dddddddddddddde+XX: 15 significant digits, rounded exactly by the C
  // library. Only the digits are read, so the locale's decimal point does
  // not matter.
  std::snprintf(buffer, sizeof buffer, "%.14e", magnitude);
  Significand result;
  const char* c = buffer;
  for (; *c != '\0' && *c != 'e'; ++c) {
    if (*c >= '0' && *c <= '9') result.digits.push_back(*c);
  }
  const bool negativeExponent = *c == 'e' && c[1] == '-';
  for (c += *c == 'e' ? 2 : 0; *c >= '0' && *c <= '9'; ++c) result.exponent = result.exponent * 10 + (*c - '0');
  if (negativeExponent) result.exponent = -result.exponent;
  while (result.digits.size() > 1 && result.digits.back() == '0') result.digits.pop_back();
  return result;
}

std::string plainText(const Significand& s) {
  const int digitCount = static_cast<int>(s.digits.size());
  if (s.exponent < 0) {
    // .000ddd: the point, then -exponent-1 zeros, then the digits.
    return "." + std::string(static_cast<std::size_t>(-s.exponent - 1), '0') + s.digits;
  }
  const int wholeDigits = s.exponent + 1;
  if (digitCount <= wholeDigits) {
    return s.digits + std::string(static_cast<std::size_t>(wholeDigits - digitCount), '0');
  }
  return s.digits.substr(0, static_cast<std::size_t>(wholeDigits)) + "." +
         s.digits.substr(static_cast<std::size_t>(wholeDigits));
}

std::string exponentText(const Significand& s) {
  std::string text = s.digits.substr(0, 1);
  if (s.digits.size() > 1) text += "." + s.digits.substr(1);
  text += s.exponent < 0 ? "E-" : "E+";
  const int magnitude = s.exponent < 0 ? -s.exponent : s.exponent;
  if (magnitude < 10) text += "0";
  text += std::to_string(magnitude);
  return text;
}

}  // namespace

std::string untrimmedNumberText(double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Inf" : " Inf";
  const std::string sign = value < 0 ? "-" : " ";
  if (value == std::floor(value) && value >= kInt32Min && value <= kInt32Max) {
    const auto whole = static_cast<std::int64_t>(value);
    return sign + std::to_string(whole < 0 ? -whole : whole);
  }
  const Significand s = significand(std::fabs(value));
  // The choice of form follows the rounded value: 999999999999999.9 is 1E+15.
  return sign + (s.exponent >= 15 ? exponentText(s) : plainText(s));
}

std::string numberText(double value) {
  std::string text = untrimmedNumberText(value);
  if (!text.empty() && text.front() == ' ') text.erase(0, 1);
  return text;
}

std::string printNumberText(double value) { return untrimmedNumberText(value) + " "; }

double numericValue(std::string_view text) {
  std::size_t pos = 0;
  while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
  auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };

  bool negative = false;
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    negative = text[pos] == '-';
    ++pos;
  }
  const std::size_t numberStart = pos;
  std::size_t mantissaDigits = 0;
  while (isDigit(pos)) ++pos, ++mantissaDigits;
  if (pos < text.size() && text[pos] == '.') {
    ++pos;
    while (isDigit(pos)) ++pos, ++mantissaDigits;
  }
  if (mantissaDigits == 0) return 0.0;
  // An exponent counts only when at least one digit follows "E", "E+" or "E-".
  if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
    std::size_t exponentPos = pos + 1;
    if (exponentPos < text.size() && (text[exponentPos] == '+' || text[exponentPos] == '-')) ++exponentPos;
    if (isDigit(exponentPos)) {
      pos = exponentPos;
      while (isDigit(pos)) ++pos;
    }
  }

  // The sign was taken above; the C library reads the rest ("12.5e3", ".5",
  // "7.") in the C locale, whatever the user's locale says of the point.
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  const std::string number(text.substr(numberStart, pos - numberStart));
  const double magnitude = strtod_l(number.c_str(), nullptr, cLocale);
  // Beyond the double range (1E400) reads like a text without a number; an
  // underflow (1E-400) is simply 0.
  if (std::isinf(magnitude)) return 0.0;
  return negative ? -magnitude : magnitude;
}

}  // namespace quill
