// Quillion: complete magic squares of prime order, printed, puzzled and
// practised; with options, a batch of pages made without a window.
#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <memory>

#include "batch/batch.h"
#include "window/main_window.h"
#include "qt/form_view.h"
#include "qt/qt_platform.h"

int main(int argc, char* argv[]) {
  // A batch needs no display: chosen before Qt looks for one.
  const bool batch = quill::batch::asksForBatch(argc, argv);
  if (batch) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Standard error is for what went wrong with the pages, not Qt's chatter.
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES")) qputenv("QT_LOGGING_RULES", "*.warning=false;*.info=false");
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName("Quillion");
  QApplication::setApplicationVersion(QUILLION_VERSION);
  QApplication::setDesktopFileName("org.quillion.Quillion");

  const quill::batch::Request request = quill::batch::parseArguments(argc, argv, batch);
  switch (request.kind) {
    case quill::batch::Request::Kind::Invalid:
      std::fprintf(stderr, "quillion: %s (see --help)\n", request.text.toLocal8Bit().constData());
      return 2;
    case quill::batch::Request::Kind::Help:
    case quill::batch::Request::Kind::Version:
      std::fputs(request.text.toLocal8Bit().constData(), stdout);
      return 0;
    case quill::batch::Request::Kind::Batch:
      return quill::batch::runBatch(request);
    case quill::batch::Request::Kind::Window:
      break;
  }

  QIcon icon;
  for (const char* size : {"32", "64", "256"}) icon.addFile(QString(":/icons/quillion-%1.png").arg(size));
  QApplication::setWindowIcon(icon);
  quill::qt::QtPlatform platform(quill::qt::defaultDestinations(), request.seed);
  auto window = std::make_unique<quill::MainWindow>(platform);
  quill::qt::FormView view(*window);
  platform.attach(&view);
  view.showAndActivate();
  return QApplication::exec();
}
