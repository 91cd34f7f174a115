// Where pages go: into a file chosen in the print dialog, each run under a
// name of its own; when the printer cannot take them, every page of a
// document ends up in one complete PDF file, in the pages folder or, when
// that cannot be written, in the spare folder; never an empty or cut-off file.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QTemporaryDir>
#include <sys/mount.h>
#include <unistd.h>

#include "qt/form_view.h"
#include "qt/page_spooler.h"
#include "qt/qt_platform.h"
#include "window/main_window.h"

namespace quill::qt {
namespace {

// A page with a drawn grid of numbers, about as much as a page of squares.
PageSnapshot pageOfNumbers(int seed) {
  PageSnapshot page;
  for (int i = 0; i < 625; ++i) {
    const auto x = static_cast<float>(8 + (i % 25) * 24), y = static_cast<float>(8 + (i / 25) * 18);
    page.drawing.push_back({DrawOp::Kind::Box, x, y, x + 24, y + 18, 15, {}});
    page.drawing.push_back({DrawOp::Kind::Text, x + 2, y + 3, 0, 0, 0, std::to_string(seed * 1000 + i)});
  }
  return page;
}

// How many pages each file of a folder holds, by name (0: not a whole PDF).
std::vector<int> pdfPages(const QString& folder) {
  std::vector<int> found;
  for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Name)) {
    QProcess info;
    info.start("pdfinfo", {QDir(folder).filePath(name)});
    info.waitForFinished();
    const QString out = QString::fromLocal8Bit(info.readAllStandardOutput());
    const auto at = out.indexOf("Pages:");
    found.push_back(info.exitCode() == 0 && at >= 0 ? out.mid(at + 6).section('\n', 0, 0).trimmed().toInt() : 0);
  }
  return found;
}

class Printing : public ::testing::Test {
 protected:
  void SetUp() override {
    if (QStandardPaths::findExecutable("pdfinfo").isEmpty()) GTEST_SKIP() << "pdfinfo is not installed";
    where = {.pagesFolder = folder.filePath("pages"), .spareFolder = folder.filePath("spare"), .usePrinter = false};
  }
  // Two documents, of 3 pages and of 48 pages, through a spooler; how many went nowhere.
  int printTwoDocuments() {
    PageSpooler spooler(where);
    for (int i = 0; i < 3; ++i) spooler.submit(pageOfNumbers(i));
    spooler.endDocument();
    for (int i = 0; i < 48; ++i) spooler.submit(pageOfNumbers(i));
    EXPECT_EQ(spooler.finish(std::chrono::minutes(1)), 0);
    EXPECT_EQ(spooler.deliveredCount(), 2);
    return spooler.lostCount();
  }

  QTemporaryDir folder;
  Destinations where;
};

// Without a printer each document is one complete file in the pages folder;
// when that folder cannot be made (a file stands where it should be), in
// the spare folder.
TEST_F(Printing, WithoutAPrinterEachDocumentIsOneCompleteFile) {
  where.usePrinter = true;
  qputenv("CUPS_SERVER", folder.filePath("no-cups.sock").toLocal8Bit());
  EXPECT_EQ(printTwoDocuments(), 0);
  EXPECT_EQ(pdfPages(where.pagesFolder), (std::vector<int>{3, 48}));
  EXPECT_FALSE(QDir(where.spareFolder).exists());
  where.pagesFolder = folder.filePath("blocked");
  QFile blocker(where.pagesFolder);
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  blocker.close();
  EXPECT_EQ(printTwoDocuments(), 0);
  qunsetenv("CUPS_SERVER");
  EXPECT_EQ(pdfPages(where.spareFolder), (std::vector<int>{3, 48}));
}

// The pages folder and the spare folder on small filesystems that fill up
// part-way through the large document: that document could not be kept, and
// nothing of it stays behind, under its final name or any other.
TEST_F(Printing, FullDisksLeaveNoCutOffFile) {
  std::vector<QByteArray> mounted;
  for (const QString& small : {where.pagesFolder, where.spareFolder}) {
    QDir().mkpath(small);
    mounted.push_back(QFile::encodeName(small));
    if (geteuid() != 0 || mount("tmpfs", mounted.back().constData(), "tmpfs", 0, "size=160k") != 0) {
      for (const QByteArray& path : mounted) umount(path.constData());
      GTEST_SKIP() << "cannot mount a small filesystem here";
    }
  }
  EXPECT_EQ(printTwoDocuments(), 1);
  const std::vector<int> kept = pdfPages(where.pagesFolder);
  const QStringList spare = QDir(where.spareFolder).entryList(QDir::Files | QDir::Hidden);
  const QStringList hidden = QDir(where.pagesFolder).entryList({".*"}, QDir::Files | QDir::Hidden);
  for (const QByteArray& path : mounted) umount(path.constData());
  EXPECT_EQ(kept, (std::vector<int>{3}));
  EXPECT_TRUE(spare.isEmpty() && hidden.isEmpty()) << spare.join(" ").toStdString() << hidden.join(" ").toStdString();
}

// "Printer..." with Qt's own dialog, filled in as a person would: "Print to
// File (PDF)" and a file name. Each run after it is one document, the first
// under that name and the next ones beside it, never over one another;
// Cancel keeps the choice; a chosen file that cannot be written takes the
// pages folder's road.
TEST_F(Printing, AFileChosenInThePrintDialogTakesEveryRunUnderANameOfItsOwn) {
  qputenv("CUPS_SERVER", folder.filePath("no-cups.sock").toLocal8Bit());
  where.usePrinter = true;
  QtPlatform platform(where);
  MainWindow window(platform);
  FormView view(window);
  platform.attach(&view);
  view.showAndActivate();
  const auto choose = [&](const QString& file, bool accept) {
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      auto* printers = dialog->findChild<QComboBox*>("printers");
      ASSERT_NE(printers, nullptr);
      printers->setCurrentIndex(printers->count() - 1);  // "Print to File (PDF)", last as always
      dialog->findChild<QLineEdit*>("filename")->setText(file);
      accept ? dialog->accept() : dialog->reject();
    });
    view.actionFor("printer")->trigger();
  };
  const auto run = [&] {
    platform.printWindow();
    platform.printWindow();
    platform.endDocument();
  };
  const QString worksheets = folder.filePath("worksheets");
  QDir().mkpath(worksheets);
  choose(QDir(worksheets).filePath("worksheet.pdf"), true);
  run();
  run();
  choose(QDir(worksheets).filePath("cancelled.pdf"), false);
  run();
  choose(QDir(worksheets).filePath("worksheet.pdf"), true);  // chosen again: still a fresh name
  run();
  choose(folder.filePath("no/such/folder/lost.pdf"), true);
  run();
  EXPECT_EQ(platform.finishPrinting(std::chrono::minutes(1)), 0);
  qunsetenv("CUPS_SERVER");
  EXPECT_EQ(QDir(worksheets).entryList(QDir::Files | QDir::Hidden, QDir::Name),
            (QStringList{"worksheet-2.pdf", "worksheet-3.pdf", "worksheet-4.pdf", "worksheet.pdf"}));
  EXPECT_EQ(pdfPages(worksheets), (std::vector<int>{2, 2, 2, 2}));
  EXPECT_EQ(pdfPages(where.pagesFolder), (std::vector<int>{2}));
}

}  // namespace
}  // namespace quill::qt

