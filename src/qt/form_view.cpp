// Building the widgets and menus from the Form, and the binding in both directions.
#include "qt/form_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>

#include "qt/control_widgets.h"
#include "qt/appearance.h"
#include "qt/key_codes.h"
#include "qt/surface_accessible.h"
#include "qt/surface_widget.h"

namespace quill::qt {

namespace {

constexpr int pixels(int twips) { return twips / kTwipsPerPixel; }

QRect pixelRect(const TwipRect& r) {
  return {pixels(r.left), pixels(r.top), pixels(r.width), pixels(r.height)};
}

QColor toQColor(const Rgb& c) { return {c.red, c.green, c.blue}; }

QString toQString(const std::string& text) { return QString::fromStdString(text); }

void applyColours(QWidget* widget, const Control& control) {
  QPalette palette = widget->palette();
  if (control.background()) {
    widget->setAutoFillBackground(true);
    widget->setBackgroundRole(QPalette::Window);
    palette.setColor(QPalette::Window, toQColor(*control.background()));
  }
  if (control.foreground()) palette.setColor(QPalette::WindowText, toQColor(*control.foreground()));
  widget->setPalette(palette);
}

}  // namespace

FormView::FormView(Form& form) : form_(form) {
  setWindowTitle(toQString(form_.caption()));
  setPalette(windowPalette());
  installSurfaceAccessibility();
  surface_ = new SurfaceWidget(form_, this);
  surface_->setStyle(windowStyle());
  setCentralWidget(surface_);
  buildMenus();
  buildControls();
  // The application ending (the desktop session closing, say) ends the
  // window's program as closing the window does.
  connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { form_.userTerminate(); });
  // F10 opens the menu bar, as on every desktop; no handler uses the key.
  auto* openMenus = new QShortcut(QKeySequence(Qt::Key_F10), this);
  connect(openMenus, &QShortcut::activated, this, [this] {
    for (QAction* action : menuBar()->actions()) {
      if (action->isVisible() && action->isEnabled()) {
        menuBar()->setActiveAction(action);
        return;
      }
    }
  });
  // The design client area below the menu bar.
  resize(pixels(form_.clientArea().width), pixels(form_.clientArea().height) + menuBar()->sizeHint().height());
  form_.setObserver(this);
}

FormView::~FormView() { form_.setObserver(nullptr); }

QWidget* FormView::widgetFor(const std::string& controlName) const {
  const Control* control = form_.findControl(controlName);
  const auto it = widgets_.find(control);
  return it == widgets_.end() ? nullptr : it->second;
}

QAction* FormView::actionFor(const std::string& menuItemName) const {
  const MenuItem* item = form_.findMenuItem(menuItemName);
  const auto it = actions_.find(item);
  return it == actions_.end() ? nullptr : it->second;
}

void FormView::buildMenus() {
  // Items with children become menus; the rest become actions that run the
  // item's click and then take their check mark from the model again.
  auto addItems = [this](auto& self, QMenu* menu, const MenuItem& parent) -> void {
    for (MenuItem* item : parent.children()) {
      if (!item->children().empty()) {
        QMenu* sub = menu->addMenu(toQString(item->caption()));
        menus_[item] = sub;
        actions_[item] = sub->menuAction();
        self(self, sub, *item);
      } else {
        QAction* action = menu->addAction(toQString(item->caption()));
        actions_[item] = action;
        connect(action, &QAction::triggered, this, [this, item] {
          item->userClick();
          applyMenuItem(*item);
        });
      }
      applyMenuItem(*item);
    }
  };
  for (MenuItem* top : form_.menuBar()) {
    QMenu* menu = menuBar()->addMenu(toQString(top->caption()));
    menus_[top] = menu;
    actions_[top] = menu->menuAction();
    addItems(addItems, menu, *top);
    applyMenuItem(*top);
  }
}

void FormView::buildControls() {
  for (Control* control : form_.controls()) {
    QWidget* widget = createWidget(*control);
    widget->setStyle(windowStyle());
    widget->setFont(controlFont());
    widget->installEventFilter(this);
    widgets_[control] = widget;
    controlsByWidget_[widget] = control;
    applyControl(*control, widget);
  }
}

