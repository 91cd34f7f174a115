// Painting the display list and forwarding the surface's mouse and key events.
#include "qt/surface_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "qt/appearance.h"
#include "qt/display_painter.h"
#include "qt/key_codes.h"
#include "qt/surface_accessible.h"

namespace quill::qt {

SurfaceWidget::SurfaceWidget(Form& form, QWidget* parent) : QWidget(parent), form_(form) {
  setFocusPolicy(Qt::StrongFocus);
  setAutoFillBackground(true);
}

void SurfaceWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Surface& surface = form_.surface();
  paintDisplayList(painter, surface.ops());
  // A hint's line: its other cells tinted and framed in orange, which both
  // white and grey cells and the black numbers show through.
  for (const GridCell& marked : surface.hintMarks()) {
    const CellBox box = cellBox(surface.grids()[marked.grid], marked.row, marked.column);
    const QRectF cell(box.left, box.top, box.width, box.height);
    painter.fillRect(cell, QColor(255, 150, 0, 70));
    painter.setPen(QPen(QColor(230, 110, 0), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(cell.adjusted(1.5, 1.5, -0.5, -0.5));
  }
  if (const std::optional<GridCell> cursor = surface.cellCursor()) {
    // The cell's grid lines drawn over in blue, three pixels wide: plain on
    // white and grey cells alike, and clear of the number, which starts two
    // pixels in.
    const CellBox box = cellBox(surface.grids()[cursor->grid], cursor->row, cursor->column);
    const QRectF cell(box.left, box.top, box.width, box.height);
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
