// The fake platform's recordings.
#include "support/fake_platform.h"

#include <bit>

namespace quill::testing {

double FakePlatform::random() {
  ++randomCount;
  if (scriptedRandom.empty()) return random_.next();
  const double value = scriptedRandom.front();
  scriptedRandom.pop_front();
  return value;
}

void FakePlatform::printWindow() {
  PrintedPage page;
  if (form_ != nullptr) {
    page.drawing = form_->surface().ops();
    for (const Control* control : form_->controls()) {
      if (control->visible()) page.visibleControls.push_back(control->name());
    }
  }
  pages.push_back(std::move(page));
}

void FakePlatform::yield() {
  ++yieldCount;
  if (onYield) onYield(yieldCount);
}

void FakePlatform::waitForEvents() { yield(); }

void FakePlatform::seedRandom(double secondsSinceMidnight) {
  ++seedCount;
  lastSeed = secondsSinceMidnight;
  random_.seed(std::bit_cast<std::uint64_t>(secondsSinceMidnight));
}

}  // namespace quill::testing
