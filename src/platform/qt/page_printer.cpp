// One page per job: the default printer through CUPS, or a PDF file.
#include "platform/qt/page_printer.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPicture>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>

#include "platform/qt/form_view.h"
#include "platform/qt/surface_widget.h"

namespace quill::qt {

namespace {

QString nextPdfPath() {
  const QDir folder(pdfPageFolder());
  const QString stamp = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
  for (int sequence = 1;; ++sequence) {
    const QString path =
        folder.filePath(QString("quillion-%1-%2.pdf").arg(stamp).arg(sequence, 3, 10, QChar('0')));
    if (!QFile::exists(path)) return path;
  }
}

bool paintOnto(QPrinter& printer, const FormView& view) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  renderPage(painter, view, QSizeF(printer.width(), printer.height()));
  return painter.end();
}

}  // namespace

QString pdfPageFolder() { return QDir::home().filePath("Quillion/pages"); }

void renderPage(QPainter& painter, const FormView& view, QSizeF target) {
  painter.save();
  const qreal scale = std::min(target.width() / kPageAreaWidth, target.height() / kPageAreaHeight);
  painter.scale(scale, scale);
  painter.setClipRect(QRectF(0, 0, kPageAreaWidth, kPageAreaHeight));
  paintDisplayList(painter, view.form().surface());
  // Controls are recorded as pictures so that they stay vector on paper.
  for (const Control* control : view.form().controls()) {
    QWidget* widget = view.widgetFor(control->name());
    if (widget == nullptr || !control->visible()) continue;
    QPicture picture;
    QPainter recorder(&picture);
    widget->render(&recorder, QPoint(), QRegion(),
                   QWidget::DrawWindowBackground | QWidget::DrawChildren);
    recorder.end();
    painter.drawPicture(widget->pos(), picture);
  }
  painter.restore();
}

bool printPageToPdf(const FormView& view, const QString& path) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  const QString partial = path + ".part";
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(partial);
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName("Quillion page");
  if (!paintOnto(printer, view)) {
    QFile::remove(partial);
    return false;
  }
  QFile::remove(path);
  return QFile::rename(partial, path);
}

QString printPage(const FormView& view) {
  const QPrinterInfo defaultPrinter = QPrinterInfo::defaultPrinter();
  if (!defaultPrinter.isNull()) {
    QPrinter printer(defaultPrinter, QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName("Quillion page");
    if (paintOnto(printer, view)) return defaultPrinter.printerName();
    // A printer that refuses the job must not swallow the page.
  }
  const QString path = nextPdfPath();
  return printPageToPdf(view, path) ? path : QString();
}

}  // namespace quill::qt
