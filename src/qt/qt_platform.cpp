// Yield and wait are the event loop; End program leaves the process at once.
#include "qt/qt_platform.h"

#include <QCoreApplication>
#include <QTime>
#include <bit>
#include <cstdio>
#include <cstdlib>

#include "qt/form_view.h"
#include "qt/page_snapshot.h"
#include "qt/print_choice.h"

namespace quill::qt {

QtPlatform::QtPlatform(Destinations where, std::optional<std::uint64_t> seed)
    : seed_(seed), spooler_(std::move(where)) {}

QtPlatform::~QtPlatform() = default;

void QtPlatform::maximiseWindow() {
  if (view_ != nullptr && showsWindow) view_->maximise();
}

void QtPlatform::printWindow() {
  if (view_ != nullptr) spooler_.submit(takeSnapshot(*view_));
  if (onPagePrinted) onPagePrinted();
}

void QtPlatform::endDocument() {
  if (!oneDocument) spooler_.endDocument();
}

bool QtPlatform::printingBehind() { return !spooler_.waitForRoom(std::chrono::milliseconds(10)); }

void QtPlatform::choosePrinter() {
  if (view_ == nullptr || !showsWindow) return;
  if (!printChoice_) printChoice_ = std::make_unique<PrintChoice>();
  if (std::optional<Destinations> chosen = printChoice_->ask(view_, spooler_.destinations())) {
    spooler_.setDestinations(std::move(*chosen));
  }
}

void QtPlatform::refreshWindow() {
  if (view_ == nullptr || !showsWindow) return;
  view_->show();
  view_->repaint();
}

void QtPlatform::yield() {
  if (!showsWindow) {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastEvents_ < std::chrono::milliseconds(100)) return;
    lastEvents_ = now;
  }
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtPlatform::waitForEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

double QtPlatform::random() { return random_.next(); }

void QtPlatform::seedRandom(double secondsSinceMidnight) {
  random_.seed(seed_.value_or(std::bit_cast<std::uint64_t>(secondsSinceMidnight)));
}

int QtPlatform::finishPrinting(std::chrono::milliseconds limit) {
  if (const int left = spooler_.finish(limit); left > 0) {
    giveUpDelivering(left);
    std::_Exit(1);
  }
  return spooler_.lostCount();
}

void QtPlatform::giveUpDelivering(int left) {
  removeFileBeingWritten();
  const QString delivered = spooler_.whereDelivered();
  reportLine(QString("%1 not kept: they were still being delivered when the program ended%2")
                 .arg(pagesText(static_cast<std::size_t>(left)), delivered.isEmpty() ? "" : "; " + delivered));
  std::fflush(nullptr);
}

double QtPlatform::secondsSinceMidnight() {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void QtPlatform::endProgram() {
  // The window goes at once; the pages already handed over are delivered
  // (the spooler is never far behind, so this takes a second or two unless
  // a printer hangs), and then the process ends here, even from deep inside
  // a yielding loop.
  // The hide reaches the screen at once; no user input is taken any more.
  if (view_ != nullptr) view_->hide();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  if (const int left = spooler_.finish(std::chrono::seconds(5)); left > 0) giveUpDelivering(left);
  std::fflush(nullptr);
  std::_Exit(0);
}

}  // namespace quill::qt
