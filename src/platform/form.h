// The form model: plain objects for the window's controls and menu items,
// with the classic event rules implemented once, here.
//
// A text set by the program runs the box's change handling; a check box value
// set by the program runs its click handling; setting an unchanged value runs
// nothing. The platform binding mirrors every property change into its widgets
// (through FormObserver) and feeds the user's own actions back in through the
// user* functions, so a handler never sees an echo of its own change.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/surface.h"

namespace quill {

class Form;

// Design geometry of a control, in twips from the client area's top-left.
struct TwipRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

constexpr int kTwipsPerPixel = 15;

struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Rgb&, const Rgb&) = default;
};

namespace colours {
constexpr Rgb green{0x00, 0xFF, 0x00};
constexpr Rgb cyan{0x00, 0xFF, 0xFF};
constexpr Rgb lightCyan{0x80, 0xFF, 0xFF};
constexpr Rgb lightGreen{0x80, 0xFF, 0x80};
constexpr Rgb orange{0xFF, 0x80, 0x00};
constexpr Rgb magenta{0xFF, 0x00, 0xFF};
constexpr Rgb white{0xFF, 0xFF, 0xFF};
constexpr Rgb blue{0x00, 0x00, 0xFF};
}  // namespace colours

// The classic virtual-key numbers the handlers test.
namespace keys {
constexpr int enter = 13;
constexpr int escape = 27;
constexpr int space = 32;
constexpr int left = 37;
constexpr int up = 38;
constexpr int right = 39;
constexpr int down = 40;
constexpr int letterH = 72;
constexpr int letterQ = 81;
}  // namespace keys

enum class ControlKind { Label, TextBox, CheckBox, CommandButton, PictureBox };

// A green mark on one cell of a 5 by 5 illustration grid.
enum class MarkStyle { Fill, Strokes, Ticks };
struct MarkedCell {
  int column = 0;  // 1..5 from the left
  int row = 0;     // 1..5 from the top
  MarkStyle style = MarkStyle::Fill;
};

// What a picture box shows: a 5 by 5 grid with some cells marked.
struct Illustration {
  bool whiteBackground = true;  // otherwise the window colour
  std::vector<MarkedCell> marks;
};

// Everything a control is created with: the design tables in one record.
struct ControlDesign {
  ControlKind kind = ControlKind::Label;
  std::string text;  // caption of labels, buttons and check boxes; text of text boxes
  TwipRect rect;
  std::optional<Rgb> background;  // none: the platform's default for the kind
  std::optional<Rgb> foreground;
  bool visible = true;
  bool enabled = true;
  int value = 0;      // check boxes: 0 clear, 1 checked
  int maxLength = 0;  // text boxes: 0 means no limit
  // What assistive technology calls the control, when its own text does not
  // say: a text box's caption, an illustration's description.
  std::string accessibleName;
  std::optional<Illustration> illustration;
};

class Control {
 public:
  Control(Form& form, std::string name, ControlDesign design);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& name() const { return name_; }
  ControlKind kind() const { return design_.kind; }

  // Caption (labels, buttons, check boxes) or text (text boxes): one property.
  const std::string& text() const { return text_; }
  void setText(const std::string& text);
  const std::string& caption() const { return text_; }
  void setCaption(const std::string& caption) { setText(caption); }

  int value() const { return value_; }
  bool checked() const { return value_ == 1; }
  void setValue(int value);

  bool visible() const { return visible_; }
  void setVisible(bool visible);
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  // Shown and enabled together, or hidden and disabled together.
  void setAvailable(bool available) {
    setVisible(available);
    setEnabled(available);
  }

  const TwipRect& rect() const { return rect_; }
  void setRect(const TwipRect& rect);
  // Positions set from the drawing surface's pixel coordinates.
  void setPixelPosition(int left, int top);
  void setPixelSize(int width, int height);

  int maxLength() const { return maxLength_; }
  void setMaxLength(int maxLength);

  const std::string& accessibleName() const { return accessibleName_; }
  void setAccessibleName(const std::string& name);
  // What assistive technology says of the control besides its name.
  const std::string& accessibleDescription() const { return accessibleDescription_; }
  void setAccessibleDescription(const std::string& description);

  void setFocus();

  const std::optional<Rgb>& background() const { return design_.background; }
  const std::optional<Rgb>& foreground() const { return design_.foreground; }
  const std::optional<Illustration>& illustration() const { return design_.illustration; }

