// The size entry's rules: which typed values are sizes, and where the arrow
// keys step to.
#pragma once

#include <optional>

namespace quill {

// The entry holds six characters, so a size is a whole number of at most six
// digits; anything else (7.4, 1E+300) is never a size. This also keeps the
// page arithmetic of every accepted size small.
constexpr double kLargestSizeEntry = 999999;
bool isWholeSizeEntry(double sizeEntry);

// Trial division from the square root down to 2. A value whose square root
// is below 2 is not taken as prime, so stepping up from 4 or less lands on 5.
bool isPrimeSizeEntry(double sizeEntry);

// Where an arrow key takes a whole entry: the next prime above, or below
// (never below 5). None when the key does not step, or the next prime would
// not fit the entry.
std::optional<double> steppedSize(double sizeEntry, bool up);

}  // namespace quill
