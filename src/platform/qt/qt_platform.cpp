// Yield and wait are the event loop; End program leaves the process at once.
#include "platform/qt/qt_platform.h"

#include <QCoreApplication>
#include <QTime>
#include <bit>
#include <cstdio>
#include <cstdlib>

#include "platform/qt/form_view.h"
#include "platform/qt/page_printer.h"

namespace quill::qt {

void QtPlatform::maximiseWindow() {
  if (view_ != nullptr) view_->maximise();
}

void QtPlatform::printWindow() {
  if (view_ != nullptr) printPage(*view_);
}

void QtPlatform::refreshWindow() {
  if (view_ == nullptr) return;
  view_->show();
  view_->repaint();
}

void QtPlatform::yield() { QCoreApplication::processEvents(QEventLoop::AllEvents); }

void QtPlatform::waitForEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

double QtPlatform::random() { return random_.next(); }

void QtPlatform::seedRandom(double secondsSinceMidnight) {
  random_.seed(std::bit_cast<std::uint64_t>(secondsSinceMidnight));
}

double QtPlatform::secondsSinceMidnight() {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void QtPlatform::endProgram() {
  // Every printed page is a finished job by now and nothing else is kept,
  // so the process may end here, even from deep inside a yielding loop.
  std::fflush(nullptr);
  std::_Exit(0);
}

}  // namespace quill::qt
