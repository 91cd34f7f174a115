// Delivering a document: CUPS for the printer, QSaveFile for files.
#include "platform/qt/page_delivery.h"

#include <cups/cups.h>
#include <cups/pwg.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTemporaryFile>
#include <cstdio>

namespace quill::qt {

namespace {

void report(const QString& line) {
  std::fprintf(stderr, "Quillion: %s\n", line.toLocal8Bit().constData());
  std::fflush(stderr);
}

QString pagesText(std::size_t pages) { return pages == 1 ? QString("1 page") : QString("%1 pages").arg(pages); }

// quillion-YYYYMMDD-HHMMSS-NNN.pdf, the first number not yet taken.
QString freshPdfPath(const QString& folder) {
  const QDir dir(folder);
  const QString stamp = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
  for (int sequence = 1;; ++sequence) {
    const QString path = dir.filePath(QString("quillion-%1-%2.pdf").arg(stamp).arg(sequence, 3, 10, QChar('0')));
    if (!QFile::exists(path)) return path;
  }
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

bool writeToFolder(const QString& folder, const std::vector<PageSnapshot>& pages, QString& path, QString& error) {
  if (!QDir().mkpath(folder)) {
    error = QString("cannot create %1").arg(folder);
    return false;
  }
  path = freshPdfPath(folder);
  return writePdfFile(path, pages, localePaper(), error);
}

// Sends the document to the printer as a PDF job; false with the reason when
// the printer cannot take it.
bool printDocument(const Printer& printer, const std::vector<PageSnapshot>& pages, QString& error) {
  QTemporaryFile job(QDir::temp().filePath("quillion-job-XXXXXX.pdf"));
  if (!job.open() || !paintDocument(job, pages, printer.paper) || !job.flush() || job.error() != QFile::NoError) {
    error = "the job could not be written: " + job.errorString();
    return false;
  }
  job.close();
  const QByteArray name = printer.name.toLocal8Bit();
  const QByteArray file = QFile::encodeName(job.fileName());
  if (cupsPrintFile2(CUPS_HTTP_DEFAULT, name.constData(), file.constData(), "Quillion", 0, nullptr) == 0) {
    error = QString("%1 did not take the job (%2)").arg(printer.name, QString::fromLocal8Bit(cupsLastErrorString()));
    return false;
  }
  return true;
}

}  // namespace

Destinations defaultDestinations() {
  const QString user = qEnvironmentVariable("USER", "user");
  return {QDir::home().filePath("Quillion/pages"), QDir::temp().filePath("quillion-pages-" + user), true};
}

std::optional<Printer> defaultPrinter() {
  cups_dest_t* dest = cupsGetNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr);
  if (dest == nullptr) return std::nullopt;
  Printer printer{QString::fromLocal8Bit(dest->name), localePaper()};
  // CUPS measures media in hundredths of a millimetre.
  const auto paper = [](int width, int length, const char* name) {
    return QPageSize(QSizeF(width / 100.0, length / 100.0), QPageSize::Millimeter, QString::fromLocal8Bit(name),
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

QPageSize localePaper() {
  return QPageSize(QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                     : QPageSize::A4);
}

bool paintDocument(QIODevice& device, const std::vector<PageSnapshot>& pages, const QPageSize& paper) {
  QPdfWriter writer(&device);
  writer.setPageSize(paper);
  writer.setPageOrientation(QPageLayout::Landscape);
  writer.setTitle("Quillion");
  writer.setCreator("Quillion");
  QPainter painter;
  if (!painter.begin(&writer)) return false;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) writer.newPage();
    renderPage(painter, pages[i], QSizeF(writer.width(), writer.height()));
  }
  return painter.end();
}

bool writePdfFile(const QString& path, const std::vector<PageSnapshot>& pages, const QPageSize& paper,
                  QString& error) {
  QSaveFile file(path);
  // The painter reports success on a full disk: what counts is the file's own
  // error state, which commit() checks before the file takes its name.
  const auto failed = [&] {
    const QString reason = file.error() == QFile::WriteError ? QString("a write failed; is the disk full?")
                                                             : file.errorString();
    error = QString("cannot write %1 (%2)").arg(path, reason);
    return false;
  };
  if (!file.open(QIODevice::WriteOnly) || !paintDocument(file, pages, paper) || file.error() != QFile::NoError) {
    failed();
    file.cancelWriting();
    return false;
  }
  return file.commit() || failed();
}

Delivery deliverDocument(const std::vector<PageSnapshot>& pages, const Destinations& where) {
  QString failure = "printing to files";
  if (where.usePrinter) {
    if (const std::optional<Printer> printer = defaultPrinter()) {
      if (printDocument(*printer, pages, failure)) return {printer->name, false};
    } else {
      // Also when the print service is down or gone: the reason says which.
      failure = "no default printer";
      const ipp_status_t why = cupsLastError();
      if (why > IPP_STATUS_OK_EVENTS_COMPLETE && why != IPP_STATUS_ERROR_NOT_FOUND) {
        failure += QString(" (%1)").arg(QString::fromLocal8Bit(cupsLastErrorString()));
      }
    }
  }
  QString path;
  QString error;
  for (const QString& folder : {where.pagesFolder, where.spareFolder}) {
    if (writeToFolder(folder, pages, path, error)) {
      report(QString("%1; %2 saved as %3").arg(failure, pagesText(pages.size()), path));
      notifyFile(path, pages.size());
      return {path, true};
    }
    failure += "; " + error;
  }
  report(QString("%1; %2 could not be kept").arg(failure, pagesText(pages.size())));
  return {};
}

}  // namespace quill::qt
