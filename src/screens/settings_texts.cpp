// The magic total, the last number and the counting explanation as texts.
#include "screens/settings_texts.h"

#include "construction/square.h"
#include "platform/number_text.h"

namespace quill {

std::string magicTotalCaption(const Progression& numbers) {
  const double n = numbers.n;
  const double s = numbers.startNumber;
  const double d = numbers.distance;
  // n·s + d·n·(n²−1)/2, summed in this order, which fixes the rounding of
  // fractional and very large totals.
  const double a = n * (n * (n - 1) / 2 + (n + 1) / 2);
  const double b = (d - 1) * n * (n * (n + 1) / 2 - (n + 1) / 2);
  const std::string magicTotalText = numberText((b + a) + (s - 1) * n);
  return magicTotalText.size() <= 11 ? "Magic Total = " + magicTotalText : "Magic Total is {very large!}";
}

std::string sizeText(int n) {
  const std::string t = numberText(n);
  return "(" + t + " by " + t + ")";
}

std::string lastNumberCaption(const Progression& numbers) {
  const std::string last = numberText(numbers.lastNumber());
  return last.size() <= 7 ? "Last number equals: " + last : "Last number is {very large!}";
}

CountingExplanation countingExplanation(int n) {
  const std::string complete = "\"Complete\"";
  const std::string t = numberText(n);
  const std::string question = "How many " + sizeText(n) + " " + complete + " Magic Squares are there?:";
  if (n == 5) {
    return {question, "There are 576 fundamental squares.",
            "Each Square yields 25 other squares by row and column shift: (576 * 25 = 14400).",
            "Each Square can also be rotated once to produce a second square: (14400 * 2 = 28800).",
            "Therefore, there are exactly 28800 " + complete + " Magic Squares of (5 by 5)."};
  }
  if (n >= kMaxSquareSize) return {question, "The number of Squares is too large!", "", "", ""};

  // ((n-1)!)² as a running product from n-1 down, carried in extended
  // precision: factorials have many factors of two, so the product stays
  // exact far beyond the 32-bit range, and the 15 digits shown are those of
  // the exact count (3·(28!)² shows as 2.78870708040214E+59, not ...213).
  const long double size = n;
  long double product = size - 1;
  for (long double factor = size - 2; factor >= 2; factor -= 1) product *= factor;
  product *= product;
  const std::string fundamental = numberText(static_cast<double>(3 * product));
  const std::string shifted = numberText(static_cast<double>(size * size * 3 * product));
  const std::string total = numberText(static_cast<double>(4 * size * size * 3 * product));
  const std::string nSquared = numberText(static_cast<double>(size * size));
  return {question, "There are " + fundamental + " fundamental squares.",
          "Each Square yields " + nSquared + " other squares by row and column shift: (" + fundamental + " * " +
              nSquared + " = " + shifted + ").",
          "Each Square can also be rotated three times to produce three more squares: (" + shifted + " * 4 = " +
              total + ").",
          "Therefore, there are exactly " + total + " " + complete + " Magic Squares of " + sizeText(n) + "."};
}

}  // namespace quill
