// Painting the display list and forwarding the surface's mouse and key events.
#include "platform/qt/surface_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "platform/qt/appearance.h"
#include "platform/qt/key_codes.h"
#include "platform/qt/surface_accessible.h"

namespace quill::qt {

void paintDisplayList(QPainter& painter, const std::vector<DrawOp>& drawing) {
  painter.save();
  painter.setFont(drawingFont());
  painter.setPen(Qt::black);
  const QFontMetricsF metrics(painter.font());
  for (const DrawOp& op : drawing) {
    if (op.kind == DrawOp::Kind::Box) {
      // Both corners are inside the box: (x1, y1)-(x1, y1) is one pixel.
      const qreal left = std::min(op.x1, op.x2);
      const qreal top = std::min(op.y1, op.y2);
      const qreal right = std::max(op.x1, op.x2) + 1;
      const qreal bottom = std::max(op.y1, op.y2) + 1;
      const PaletteColour c = paletteColour(op.colour);
      painter.fillRect(QRectF(left, top, right - left, bottom - top), QColor(c.red, c.green, c.blue));
    } else {
      // The text's top-left corner is at the text position; transparent background.
      painter.drawText(QPointF(op.x1, op.y1 + metrics.ascent()), QString::fromStdString(op.text));
    }
  }
  painter.restore();
}

SurfaceWidget::SurfaceWidget(Form& form, QWidget* parent) : QWidget(parent), form_(form) {
  setFocusPolicy(Qt::StrongFocus);
  setAutoFillBackground(true);
}

void SurfaceWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Surface& surface = form_.surface();
  paintDisplayList(painter, surface.ops());
  if (const std::optional<GridCell> cursor = surface.cellCursor()) {
    // The cell's grid lines drawn over in blue, three pixels wide: plain on
    // white and grey cells alike, and clear of the number, which starts two
    // pixels in.
    const GridArea& g = surface.grids()[cursor->grid];
    const QRectF cell(g.left + static_cast<float>(cursor->column) * g.cellWidth,
                      g.top + static_cast<float>(cursor->row) * g.cellHeight, g.cellWidth, g.cellHeight);
    painter.setPen(QPen(QColor(0, 0, 255), 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(cell.adjusted(0.5, 0.5, 0.5, 0.5));
  }
}

void SurfaceWidget::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  surfaceFocused(this);
}

void SurfaceWidget::mousePressEvent(QMouseEvent* event) {
  const QPointF pos = event->position();
  form_.userMouseDown(classicButton(event->button()), classicShift(event->modifiers()),
                      static_cast<float>(pos.x()), static_cast<float>(pos.y()));
}

void SurfaceWidget::keyPressEvent(QKeyEvent* event) {
  // The window hears keys only when none of its controls holds the focus;
  // keys a control ignores bubble up here and must not reach it twice.
  QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr || focus == this || focus == window()) {
    form_.userKeyDown(classicKeyCode(event->key()), classicShift(event->modifiers()));
  }
}

}  // namespace quill::qt
