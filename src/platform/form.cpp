// The form model's property setters and event rules.
#include "platform/form.h"

namespace quill {

namespace {
void run(const std::function<void()>& handler) {
  if (handler) handler();
}
void run(const std::function<void(int, int)>& handler, int keyCode, int shift) {
  if (handler) handler(keyCode, shift);
}
}  // namespace

Control::Control(Form& form, std::string name, ControlDesign design)
    : form_(form),
      name_(std::move(name)),
      design_(std::move(design)),
      text_(design_.text),
      value_(design_.value),
      visible_(design_.visible),
      enabled_(design_.enabled),
      rect_(design_.rect),
      maxLength_(design_.maxLength),
      accessibleName_(design_.accessibleName) {
  form_.controls_.push_back(this);
}

void Control::changed() {
  if (form_.observer_ != nullptr) form_.observer_->controlChanged(*this);
}

void Control::setText(const std::string& text) {
  if (text == text_) return;
  text_ = text;
  changed();
  if (kind() == ControlKind::TextBox) run(onChange);
}

void Control::setValue(int value) {
  if (value == value_) return;
  value_ = value;
  changed();
  if (kind() == ControlKind::CheckBox) run(onClick);
}

void Control::setVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  changed();
}

void Control::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  changed();
}

void Control::setRect(const TwipRect& rect) {
  if (rect.left == rect_.left && rect.top == rect_.top && rect.width == rect_.width &&
      rect.height == rect_.height) {
    return;
  }
  rect_ = rect;
  changed();
}

void Control::setPixelPosition(int left, int top) {
  setRect({left * kTwipsPerPixel, top * kTwipsPerPixel, rect_.width, rect_.height});
}

void Control::setPixelSize(int width, int height) {
  setRect({rect_.left, rect_.top, width * kTwipsPerPixel, height * kTwipsPerPixel});
}

void Control::setMaxLength(int maxLength) {
  if (maxLength == maxLength_) return;
  maxLength_ = maxLength;
  changed();
}

void Control::setAccessibleName(const std::string& name) {
  if (name == accessibleName_) return;
  accessibleName_ = name;
  changed();
}

void Control::setAccessibleDescription(const std::string& description) {
  if (description == accessibleDescription_) return;
  accessibleDescription_ = description;
  changed();
}

void Control::setFocus() {
  if (form_.observer_ != nullptr) form_.observer_->focusRequested(*this);
}

void Control::userEdit(const std::string& text) {
  if (kind() != ControlKind::TextBox || !usable()) return;
  // The length limit holds for typing only (the program may set a longer
  // text): an edit that would grow the text beyond it is refused.
  if (maxLength_ > 0 && text.size() > static_cast<std::size_t>(maxLength_) &&
      text.size() > text_.size()) {
    return;
  }
  setText(text);
}

void Control::userClick() {
  if (!usable()) return;
  if (kind() == ControlKind::CheckBox) {
    setValue(value_ == 1 ? 0 : 1);  // runs the click handling
  } else if (kind() == ControlKind::CommandButton) {
    run(onClick);
  }
}

void Control::userKeyDown(int keyCode, int shift) {
  if (usable()) run(onKeyDown, keyCode, shift);
}

void Control::userKeyUp(int keyCode, int shift) {
  if (usable()) run(onKeyUp, keyCode, shift);
}

MenuItem::MenuItem(Form& form, std::string name, std::string caption, MenuItem* parent,
                   bool checked)
    : form_(form), name_(std::move(name)), caption_(std::move(caption)), parent_(parent),
      checked_(checked) {
  form_.menuItems_.push_back(this);
  if (parent_ != nullptr) {
    parent_->children_.push_back(this);
  } else {
    form_.menuBar_.push_back(this);
  }
}

void MenuItem::changed() {
  if (form_.observer_ != nullptr) form_.observer_->menuChanged(*this);
}

void MenuItem::setChecked(bool checked) {
  if (checked == checked_) return;
  checked_ = checked;
  changed();
}

void MenuItem::setVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  changed();
}

void MenuItem::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  changed();
}

bool MenuItem::reachable() const {
  for (const MenuItem* item = this; item != nullptr; item = item->parent_) {
    if (!item->visible_ || !item->enabled_) return false;
  }
  return true;
}

void MenuItem::userClick() {
  if (reachable()) run(onClick);
}

Form::Form() { surface_.setListener(this); }

Form::~Form() { surface_.setListener(nullptr); }

void Form::setCaption(const std::string& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  if (observer_ != nullptr) observer_->captionChanged(caption_);
}

Control* Form::findControl(const std::string& name) const {
  for (Control* control : controls_) {
    if (control->name() == name) return control;
  }
  return nullptr;
}

MenuItem* Form::findMenuItem(const std::string& name) const {
  for (MenuItem* item : menuItems_) {
    if (item->name() == name) return item;
  }
  return nullptr;
}

void Form::userActivate() {
  if (activated_) return;
  activated_ = true;
  run(onActivate);
}

void Form::userKeyDown(int keyCode, int shift) { run(onKeyDown, keyCode, shift); }

void Form::userMouseDown(int button, int shift, float x, float y) {
  if (onMouseDown) onMouseDown(button, shift, x, y);
}

void Form::userClose() { run(onUnload); }

void Form::userTerminate() { run(onTerminate); }

void Form::surfaceChanged(const SurfaceChange& change) {
  if (observer_ != nullptr) observer_->surfaceChanged(change);
}

void Form::focusSurface() {
  if (observer_ != nullptr) observer_->surfaceFocusRequested();
}

}  // namespace quill
