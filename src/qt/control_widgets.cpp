// Painting of the wrapping button, the wrapping check box and the illustrations.
#include "qt/control_widgets.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace quill::qt {

void WrappingButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QString caption = option.text;
  option.text.clear();
  painter.drawControl(QStyle::CE_PushButton, option);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                 QPalette::ButtonText));
  painter.drawText(rect().adjusted(4, 2, -4, -2), Qt::AlignCenter | Qt::TextWordWrap, caption);
}

void WrappingCheckBox::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const int indicatorWidth = style()->pixelMetric(QStyle::PM_IndicatorWidth, &option, this);
  const int indicatorHeight = style()->pixelMetric(QStyle::PM_IndicatorHeight, &option, this);
  QStyleOptionButton indicator = option;
  indicator.rect = QRect(2, (height() - indicatorHeight) / 2, indicatorWidth, indicatorHeight);
  painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, indicator);
  const QRect textRect(indicatorWidth + 6, 0, width() - indicatorWidth - 7, height());
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                 QPalette::WindowText));
  painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, option.text);
}

bool WrappingCheckBox::hitButton(const QPoint& pos) const { return rect().contains(pos); }

IllustrationWidget::IllustrationWidget(Illustration illustration, QWidget* parent)
    : QWidget(parent), illustration_(std::move(illustration)) {}

void IllustrationWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintIllustration(painter, QRectF(rect()), illustration_, palette().color(QPalette::Window));
}

void paintIllustration(QPainter& painter, const QRectF& box, const Illustration& illustration,
                       const QColor& windowColour) {
  painter.save();
  painter.fillRect(box, illustration.whiteBackground ? QColor(Qt::white) : windowColour);
  painter.setPen(QColor(128, 128, 128));
  painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));

  // A 5 by 5 grid centred in the box with a margin of one twelfth.
  const qreal margin = std::min(box.width(), box.height()) / 12.0;
  const qreal cellW = (box.width() - 2 * margin) / 5;
  const qreal cellH = (box.height() - 2 * margin) / 5;
  const QPointF origin = box.topLeft() + QPointF(margin, margin);
  auto cell = [&](int column, int row) {
    return QRectF(origin.x() + (column - 1) * cellW, origin.y() + (row - 1) * cellH, cellW, cellH);
  };

  const QColor green(0, 160, 0);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const MarkedCell& mark : illustration.marks) {
    const QRectF r = cell(mark.column, mark.row);
    switch (mark.style) {
      case MarkStyle::Fill:
        painter.fillRect(r.adjusted(1, 1, -1, -1), QColor(0, 255, 0));
        break;
      case MarkStyle::Strokes:
        painter.setPen(QPen(green, 2));
        painter.drawLine(QPointF(r.left() + r.width() * 0.25, r.center().y()),
                         QPointF(r.right() - r.width() * 0.25, r.center().y()));
        break;
      case MarkStyle::Ticks:
        painter.setPen(QPen(green, 2));
        painter.drawPolyline(QPolygonF{QPointF(r.left() + r.width() * 0.25, r.center().y()),
                                       QPointF(r.left() + r.width() * 0.45, r.bottom() - r.height() * 0.25),
                                       QPointF(r.right() - r.width() * 0.2, r.top() + r.height() * 0.2)});
        break;
    }
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(QColor(160, 160, 160));
  for (int i = 0; i <= 5; ++i) {
    painter.drawLine(origin + QPointF(i * cellW, 0), origin + QPointF(i * cellW, 5 * cellH));
    painter.drawLine(origin + QPointF(0, i * cellH), origin + QPointF(5 * cellW, i * cellH));
  }
  painter.restore();
}

}  // namespace quill::qt
