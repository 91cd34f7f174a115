// Widgets that behave like the classic controls: buttons and check boxes
// whose captions wrap onto several lines, and the 5 by 5 illustrations.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

#include "platform/form.h"

class QPainter;

namespace quill::qt {

// A push button whose caption is centred and wrapped at word breaks.
class WrappingButton : public QPushButton {
  Q_OBJECT
 public:
  using QPushButton::QPushButton;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A check box whose caption wraps and is centred vertically beside the box;
// a click anywhere on it toggles it, and its background fills the whole control.
class WrappingCheckBox : public QCheckBox {
  Q_OBJECT
 public:
  using QCheckBox::QCheckBox;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& pos) const override;
};

// Paints an illustration into a rectangle: framed 5 by 5 grid, grey lines,
// green marks. Used by the picture box and by the printed page.
void paintIllustration(QPainter& painter, const QRectF& box, const Illustration& illustration,
                       const QColor& windowColour);

// A picture box showing an illustration.
class IllustrationWidget : public QWidget {
  Q_OBJECT
 public:
  IllustrationWidget(Illustration illustration, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Illustration illustration_;
};

}  // namespace quill::qt
