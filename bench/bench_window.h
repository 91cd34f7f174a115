// A window on a platform that does nothing but count pages and hand out
// seeded random numbers.
#pragma once

#include <cstdlib>
#include <memory>

#include "window/main_window.h"
#include "platform/random_source.h"

namespace quill {

class QuietPlatform : public Platform {
 public:
  void maximiseWindow() override {}
  void printWindow() override { ++pages; }
  void endDocument() override {}
  void refreshWindow() override {}
  void choosePrinter() override {}
  void yield() override {}
  void waitForEvents() override {}
  double random() override { return random_.next(); }
  void seedRandom(double) override {}
  double secondsSinceMidnight() override { return 1; }
  [[noreturn]] void endProgram() override { std::abort(); }
  // Starts the random numbers over, so that repeated work is the same work.
  void restartRandom() { random_.seed(42); }
  long pages = 0;

 private:
  RandomSource random_{42};
};

template <class WindowType>
struct BenchWindow {
  QuietPlatform platform;
  std::unique_ptr<WindowType> window = std::make_unique<WindowType>(platform);
  WindowType& w = *window;
  BenchWindow() { w.userActivate(); }
};

}  // namespace quill
