// Where a finished document of pages goes: the printer (the default one, or
// the one chosen) or the PDF file chosen, then a PDF file in the pages folder,
// then one in a spare folder, in this order. Each step down is one line on
// standard error; a file is announced by a desktop notification when a
// notification service runs.
#pragma once

#include <QIODevice>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "qt/page_snapshot.h"

namespace quill::qt {

struct Destinations {
  QString pagesFolder;  // ~/Quillion/pages
  QString spareFolder;  // in the temporary directory, for when the first cannot be written
  bool usePrinter = true;
  QString printerName{};             // a CUPS queue; empty: the default printer
  std::optional<QPageSize> paper{};  // none: the printer's, and the locale's for files
  int copies = 1;
  QString sides{};  // CUPS "sides" (one-sided, two-sided-long-edge, ...); empty: the queue's
  // Whatever else was chosen in the print dialog for the printer, as CUPS
  // options, name then value: pages, page set, pages per sheet, reverse
  // order, the printer's own settings.
  QStringList cupsOptions{};
  // A PDF file chosen in the window instead of a printer: the first document
  // takes its name (the print dialog asked before replacing a file), each
  // later one the next free name beside it (worksheet-2.pdf, ...).
  QString chosenFile{};
  // One file that every document is written to instead, as the bytes of
  // its name were given ("-": standard output): a regular file is replaced,
  // a device or a pipe written into; nothing else is tried when it fails.
  QByteArray outputFile{};
};
Destinations defaultDestinations();

// The system's default printer (CUPS: lpoptions, PRINTER, LPDEST, the server's
// default), with the paper it prints on by default.
struct Printer {
  QString name;
  QPageSize paper;
};
std::optional<Printer> defaultPrinter();
// A queue by its name; the default printer when the name is empty.
std::optional<Printer> findPrinter(const QString& name);

// Where the choices of a print dialog send the documents: its printer with
// the paper, copies and sides, or its PDF file; the folders stay as in `base`.
Destinations chosenDestinations(const QPrinter& printer, Destinations base);

// The name the next document into a chosen file takes: the file's own name
// the first time in this run of the program, and then the first of
// name-2.pdf, name-3.pdf, ... neither on the disk nor handed out before.
QString nextChosenName(const QString& chosen);

// Paper for files: Letter where the locale measures in inches, else A4.
QPageSize localePaper();

// Writes the pages as one landscape PDF document on `paper` into `device`
// (a file being written); false when painting failed.
bool paintDocument(QIODevice& device, const std::vector<PageSnapshot>& pages, const QPageSize& paper);

// Writes the document under `path` only when it was written completely;
// otherwise no file appears and `error` says why. A file already there is
// replaced only when asked.
bool writePdfFile(const QString& path, const std::vector<PageSnapshot>& pages, const QPageSize& paper, QString& error,
                  bool replace = false);

// The folder a file's name lies in, as bytes: what comes before its last slash.
QByteArray folderOf(const QByteArray& path);

// A file written with every write checked. A new or regular file is written
// under a hidden name beside its final one and takes that name only when
// commit() finds it whole on the disk (it is removed when it does not);
// standard output ("-"), a device or a pipe is written into directly.
class CheckedFile : public QIODevice {
 public:
  explicit CheckedFile(QByteArray path);
  ~CheckedFile() override;
  CheckedFile(const CheckedFile&) = delete;
  CheckedFile& operator=(const CheckedFile&) = delete;
  bool commit(bool replace, QString& error);
  bool isSequential() const override { return true; }
  // Whether a write has failed already, and the one line that says so.
  bool failed() const { return !failure_.isEmpty(); }
  QString failureLine() const { return describe(failure_); }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char* data, qint64 size) override;

 private:
  static constexpr qsizetype kBlock = 1 << 16;
  bool flushPending();
  QString describe(const QString& reason) const;

  QByteArray path_;
  bool direct_ = false;  // written into as it is, not under a hidden name
  QByteArray pending_;
  QByteArray temporary_;
  int fd_ = -1;
  qint64 written_ = 0;
  QString failure_;
  bool committed_ = false;
};

// A document painted page by page into its file as the pages come, so that
// memory stays flat however long it grows.
class StreamedPdf {
 public:
  StreamedPdf(const QByteArray& path, const QPageSize& paper);
  void addPage(const PageSnapshot& page);
  // A write has failed: nothing more can reach the file.
  bool failed() const { return file_.failed(); }
  QString failureLine() const { return file_.failureLine(); }
  // Ends the document and gives the file its name, replacing what was there only when asked.
  bool finish(QString& error, bool replace = true);

 private:
  QByteArray path_;
  CheckedFile file_;
  QPdfWriter writer_;
  QPainter painter_;
  int pages_ = 0;
};

// One line on standard error: where pages went, or why they could not go.
void reportLine(const QString& line);
// "1 page", "2 pages".
QString pagesText(std::size_t pages);

// Removes the hidden file a write has under way, if any: for an interrupted
// batch, from a signal handler (it only unlinks a name kept aside).
void removeFileBeingWritten();

// Where a document went: the printer's name or the file's path; empty when
// every destination failed.
struct Delivery {
  QString place;
  bool toFile = false;
};
Delivery deliverDocument(const std::vector<PageSnapshot>& pages, const Destinations& where);

}  // namespace quill::qt
