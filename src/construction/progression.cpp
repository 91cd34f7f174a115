// Widths of a progression's numbers as the number-to-text rule writes them.
#include "construction/progression.h"

#include <algorithm>
#include <string>

#include "platform/number_text.h"

namespace quill {

namespace {
int textLength(double value) { return static_cast<int>(numberText(value).size()); }
}  // namespace

int Progression::widestNumberChars() const { return std::max(textLength(lastNumber()), textLength(startNumber)); }

bool Progression::needsSignCharacter() const {
  const double first = startNumber;
  const double last = lastNumber();
  if (first >= 0 && last >= 0) return false;
  // Both negative: no extra character (q stays at a three-character 100).
  double p = 0;
  double q = 100;
  if (first > 0) p = first, q = last;
  if (last > 0) p = last, q = first;
  return textLength(p) >= textLength(q);
}

}  // namespace quill
