// Runs the Qt-layer tests inside one QApplication, offscreen unless a display is asked for.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <cstdlib>

int main(int argc, char** argv) {
  // Test discovery runs this binary without the test's environment.
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("QT_LOGGING_RULES", "default.warning=false", 0);
  // Saved pages are announced on the desktop's session bus: never the real one.
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  const QString runtime = QDir::temp().filePath("quillion-qt-tests");
  QDir().mkpath(runtime);
  QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  setenv("XDG_RUNTIME_DIR", runtime.toLocal8Bit().constData(), 0);

  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
