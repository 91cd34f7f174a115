// The window's drawing surface: paints the Form's display list under the
// controls, with the keyboard's cell cursor over it, and reports mouse
// presses and the window's own key presses.
#pragma once

#include <QWidget>

#include "platform/form.h"

namespace quill::qt {

class SurfaceWidget : public QWidget {
  Q_OBJECT

 public:
  SurfaceWidget(Form& form, QWidget* parent);
  Form& form() const { return form_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  Form& form_;
};

}  // namespace quill::qt
