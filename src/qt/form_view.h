// FormView: the real Qt window for a Form. Builds one widget per control and
// one action per menu item from the design, mirrors every model change into
// them without echoing it back, and forwards the user's own edits, clicks,
// keys, mouse presses, activation and closing into the model.
#pragma once

#include <QMainWindow>
#include <map>
#include <string>

#include "platform/form.h"

class QAction;
class QMenu;

namespace quill::qt {

class SurfaceWidget;

class FormView : public QMainWindow, private FormObserver {
  Q_OBJECT

 public:
  explicit FormView(Form& form);
  ~FormView() override;

  Form& form() { return form_; }
  const Form& form() const { return form_; }
  SurfaceWidget* surfaceWidget() const { return surface_; }
  QWidget* widgetFor(const std::string& controlName) const;
  QAction* actionFor(const std::string& menuItemName) const;

  // Shows the window and activates it (a bare X server activates nothing by itself).
  void showAndActivate();
  // Maximised, and sized to the screen's available area even without a window manager.
  void maximise();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildMenus();
  void buildControls();
  QWidget* createWidget(Control& control);
  void applyControl(const Control& control, QWidget* widget);
  void applyMenuItem(const MenuItem& item);

  // FormObserver
  void controlChanged(const Control& control) override;
  void focusRequested(const Control& control) override;
  void menuChanged(const MenuItem& item) override;
  void captionChanged(const std::string& caption) override;
  void surfaceChanged(const SurfaceChange& change) override;
  void surfaceFocusRequested() override;

  Form& form_;
  SurfaceWidget* surface_ = nullptr;
  std::map<const Control*, QWidget*> widgets_;
  std::map<QObject*, Control*> controlsByWidget_;
  std::map<const MenuItem*, QAction*> actions_;
  std::map<const MenuItem*, QMenu*> menus_;
};

}  // namespace quill::qt
