// The square builder's and the puzzle maker's random numbers and yields,
// taken from a platform as a run takes them, every yield going on.
#pragma once

#include "construction/square_builder.h"
#include "patterns/puzzle_maker.h"
#include "platform/platform.h"

namespace quill::testing {

// Int(Rnd × count) + 1, through the platform's random numbers.
inline int randomWhole(Platform& platform, int count) { return static_cast<int>(platform.random() * count) + 1; }

inline BuildSteps buildSteps(Platform& platform) {
  return {[&platform](int count) { return randomWhole(platform, count); }, [&platform] {
            platform.yield();
            return true;
          }};
}

inline PuzzleSteps puzzleSteps(Platform& platform) {
  const BuildSteps steps = buildSteps(platform);
  return {steps.randomWhole, steps.yieldGoesOn, {}, {}};
}

}  // namespace quill::testing
