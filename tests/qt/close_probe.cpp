// Probe for the close test: the real window, a page handed to the printer, a
// loop that only yields (as a long run does), and a close of the window from
// inside that loop. Exit code 0 means End program ended it; 3 means the loop
// outlived its window.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "window/main_window.h"
#include "qt/form_view.h"
#include "qt/qt_platform.h"

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  quill::qt::QtPlatform platform;
  auto window = std::make_unique<quill::MainWindow>(platform);
  quill::qt::FormView view(*window);
  platform.attach(&view);
  view.showAndActivate();

  QTimer::singleShot(0, [&] {
    window->surface().fillBox(8, 8, 128, 98, 15);
    window->surface().printText("4711");
    platform.printWindow();
    QTimer::singleShot(200, &view, [&] {
      std::puts("closing inside the loop");
      std::fflush(stdout);
      view.close();
    });
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) platform.yield();
    std::exit(3);
  });
  QApplication::exec();
  return 4;
}