QWidget* FormView::createWidget(Control& control) {
  switch (control.kind()) {
    case ControlKind::Label: {
      auto* label = new QLabel(surface_);
      label->setTextFormat(Qt::PlainText);
      label->setWordWrap(true);
      label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
      label->setMargin(0);
      applyColours(label, control);
      return label;
    }
    case ControlKind::TextBox: {
      auto* edit = new QLineEdit(surface_);
      edit->setTextMargins(0, 0, 0, 0);
      connect(edit, &QLineEdit::textEdited, this, [this, &control, edit](const QString& text) {
        control.userEdit(text.toStdString());
        applyControl(control, edit);  // the model may have refused or rewritten it
      });
      return edit;
    }
    case ControlKind::CheckBox: {
      auto* box = new WrappingCheckBox(surface_);
      applyColours(box, control);
      connect(box, &QCheckBox::clicked, this, [this, &control, box] {
        control.userClick();
        applyControl(control, box);
      });
      return box;
    }
    case ControlKind::CommandButton: {
      auto* button = new WrappingButton(surface_);
      // Enter presses the focused button as Space does.
      button->setAutoDefault(true);
      connect(button, &QPushButton::clicked, this, [&control] { control.userClick(); });
      return button;
    }
    case ControlKind::PictureBox:
      return new IllustrationWidget(control.illustration().value_or(Illustration{}), surface_);
  }
  return new QWidget(surface_);
}

void FormView::applyControl(const Control& control, QWidget* widget) {
  const QSignalBlocker blocker(widget);
  const QString text = toQString(control.text());
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    label->setText(text);
  } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
    // The limit holds for typing only: a longer text set by the program stays whole.
    const int limit = control.maxLength() > 0 ? control.maxLength() : 32767;
    edit->setMaxLength(std::max(limit, static_cast<int>(text.size())));
    if (edit->text() != text) edit->setText(text);
  } else if (auto* box = qobject_cast<QCheckBox*>(widget)) {
    box->setText(text);
    box->setChecked(control.value() == 1);
  } else if (auto* button = qobject_cast<QPushButton*>(widget)) {
    button->setText(text);
  }
  if (!control.accessibleName().empty()) widget->setAccessibleName(toQString(control.accessibleName()));
  widget->setAccessibleDescription(toQString(control.accessibleDescription()));
  widget->setGeometry(pixelRect(control.rect()));
  widget->setEnabled(control.enabled());
  widget->setVisible(control.visible());
}

void FormView::applyMenuItem(const MenuItem& item) {
  QAction* action = actions_.at(&item);
  const QSignalBlocker blocker(action);
  action->setVisible(item.visible());
  action->setEnabled(item.enabled());
  // Only a checked item shows a mark; unchecked ones show nothing at all.
  action->setCheckable(item.checked());
  action->setChecked(item.checked());
}

void FormView::controlChanged(const Control& control) {
  const auto it = widgets_.find(&control);
  if (it != widgets_.end()) applyControl(control, it->second);
}

void FormView::focusRequested(const Control& control) {
  const auto it = widgets_.find(&control);
  if (it != widgets_.end()) it->second->setFocus(Qt::OtherFocusReason);
}

void FormView::menuChanged(const MenuItem& item) {
  if (actions_.count(&item) != 0) applyMenuItem(item);
}

void FormView::captionChanged(const std::string& caption) { setWindowTitle(toQString(caption)); }

void FormView::surfaceChanged(const SurfaceChange& change) {
  surface_->update();
  if (change.kind != SurfaceChange::Kind::Drawn) surfaceAccessibilityChanged(surface_, change);
}

void FormView::surfaceFocusRequested() { surface_->setFocus(Qt::OtherFocusReason); }

void FormView::showAndActivate() {
  show();
  raise();
  activateWindow();
}

void FormView::maximise() {
  QScreen* current = screen();
  const QRect available = current != nullptr ? current->availableGeometry() : QRect();
  if (isMaximized() && (available.isNull() || frameGeometry().size() == available.size())) return;
  // Without a window manager, maximising changes nothing: size it ourselves.
  if (!available.isNull()) setGeometry(available);
  showMaximized();
}

bool FormView::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  if (event->type() == QEvent::WindowActivate) form_.userActivate();
  return handled;
}

void FormView::closeEvent(QCloseEvent* event) {
  form_.userClose();  // ends the program when the window says so
  event->accept();
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  const auto it = controlsByWidget_.find(watched);
  if (it != controlsByWidget_.end()) {
    if (event->type() == QEvent::KeyPress) {
      const auto* key = static_cast<QKeyEvent*>(event);
      Control& control = *it->second;
      control.userKeyDown(classicKeyCode(key->key()), classicShift(key->modifiers()));
      // A key that closed its control goes no further: neither into the
      // closed box nor up to the window, which may hold the focus by now.
      if (!control.visible() || !control.enabled()) {
        event->accept();
        return true;
      }
    } else if (event->type() == QEvent::KeyRelease) {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (!key->isAutoRepeat()) {
        it->second->userKeyUp(classicKeyCode(key->key()), classicShift(key->modifiers()));
      }
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace quill::qt
