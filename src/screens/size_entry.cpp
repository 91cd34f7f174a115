// Primes for the size entry.
#include "screens/size_entry.h"

#include <algorithm>
#include <cmath>

namespace quill {

bool isWholeSizeEntry(double sizeEntry) {
  return sizeEntry == std::floor(sizeEntry) && std::fabs(sizeEntry) <= kLargestSizeEntry;
}

bool isPrimeSizeEntry(double sizeEntry) {
  double trialDivisor = std::floor(std::sqrt(std::max(sizeEntry, 0.0)));
  if (trialDivisor < 2) return false;
  for (; trialDivisor >= 2; trialDivisor -= 1) {
    if (std::fmod(sizeEntry, trialDivisor) == 0) return false;
  }
  return true;
}

std::optional<double> steppedSize(double sizeEntry, bool up) {
  if (!isWholeSizeEntry(sizeEntry) || (!up && sizeEntry <= 5)) return std::nullopt;
  do {
    sizeEntry += up ? 1 : -1;
  } while (!isPrimeSizeEntry(sizeEntry));
  if (sizeEntry > kLargestSizeEntry) return std::nullopt;
  return sizeEntry;
}

}  // namespace quill
