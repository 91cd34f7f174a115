// A platform for tests: seeded random numbers, recorded pages and window
// operations, and a scripted callback at every yield.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/form.h"
#include "platform/platform.h"
#include "platform/random_source.h"

namespace quill::testing {

struct PrintedPage {
  std::vector<DrawOp> drawing;
  std::vector<std::string> visibleControls;
};

class FakePlatform : public Platform {
 public:
  // The seed stands in for the time of day the window seeds itself with.
  explicit FakePlatform(std::uint64_t seed = 1) : seed_(seed), random_(seed) {}

  // The form whose surface and controls printed pages are taken from.
  void attach(const Form* form) { form_ = form; }

  void maximiseWindow() override { ++maximiseCount; }
  void printWindow() override;
  // As the spooler does, an end without pages since the last makes no document.
  void endDocument() override {
    if (pages.size() > (documentEnds.empty() ? 0 : documentEnds.back())) documentEnds.push_back(pages.size());
  }
  void refreshWindow() override { ++refreshCount; }
  void choosePrinter() override { ++printerChoices; }
  void yield() override;
  void waitForEvents() override;
  // The scripted values first, in order; then the seeded source.
  double random() override;
  void seedRandom(double secondsSinceMidnight) override;
  double secondsSinceMidnight() override { return static_cast<double>(seed_); }
  // The program ends the test that ends it, and no other.
  [[noreturn]] void endProgram() override { throw std::runtime_error("the program ended"); }

  // Runs at every yield and wait, with the 1-based count of them so far.
  std::function<void(int)> onYield;

  std::deque<double> scriptedRandom;
  int randomCount = 0;

  std::vector<PrintedPage> pages;
  std::vector<std::size_t> documentEnds;  // the page count at each end of a document
  int maximiseCount = 0;
  int refreshCount = 0;
  int printerChoices = 0;
  int yieldCount = 0;
  int seedCount = 0;
  double lastSeed = -1;

 private:
  std::uint64_t seed_;
  RandomSource random_;
  const Form* form_ = nullptr;
};

}  // namespace quill::testing
