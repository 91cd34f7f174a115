// The pseudo-random generator behind the platform's Random number.
#pragma once

#include <cstdint>

namespace quill {

// SplitMix64: small, fast and well distributed; reseeding restarts the sequence.
class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed = 0) : state_(seed) {}
  void seed(std::uint64_t seed) { state_ = seed; }
  // A uniform real in [0, 1) with 53 random bits.
  double next();

 private:
  std::uint64_t state_;
};

}  // namespace quill