  // Handlers, installed by the window. Unset handlers do nothing.
  std::function<void()> onClick;
  std::function<void()> onChange;
  std::function<void(int keyCode, int shift)> onKeyDown;
  std::function<void(int keyCode, int shift)> onKeyUp;

  // The user's own actions, delivered by the platform binding or a test.
  void userEdit(const std::string& text);  // typing: the new whole text
  void userClick();                        // buttons click; check boxes toggle, then click
  void userKeyDown(int keyCode, int shift = 0);
  void userKeyUp(int keyCode, int shift = 0);

 private:
  void changed();
  bool usable() const { return visible_ && enabled_; }

  Form& form_;
  std::string name_;
  ControlDesign design_;
  std::string text_;
  int value_;
  bool visible_;
  bool enabled_;
  TwipRect rect_;
  int maxLength_;
  std::string accessibleName_;
  std::string accessibleDescription_;
};

class MenuItem {
 public:
  MenuItem(Form& form, std::string name, std::string caption, MenuItem* parent,
           bool checked = false);
  MenuItem(const MenuItem&) = delete;
  MenuItem& operator=(const MenuItem&) = delete;

  const std::string& name() const { return name_; }
  const std::string& caption() const { return caption_; }
  MenuItem* parent() const { return parent_; }
  const std::vector<MenuItem*>& children() const { return children_; }

  bool checked() const { return checked_; }
  void setChecked(bool checked);
  bool visible() const { return visible_; }
  void setVisible(bool visible);
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);

  std::function<void()> onClick;

  // The user chose this item. Ignored when it, or a menu above it, is hidden
  // or disabled: such an item cannot be reached.
  void userClick();
  bool reachable() const;

 private:
  void changed();

  Form& form_;
  std::string name_;
  std::string caption_;
  MenuItem* parent_;
  std::vector<MenuItem*> children_;
  bool checked_;
  bool visible_ = true;
  bool enabled_ = true;
};

// The platform binding's view of the form: told about every change.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  virtual void controlChanged(const Control& control) = 0;
  virtual void focusRequested(const Control& control) = 0;
  virtual void menuChanged(const MenuItem& item) = 0;
  virtual void captionChanged(const std::string& caption) = 0;
  virtual void surfaceChanged(const SurfaceChange& change) = 0;
  // The drawing surface, rather than any control, is to take the keys.
  virtual void surfaceFocusRequested() = 0;
};

// The window: its title, its drawing surface, its controls and menus in
// design order, and the window-level events.
class Form : private SurfaceListener {
 public:
  Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form() override;

  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);

  // The client area as designed, in twips.
  const TwipRect& clientArea() const { return clientArea_; }
  void setClientArea(const TwipRect& area) { clientArea_ = area; }

  Surface& surface() { return surface_; }
  const Surface& surface() const { return surface_; }
  // Gives the keys to the surface, as a click on it does.
  void focusSurface();

  const std::vector<Control*>& controls() const { return controls_; }
  const std::vector<MenuItem*>& menuBar() const { return menuBar_; }
  const std::vector<MenuItem*>& menuItems() const { return menuItems_; }
  Control* findControl(const std::string& name) const;
  MenuItem* findMenuItem(const std::string& name) const;

  // Window-level events.
  std::function<void()> onActivate;
  std::function<void(int keyCode, int shift)> onKeyDown;
  std::function<void(int button, int shift, float x, float y)> onMouseDown;
  std::function<void()> onUnload;
  std::function<void()> onTerminate;

  // Delivered by the platform binding or a test.
  void userActivate();  // runs onActivate the first time only
  void userKeyDown(int keyCode, int shift = 0);
  void userMouseDown(int button, int shift, float x, float y);
  void userClose();
  void userTerminate();  // the end of the window: the application is ending

  void setObserver(FormObserver* observer) { observer_ = observer; }
  FormObserver* observer() const { return observer_; }

 private:
  friend class Control;
  friend class MenuItem;
  void surfaceChanged(const SurfaceChange& change) override;

  std::string caption_;
  TwipRect clientArea_;
  Surface surface_;
  std::vector<Control*> controls_;
  std::vector<MenuItem*> menuBar_;
  std::vector<MenuItem*> menuItems_;
  FormObserver* observer_ = nullptr;
  bool activated_ = false;
};

}  // namespace quill
