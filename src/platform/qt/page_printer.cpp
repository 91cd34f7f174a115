// One page per job: the default printer through CUPS, or a PDF file.
#include "platform/qt/page_printer.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>

#include "platform/qt/control_widgets.h"
#include "platform/qt/fonts.h"
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

QColor toQColor(const std::optional<Rgb>& c, const QColor& fallback) {
  return c ? QColor(c->red, c->green, c->blue) : fallback;
}

// A visible control as vector drawing: its background, its frame, box or
// bevel, and its caption wrapped as on screen. Widgets rendered as images
// would turn to pixels on paper.
void paintControl(QPainter& painter, const Control& control, const QWidget& widget) {
  const QRectF box(widget.geometry());
  const QPalette& palette = widget.palette();
  const QString text = QString::fromStdString(control.text());
  const QColor textColour = control.enabled() ? toQColor(control.foreground(), Qt::black) : QColor(Qt::gray);
  painter.save();
  painter.setFont(controlFont());
  switch (control.kind()) {
    case ControlKind::Label:
      if (control.background()) painter.fillRect(box, toQColor(control.background(), Qt::white));
      painter.setPen(textColour);
      painter.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
      break;
    case ControlKind::TextBox:
      painter.fillRect(box, Qt::white);
      painter.setPen(QColor(128, 128, 128));
      painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
      painter.setPen(textColour);
      painter.drawText(box.adjusted(3, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
      break;
    case ControlKind::CheckBox: {
      painter.fillRect(box, toQColor(control.background(), palette.color(QPalette::Window)));
      const QRectF square(box.left() + 2, box.center().y() - 6, 12, 12);
      painter.fillRect(square, Qt::white);
      painter.setPen(QColor(64, 64, 64));
      painter.drawRect(square);
      if (control.checked()) {
        painter.drawPolyline(QPolygonF{square.topLeft() + QPointF(2.5, 6), square.topLeft() + QPointF(5, 9),
                                       square.topLeft() + QPointF(10, 3)});
      }
      painter.setPen(textColour);
      painter.drawText(box.adjusted(19, 0, -1, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, text);
      break;
    }
    case ControlKind::CommandButton:
      painter.setPen(QColor(128, 128, 128));
      painter.setBrush(palette.color(QPalette::Button));
      painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
      painter.setPen(textColour);
      painter.drawText(box.adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, text);
      break;
    case ControlKind::PictureBox:
      if (control.illustration()) {
        paintIllustration(painter, box, *control.illustration(), palette.color(QPalette::Window));
      }
      break;
  }
  painter.restore();
}

bool paintOnto(QPrinter& printer, const FormView& view) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  renderPage(painter, view, QSizeF(printer.width(), printer.height()));
  return painter.end();
}

}  // namespace

QString pdfPageFolder() { return QDir::home().filePath("Quillion/pages"); }

// The page area, widened to take in anything drawn beyond it: the label of a
// tile stands just right of a full-width tile, past the width of the page.
QRectF printedArea(const Surface& surface) {
  QRectF area(0, 0, kPageAreaWidth, kPageAreaHeight);
  for (const DrawOp& op : surface.ops()) {
    if (op.kind == DrawOp::Kind::Box) {
      area |= QRectF(QPointF(op.x1, op.y1), QPointF(op.x2 + 1, op.y2 + 1)).normalized();
    } else {
      const double width = page::kUnitsPerCharacter * static_cast<double>(op.text.size() + 1);
      area |= QRectF(op.x1, op.y1, width, page::kRowHeight);
    }
  }
  return area;
}

void renderPage(QPainter& painter, const FormView& view, QSizeF target) {
  painter.save();
  const QRectF area = printedArea(view.form().surface());
  const qreal scale = std::min(target.width() / area.right(), target.height() / area.bottom());
  painter.scale(scale, scale);
  painter.setClipRect(QRectF(0, 0, area.right(), area.bottom()));
  paintDisplayList(painter, view.form().surface());
  for (const Control* control : view.form().controls()) {
    const QWidget* widget = view.widgetFor(control->name());
    if (widget != nullptr && control->visible()) paintControl(painter, *control, *widget);
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
