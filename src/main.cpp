// Quillion: complete magic squares of prime order, printed, puzzled and practised.
#include <QApplication>
#include <QIcon>
#include <memory>

#include "window/main_window.h"
#include "platform/qt/form_view.h"
#include "platform/qt/qt_platform.h"

int main(int argc, char* argv[]) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("Quillion");
  QApplication::setDesktopFileName("org.quillion.Quillion");
  QIcon icon;
  for (const char* size : {"32", "64", "256"}) icon.addFile(QString(":/icons/quillion-%1.png").arg(size));
  QApplication::setWindowIcon(icon);

  quill::qt::QtPlatform platform;
  auto window = std::make_unique<quill::MainWindow>(platform);
  quill::qt::FormView view(*window);
  platform.attach(&view);
  view.showAndActivate();
  return QApplication::exec();
}
