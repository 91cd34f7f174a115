// The platform operations in a web page: the page draws and prints, and the
// browser's event loop gets its turn at the yields (through Asyncify).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/platform.h"
#include "platform/random_source.h"

namespace quill::web {

class WebView;

class WebPlatform : public Platform {
 public:
  // With a seed, the draws are the same every time instead of following the
  // time of day.
  explicit WebPlatform(std::optional<std::uint64_t> seed) : seed_(seed) {}

  void attach(WebView* view) { view_ = view; }

  void maximiseWindow() override {}
  void printWindow() override;
  void endDocument() override;
  // The page keeps every page printed in memory until the run's end: past a
  // bound a run waits, as for a printer that has fallen behind, so that a
  // run printed until stopped cannot take all the browser's memory.
  bool printingBehind() override;
  // The browser asks where pages go each time they are printed.
  void choosePrinter() override {}
  void refreshWindow() override;
  void yield() override;
  void waitForEvents() override;
  double random() override { return random_.next(); }
  void seedRandom(double secondsSinceMidnight) override;
  double secondsSinceMidnight() override;
  [[noreturn]] void endProgram() override;

 private:
  WebView* view_ = nullptr;
  std::optional<std::uint64_t> seed_;
  RandomSource random_;
  double lastTurn_ = 0;  // when the browser last had its turn, in ms
  std::size_t bytesHeld_ = 0;  // of the pages printed since the page last showed them
};

}  // namespace quill::web
