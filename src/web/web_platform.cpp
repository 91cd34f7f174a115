// Yields that give the browser its turn only every few milliseconds: a turn
// costs at least a task's round trip, and a run yields thousands of times.
#include "web/web_platform.h"

#include <cstring>
#include <ctime>

#include "web/page_bridge.h"
#include "web/web_view.h"

namespace quill::web {

namespace {
// Long enough that a run costs what it costs natively, short enough that the
// page answers within a frame.
constexpr double kSliceMs = 8;
// About 800 pages of 101 by 101 squares, or 1,800 of 5 by 5: a print view
// the browser lays out in seconds.
constexpr std::size_t kMostBytesHeld = std::size_t{64} << 20;
}  // namespace

void WebPlatform::printWindow() {
  if (view_ != nullptr) bytesHeld_ += view_->printPage();
}

bool WebPlatform::printingBehind() {
  if (bytesHeld_ < kMostBytesHeld) return false;
  view_->paint();
  page_pause(50);
  lastTurn_ = page_milliseconds();
  return true;
}

void WebPlatform::endDocument() { page_end_document(); }

void WebPlatform::refreshWindow() {
  if (view_ != nullptr) view_->paint();
}

void WebPlatform::yield() {
  if (view_ == nullptr) return;
  view_->handleEvents();
  if (page_milliseconds() - lastTurn_ < kSliceMs) return;
  view_->paint();
  page_sleep(0);
  lastTurn_ = page_milliseconds();
  view_->handleEvents();
}

void WebPlatform::waitForEvents() {
  if (view_ == nullptr) return;
  view_->paint();
  // Waiting for the user means no run is under way: what it printed goes
  // to the print view as one document (a run printed until stopped ends a
  // document after every square).
  page_show_documents();
  bytesHeld_ = 0;
  view_->describeGrids();
  page_sleep(1);
  lastTurn_ = page_milliseconds();
  view_->handleEvents();
}

void WebPlatform::seedRandom(double secondsSinceMidnight) {
  std::uint64_t bits = 0;
  static_assert(sizeof bits == sizeof secondsSinceMidnight);
  std::memcpy(&bits, &secondsSinceMidnight, sizeof bits);
  random_.seed(seed_.value_or(bits));
}

double WebPlatform::secondsSinceMidnight() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::tm local{};
  localtime_r(&now.tv_sec, &local);
  return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + static_cast<double>(now.tv_nsec) / 1e9;
}

void WebPlatform::endProgram() {
  if (view_ != nullptr) view_->paint();
  page_ended();
  // The page shows what is left of the program; nothing here runs again.
  for (;;) page_sleep(1);
}

}  // namespace quill::web
