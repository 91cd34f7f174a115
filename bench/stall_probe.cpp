// Measures how long the event loop goes unanswered during a run: the run
// turns it only at its yields, so the longest time between two yields is the
// longest stall. Default: 101 by 101 with puzzles and answers, pages to PDF
// files, offscreen; QT_QPA_PLATFORM and CUPS_SERVER choose otherwise.
// Usage: quillion_stall [SIZE]
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "window/main_window.h"
#include "qt/form_view.h"
#include "qt/qt_platform.h"

struct TimedPlatform : quill::qt::QtPlatform {
  QElapsedTimer clock;
  qint64 last = -1, worst = 0;
  void yield() override {
    const qint64 now = clock.nsecsElapsed();
    if (last >= 0) worst = std::max(worst, now - last);
    QtPlatform::yield();
    last = clock.nsecsElapsed();
  }
};

int main(int argc, char** argv) {
  // Offscreen and without a printer unless told otherwise.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (qEnvironmentVariableIsEmpty("CUPS_SERVER")) qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
  QApplication app(argc, argv);
  TimedPlatform platform;
  auto window = std::make_unique<quill::MainWindow>(platform);
  quill::qt::FormView view(*window);
  platform.attach(&view);
  view.showAndActivate();
  quill::MainWindow& w = *window;
  QTimer::singleShot(100, [&] {
    w.Text2.userEdit(argc > 1 ? argv[1] : "101");
    w.Text2.userKeyUp('1');
    platform.clock.start();
    w.Command1.userClick();
    const qint64 end = platform.clock.nsecsElapsed();
    platform.worst = std::max(platform.worst, end - platform.last);
    std::printf("size %s: run %.0f ms, longest time between event-loop turns %.1f ms\n", w.Text2.text().c_str(),
                static_cast<double>(end) / 1e6, static_cast<double>(platform.worst) / 1e6);
    std::fflush(stdout);
    std::_Exit(0);
  });
  return QApplication::exec();
}
