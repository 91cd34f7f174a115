// The numbers a square holds: n² numbers from startNumber, distance apart,
// and what their widths mean for the cells they are drawn in.
#pragma once

namespace quill {

struct Progression {
  int n = 0;
  double startNumber = 0;
  double distance = 0;

  // startNumber + (n² − 1)·distance.
  double lastNumber() const { return (static_cast<double>(n) * n - 1) * distance + startNumber; }
  // Whether either end is negative: a number of 0 or more is then drawn 3
  // units right, as if it had a minus sign.
  bool holdsNegatives() const { return startNumber < 0 || lastNumber() < 0; }
  // Characters of the wider end's text.
  int widestNumberChars() const;
  // Whether one more character is kept for a minus sign: when one end is
  // negative and the non-negative end's text is at least as long.
  bool needsSignCharacter() const;
  // Characters a cell is sized for.
  int numberChars() const { return widestNumberChars() + (needsSignCharacter() ? 1 : 0); }
};

}  // namespace quill
