// The main page's derived captions, as plain functions of the settings: the
// magic total, the last number, and how many complete squares of a size
// there are.
#pragma once

#include <string>

#include "construction/progression.h"

namespace quill {

// "Magic Total = 65", or "Magic Total is {very large!}" past 11 characters.
std::string magicTotalCaption(const Progression& numbers);
// "Last number equals: 25", or "Last number is {very large!}" past 7 characters.
std::string lastNumberCaption(const Progression& numbers);
// A square's size as the captions write it: "(7 by 7)".
std::string sizeText(int n);

// The counting explanation's five captions.
struct CountingExplanation {
  std::string question;      // how many squares of this size there are
  std::string fundamental;   // the fundamental squares
  std::string shifted;       // times n² row and column shifts
  std::string rotated;       // times the rotations
  std::string total;         // therefore, exactly so many
};
CountingExplanation countingExplanation(int n);

}  // namespace quill
