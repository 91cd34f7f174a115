// The number rules every caption, label, cell and entry goes through.
#pragma once

#include <string>
#include <string_view>

namespace quill {

// A number as text, untrimmed: a non-negative number keeps one leading blank.
// Whole numbers within the 32-bit range are plain digits; anything else has
// at most 15 significant digits with trailing zeros dropped, plain below
// 10^15 and as mantissa, "E", sign and two or more exponent digits from 10^15
// up (4.78005276672E+15). Values between -1 and 1 have no leading zero (.5).
std::string untrimmedNumberText(double value);

// The same without the leading blank: what captions and cells show.
std::string numberText(double value);

// The print form used when a practice answer is written into its cell:
// the untrimmed form followed by one blank.
std::string printNumberText(double value);

// The numeric value of a text: its leading number (blanks skipped, optional
// sign, digits, optional point and fraction, optional exponent); 0 when the
// text does not start with a number or the number lies beyond the double range.
double numericValue(std::string_view text);

}  // namespace quill
