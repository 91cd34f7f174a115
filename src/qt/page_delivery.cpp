// Delivering a document: CUPS for the printer, checked writes for files.
#include "qt/page_delivery.h"

#include <cups/cups.h>
#include <cups/pwg.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QPdfWriter>
#include <QFileInfo>
#include <QPrintEngine>
#include <QRandomGenerator>
#include <QTemporaryFile>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>

namespace quill::qt {

void reportLine(const QString& line) {
  std::fprintf(stderr, "Quillion: %s\n", line.toLocal8Bit().constData());
  std::fflush(stderr);
}

QString pagesText(std::size_t pages) { return pages == 1 ? QString("1 page") : QString("%1 pages").arg(pages); }

namespace {

// The first of a sequence of file names that `free` accepts, remembered as
// handed out for the rest of this run of the program: a name whose file
// failed is not used again, nor one another document took.
template <typename Name, typename Free>
QString handOutName(Name nameNumbered, Free free) {
  static std::mutex mutex;
  static std::set<QString> handedOut;
  const std::lock_guard lock(mutex);
  for (int sequence = 1;; ++sequence) {
    const QString path = nameNumbered(sequence);
    if (handedOut.count(path) == 0 && free(sequence, path)) {
      handedOut.insert(path);
      return path;
    }
  }
}

// quillion-YYYYMMDD-HHMMSS-NNN.pdf, the first number not taken on the disk.
QString freshPdfPath(const QString& folder) {
  const QDir dir(folder);
  const QString stamp = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
  return handOutName(
      [&](int sequence) {
        return dir.filePath(QString("quillion-%1-%2.pdf").arg(stamp).arg(sequence, 3, 10, QChar('0')));
      },
      [](int, const QString& path) { return !QFile::exists(path); });
}

// All of `size` bytes to `fd`, however the kernel splits the writes; false
// (with errno) at the first that fails or writes nothing.
bool writeAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(fd, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      if (written == 0) errno = EIO;
      return false;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

// Gives the file its final name, replacing another's only when asked.
bool takeName(const QByteArray& temporary, const QByteArray& final, bool replace) {
  if (replace) return ::rename(temporary.constData(), final.constData()) == 0;
  if (::renameat2(AT_FDCWD, temporary.constData(), AT_FDCWD, final.constData(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A filesystem without that kind of rename: a hard link cannot replace a file either.
  if (::link(temporary.constData(), final.constData()) != 0) return false;
  ::unlink(temporary.constData());
  return true;
}

// The hidden file being written, kept where a signal handler may read it.
char beingWritten[4096];
std::atomic<bool> writing{false};

}  // namespace

QByteArray folderOf(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

namespace {
QString errnoText() { return QString::fromLocal8Bit(std::strerror(errno)); }
}  // namespace

CheckedFile::CheckedFile(QByteArray path) : path_(std::move(path)) {
  struct stat existing {};
  if (path_ == "-") {
    direct_ = true;
    fd_ = STDOUT_FILENO;
  } else if (::stat(path_.constData(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
    // A device or a pipe is no file to replace: it takes the pages itself.
    direct_ = true;
    fd_ = ::open(path_.constData(), O_WRONLY | O_CLOEXEC);
  } else {
    // Created with the permissions the user's umask gives every new file (a
    // worksheet is often shared), under a name no other file has.
    const QByteArray folder = folderOf(path_);
    for (int attempt = 0; attempt < 100 && fd_ < 0; ++attempt) {
      const quint32 number = QRandomGenerator::global()->generate() % 1000000000U;
      temporary_ = folder + QString("/.quillion-%1.part").arg(number, 9, 10, QChar('0')).toLatin1();
      fd_ = ::open(temporary_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd_ < 0 && errno != EEXIST) break;
    }
    if (fd_ >= 0 && static_cast<std::size_t>(temporary_.size()) < sizeof beingWritten) {
      std::memcpy(beingWritten, temporary_.constData(), static_cast<std::size_t>(temporary_.size()) + 1);
      writing = true;
    }
  }
  if (fd_ < 0) {
    failure_ = errnoText();
    return;
  }
  QIODevice::open(QIODevice::WriteOnly);
}

CheckedFile::~CheckedFile() {
  if (fd_ >= 0 && fd_ != STDOUT_FILENO) ::close(fd_);
  if (direct_ || temporary_.isEmpty() || fd_ == -1) return;  // no hidden file was made
  if (!committed_) ::unlink(temporary_.constData());
  writing = false;
}

QString CheckedFile::describe(const QString& reason) const {
  return path_ == "-" ? QString("cannot write to standard output (%1)").arg(reason)
                      : QString("cannot write %1 (%2)").arg(QFile::decodeName(path_), reason);
}

qint64 CheckedFile::writeData(const char* data, qint64 size) {
  if (fd_ < 0 || failed()) return -1;
  // The PDF writer hands over many small pieces: gathered, one write call a block.
  pending_.append(data, size);
  written_ += size;
  return pending_.size() < kBlock || flushPending() ? size : -1;
}

bool CheckedFile::flushPending() {
  if (pending_.isEmpty()) return true;
  if (!writeAll(fd_, pending_.constData(), static_cast<std::size_t>(pending_.size()))) {
    failure_ = errnoText();
    return false;
  }
  pending_.clear();
  return true;
}

bool CheckedFile::commit(bool replace, QString& error) {
  const auto failed = [&](const QString& reason) {
    error = describe(reason);
    return false;
  };
  if (fd_ >= 0) flushPending();
  if (fd_ < 0 || !failure_.isEmpty()) return failed(failure_.isEmpty() ? QString("not opened") : failure_);
  if (direct_) {
    // A pipe or a device keeps no size to check; every write was.
    if (fd_ == STDOUT_FILENO) return true;
    const int fd = std::exchange(fd_, -2);
    return ::close(fd) == 0 || failed(errnoText());
  }
  struct stat disk {};
  if (::fsync(fd_) != 0 || ::fstat(fd_, &disk) != 0) return failed(errnoText());
  if (disk.st_size != written_) return failed(QString("%1 of %2 bytes reached the disk").arg(disk.st_size).arg(written_));
  const int fd = std::exchange(fd_, -2);  // closed here; the destructor only clears the mark
  if (::close(fd) != 0) {
    ::unlink(temporary_.constData());
    return failed(errnoText());
  }
  if (!takeName(temporary_, path_, replace)) {
    const QString reason = errnoText();
    ::unlink(temporary_.constData());
    return failed(reason);
  }
  committed_ = true;
  // The new name itself on the disk too.
  const int folder = ::open(folderOf(path_).constData(), O_RDONLY | O_DIRECTORY);
  if (folder >= 0) {
    ::fsync(folder);
    ::close(folder);
  }
  return true;
}

namespace {

// Every document: landscape on the paper given, and named as Quillion's.
void prepareWriter(QPdfWriter& writer, const QPageSize& paper) {
  writer.setPageSize(paper);
  writer.setPageOrientation(QPageLayout::Landscape);
  writer.setTitle("Quillion");
  writer.setCreator("Quillion");
}

// Whether the print service answers at all (CUPS: the local socket or the
// server CUPS_SERVER names).
bool printServiceAnswers() {
  http_t* http = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, 5000, nullptr);
  if (http == nullptr) return false;
  httpClose(http);
  return true;
}

// A desktop notification naming the file, when a session bus and a
// notification service are there; nothing otherwise (and no bus is started).
void notifyFile(const QString& path, std::size_t pages) {
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  const QString service = "org.freedesktop.Notifications";
  if (!bus.isConnected() || bus.interface() == nullptr || !bus.interface()->isServiceRegistered(service)) return;
  QDBusMessage call = QDBusMessage::createMethodCall(service, "/org/freedesktop/Notifications", service, "Notify");
  call << QString("Quillion") << 0U << QString("document-save") << QString("Quillion: pages saved")
       << QString("%1 saved as %2").arg(pagesText(pages), path) << QStringList() << QVariantMap() << -1;
  bus.call(call, QDBus::NoBlock);
}

bool writeToFolder(const QString& folder, const std::vector<PageSnapshot>& pages, const QPageSize& paper, QString& path,
                   QString& error) {
  if (!QDir().mkpath(folder)) {
    error = QString("cannot create %1").arg(folder);
    return false;
  }
  path = freshPdfPath(folder);
  return writePdfFile(path, pages, paper, error);
}

// Sends the document to the printer as a PDF job, with the copies and sides
// chosen; false with the reason when the printer cannot take it.
bool printDocument(const Printer& printer, const Destinations& where, const std::vector<PageSnapshot>& pages,
                   QString& error) {
  QTemporaryFile job(QDir::temp().filePath("quillion-job-XXXXXX.pdf"));
  QBuffer document;
  if (!document.open(QIODevice::WriteOnly) || !paintDocument(document, pages, printer.paper) || !job.open() ||
      !writeAll(job.handle(), document.data().constData(), static_cast<std::size_t>(document.data().size()))) {
    error = QString("the job could not be written (%1)").arg(QString::fromLocal8Bit(std::strerror(errno)));
    return false;
  }
  job.close();
  const QByteArray name = printer.name.toLocal8Bit();
  const QByteArray file = QFile::encodeName(job.fileName());
  int optionCount = 0;
  cups_option_t* options = nullptr;
  for (qsizetype i = 0; i + 1 < where.cupsOptions.size(); i += 2) {
    optionCount = cupsAddOption(where.cupsOptions[i].toUtf8().constData(), where.cupsOptions[i + 1].toUtf8().constData(),
                                optionCount, &options);
  }
  if (where.copies > 1) {
    optionCount = cupsAddOption("copies", QByteArray::number(where.copies), optionCount, &options);
    // Copies of a worksheet come as whole sets of its pages.
    optionCount =
        cupsAddOption("multiple-document-handling", "separate-documents-collated-copies", optionCount, &options);
  }
  if (!where.sides.isEmpty()) optionCount = cupsAddOption("sides", where.sides.toLatin1(), optionCount, &options);
  const int jobId =
      cupsPrintFile2(CUPS_HTTP_DEFAULT, name.constData(), file.constData(), "Quillion", optionCount, options);
  cupsFreeOptions(optionCount, options);
  if (jobId == 0) {
    error = QString("%1 did not take the job (%2)").arg(printer.name, QString::fromLocal8Bit(cupsLastErrorString()));
    return false;
  }
  return true;
}

}  // namespace

void removeFileBeingWritten() {
  if (writing) ::unlink(beingWritten);
}

StreamedPdf::StreamedPdf(const QByteArray& path, const QPageSize& paper) : path_(path), file_(path), writer_(&file_) {
  prepareWriter(writer_, paper);
}

void StreamedPdf::addPage(const PageSnapshot& page) {
  if (pages_ == 0 ? !painter_.begin(&writer_) : !writer_.newPage()) return;
  renderPage(painter_, page, QSizeF(writer_.width(), writer_.height()));
  ++pages_;
}

bool StreamedPdf::finish(QString& error, bool replace) {
  if (pages_ == 0 || !painter_.end()) {
    error = file_.failed() ? file_.failureLine()
                           : QString("cannot write %1 (the pages could not be drawn)").arg(QFile::decodeName(path_));
    return false;
  }
  return file_.commit(replace, error);
}

Destinations defaultDestinations() {
  const QString user = qEnvironmentVariable("USER", "user");
  return {.pagesFolder = QDir::home().filePath("Quillion/pages"),
          .spareFolder = QDir::temp().filePath("quillion-pages-" + user)};
}

std::optional<Printer> defaultPrinter() { return findPrinter({}); }

std::optional<Printer> findPrinter(const QString& name) {
  const QByteArray queue = name.toLocal8Bit();
  cups_dest_t* dest = cupsGetNamedDest(CUPS_HTTP_DEFAULT, name.isEmpty() ? nullptr : queue.constData(), nullptr);
  if (dest == nullptr) return std::nullopt;
  Printer printer{QString::fromLocal8Bit(dest->name), localePaper()};
  // CUPS measures media in hundredths of a millimetre.
  const auto paper = [](int width, int length, const char* label) {
    return QPageSize(QSizeF(width / 100.0, length / 100.0), QPageSize::Millimeter, QString::fromLocal8Bit(label),
                     QPageSize::FuzzyMatch);
  };
  // The queue's own default ("lpadmin -o media=..."), else what the printer says.
  const char* media = cupsGetOption("media", dest->num_options, dest->options);
  pwg_media_t* named = media == nullptr ? nullptr : pwgMediaForPWG(media);
  if (named == nullptr && media != nullptr) named = pwgMediaForPPD(media);  // "Letter", "A4"
  if (named == nullptr && media != nullptr) named = pwgMediaForLegacy(media);
  if (named != nullptr) {
    printer.paper = paper(named->width, named->length, named->pwg);
  } else if (cups_dinfo_t* info = cupsCopyDestInfo(CUPS_HTTP_DEFAULT, dest)) {
    cups_size_t size;
    if (cupsGetDestMediaDefault(CUPS_HTTP_DEFAULT, dest, info, 0, &size) != 0 && size.width > 0 && size.length > 0) {
      printer.paper = paper(size.width, size.length, size.media);
    }
    cupsFreeDestInfo(info);
  }
  cupsFreeDests(1, dest);
  return printer;
}

QString nextChosenName(const QString& chosen) {
  const QFileInfo file(chosen);
  const QString suffix = file.suffix().isEmpty() ? QString() : "." + file.suffix();
  const QString stem = file.fileName().chopped(suffix.size());
  return handOutName(
      [&](int sequence) {
        return sequence == 1 ? chosen : file.dir().filePath(QString("%1-%2%3").arg(stem).arg(sequence).arg(suffix));
      },
      [](int sequence, const QString& path) { return sequence == 1 || !QFile::exists(path); });
}

Destinations chosenDestinations(const QPrinter& printer, Destinations base) {
  base.paper = printer.pageLayout().pageSize();
  if (printer.outputFormat() == QPrinter::PdfFormat) {
    base.usePrinter = false;
    base.chosenFile = printer.outputFileName();
    base.printerName.clear();
    return base;
  }
  base.usePrinter = true;
  base.chosenFile.clear();
  base.printerName = printer.printerName();
  base.copies = printer.copyCount();
  // Qt's print dialog leaves its CUPS options (pages, page set, pages per
  // sheet, the printer's own settings) in this property of the printer,
  // for the print service to apply to the job.
  constexpr auto kCupsOptions = QPrintEngine::PrintEnginePropertyKey(0xfe00);
  base.cupsOptions = printer.printEngine()->property(kCupsOptions).toStringList();
  if (printer.pageOrder() == QPrinter::LastPageFirst) base.cupsOptions << "outputorder" << "reverse";
  // "Pages from ... to ...", when the dialog leaves it to the program.
  if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
    base.cupsOptions << "page-ranges" << QString("%1-%2").arg(printer.fromPage()).arg(printer.toPage());
  }
  switch (printer.duplex()) {
    case QPrinter::DuplexNone:
      base.sides = "one-sided";
      break;
    case QPrinter::DuplexLongSide:
      base.sides = "two-sided-long-edge";
      break;
    case QPrinter::DuplexShortSide:
      base.sides = "two-sided-short-edge";
      break;
    case QPrinter::DuplexAuto:
      base.sides.clear();
      break;
  }
  return base;
}

QPageSize localePaper() {
  return QPageSize(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                     : QPageSize::A4);
}

bool paintDocument(QIODevice& device, const std::vector<PageSnapshot>& pages, const QPageSize& paper) {
  QPdfWriter writer(&device);
  prepareWriter(writer, paper);
  QPainter painter;
  if (!painter.begin(&writer)) return false;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) writer.newPage();
    renderPage(painter, pages[i], QSizeF(writer.width(), writer.height()));
  }
  return painter.end();
}

bool writePdfFile(const QString& path, const std::vector<PageSnapshot>& pages, const QPageSize& paper, QString& error,
                  bool replace) {
  StreamedPdf document(QFile::encodeName(path), paper);
  for (const PageSnapshot& page : pages) document.addPage(page);
  return document.finish(error, replace);
}

Delivery deliverDocument(const std::vector<PageSnapshot>& pages, const Destinations& where) {
  const QPageSize filePaper = where.paper.value_or(localePaper());
  QString failure = "printing to files";
  if (!where.chosenFile.isEmpty()) {
    const QString chosen = nextChosenName(where.chosenFile);
    // Only the chosen name itself replaces a file: the print dialog asked.
    if (writePdfFile(chosen, pages, filePaper, failure, chosen == where.chosenFile)) {
      notifyFile(chosen, pages.size());
      return {chosen, true};
    }
  } else if (where.usePrinter) {
    if (std::optional<Printer> printer = findPrinter(where.printerName)) {
      if (where.paper) printer->paper = *where.paper;
      if (printDocument(*printer, where, pages, failure)) return {printer->name, false};
    } else if (!printServiceAnswers()) {
      // A print service that is down is no printer setting: say which it is.
      failure = "the print service is not running";
    } else {
      failure = where.printerName.isEmpty() ? QString("no default printer")
                                            : QString("no printer %1").arg(where.printerName);
      const ipp_status_t why = cupsLastError();
      if (why > IPP_STATUS_OK_EVENTS_COMPLETE && why != IPP_STATUS_ERROR_NOT_FOUND) {
        failure += QString(" (%1)").arg(QString::fromLocal8Bit(cupsLastErrorString()));
      }
    }
  }
  QString path;
  QString error;
  for (const QString& folder : {where.pagesFolder, where.spareFolder}) {
    if (writeToFolder(folder, pages, filePaper, path, error)) {
      reportLine(QString("%1; %2 saved as %3").arg(failure, pagesText(pages.size()), path));
      notifyFile(path, pages.size());
      return {path, true};
    }
    failure += "; " + error;
  }
  reportLine(QString("%1; %2 could not be kept").arg(failure, pagesText(pages.size())));
  return {};
}

}  // namespace quill::qt
