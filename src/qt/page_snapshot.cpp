// Taking a page from the window, and painting it as vector drawing.
#include "qt/page_snapshot.h"

#include <QWidget>
#include <algorithm>

#include "qt/control_widgets.h"
#include "qt/appearance.h"
#include "qt/form_view.h"
#include "qt/display_painter.h"

namespace quill::qt {

namespace {

QColor toQColor(const std::optional<Rgb>& c, const QColor& fallback) {
  return c ? QColor(c->red, c->green, c->blue) : fallback;
}

// A visible control as vector drawing: its background, its frame, box or
// bevel, and its caption wrapped as on screen. Widgets rendered as images
// would turn to pixels on paper.
void paintControl(QPainter& painter, const ControlImage& control) {
  const QRectF& box = control.box;
  painter.save();
  painter.setFont(controlFont());
  switch (control.kind) {
    case ControlKind::Label:
      if (control.background) painter.fillRect(box, *control.background);
      painter.setPen(control.textColour);
      painter.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, control.text);
      break;
    case ControlKind::TextBox:
      painter.fillRect(box, Qt::white);
      painter.setPen(QColor(128, 128, 128));
      painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
      painter.setPen(control.textColour);
      painter.drawText(box.adjusted(3, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter, control.text);
      break;
    case ControlKind::CheckBox: {
      painter.fillRect(box, control.background.value_or(control.windowColour));
      const QRectF square(box.left() + 2, box.center().y() - 6, 12, 12);
      painter.fillRect(square, Qt::white);
      painter.setPen(QColor(64, 64, 64));
      painter.drawRect(square);
      if (control.checked) {
        painter.drawPolyline(QPolygonF{square.topLeft() + QPointF(2.5, 6), square.topLeft() + QPointF(5, 9),
                                       square.topLeft() + QPointF(10, 3)});
      }
      painter.setPen(control.textColour);
      painter.drawText(box.adjusted(19, 0, -1, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                       control.text);
      break;
    }
    case ControlKind::CommandButton:
      painter.setPen(QColor(128, 128, 128));
      painter.setBrush(control.buttonColour);
      painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
      painter.setPen(control.textColour);
      painter.drawText(box.adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, control.text);
      break;
    case ControlKind::PictureBox:
      if (control.illustration) paintIllustration(painter, box, *control.illustration, control.windowColour);
      break;
  }
  painter.restore();
}

}  // namespace

PageSnapshot takeSnapshot(const FormView& view) {
  PageSnapshot page;
  page.drawing = view.form().surface().ops();
  for (const Control* control : view.form().controls()) {
    const QWidget* widget = view.widgetFor(control->name());
    if (widget == nullptr || !control->visible()) continue;
    ControlImage image;
    image.kind = control->kind();
    image.text = QString::fromStdString(control->text());
    image.box = QRectF(widget->geometry());
    if (control->background()) image.background = toQColor(control->background(), Qt::white);
    image.textColour = control->enabled() ? toQColor(control->foreground(), Qt::black) : QColor(Qt::gray);
    image.checked = control->checked();
    image.illustration = control->illustration();
    image.windowColour = widget->palette().color(QPalette::Window);
    image.buttonColour = widget->palette().color(QPalette::Button);
    page.controls.push_back(std::move(image));
  }
  return page;
}

void renderPage(QPainter& painter, const PageSnapshot& page, QSizeF target) {
  painter.save();
  const page::PrintedArea area = page::printedArea(page.drawing);
  const qreal scale = std::min(target.width() / area.width, target.height() / area.height);
  painter.scale(scale, scale);
  painter.setClipRect(QRectF(0, 0, area.width, area.height));
  paintDisplayList(painter, page.drawing);
  for (const ControlImage& control : page.controls) paintControl(painter, control);
  painter.restore();
}

}  // namespace quill::qt
