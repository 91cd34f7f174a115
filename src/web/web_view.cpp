// The form as JSON for the page, the drawing as flat numbers, and events back.
#include "web/web_view.h"

#include <algorithm>
#include <cstdio>

#include "construction/page_geometry.h"
#include "web/page_bridge.h"

namespace quill::web {

namespace {

constexpr int pixels(int twips) { return twips / kTwipsPerPixel; }

// A text as a JSON string literal.
std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const unsigned char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", c);
      out += escape;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

std::string colour(const std::optional<Rgb>& c) {
  if (!c) return "null";
  char hex[16];
  std::snprintf(hex, sizeof hex, "\"#%02x%02x%02x\"", c->red, c->green, c->blue);
  return hex;
}

std::string flag(bool on) { return on ? "true" : "false"; }

std::string rectJson(const TwipRect& r) {
  return "[" + std::to_string(pixels(r.left)) + "," + std::to_string(pixels(r.top)) + "," +
         std::to_string(pixels(r.width)) + "," + std::to_string(pixels(r.height)) + "]";
}

std::string illustrationJson(const std::optional<Illustration>& illustration) {
  if (!illustration) return "null";
  std::string marks;
  for (const MarkedCell& m : illustration->marks) {
    if (!marks.empty()) marks += ",";
    marks += "[" + std::to_string(m.column) + "," + std::to_string(m.row) + "," +
             std::to_string(static_cast<int>(m.style)) + "]";
  }
  return "{\"white\":" + flag(illustration->whiteBackground) + ",\"marks\":[" + marks + "]}";
}

std::string controlJson(const Control& c) {
  return "{\"name\":" + quoted(c.name()) + ",\"kind\":" + std::to_string(static_cast<int>(c.kind())) +
         ",\"text\":" + quoted(c.text()) + ",\"rect\":" + rectJson(c.rect()) + ",\"background\":" +
         colour(c.background()) + ",\"foreground\":" + colour(c.foreground()) + ",\"visible\":" + flag(c.visible()) +
         ",\"enabled\":" + flag(c.enabled()) + ",\"value\":" + std::to_string(c.value()) +
         ",\"maxLength\":" + std::to_string(c.maxLength()) + ",\"accessibleName\":" + quoted(c.accessibleName()) +
         ",\"accessibleDescription\":" + quoted(c.accessibleDescription()) +
         ",\"illustration\":" + illustrationJson(c.illustration()) + "}";
}

std::string menuJson(const MenuItem& item, const std::vector<MenuItem*>& all) {
  std::string children;
  for (const MenuItem* child : item.children()) {
    if (!children.empty()) children += ",";
    children += menuJson(*child, all);
  }
  const auto index = std::find(all.begin(), all.end(), &item) - all.begin();
  return "{\"index\":" + std::to_string(index) + ",\"name\":" + quoted(item.name()) +
         ",\"caption\":" + quoted(item.caption()) + ",\"visible\":" + flag(item.visible()) +
         ",\"enabled\":" + flag(item.enabled()) + ",\"checked\":" + flag(item.checked()) + ",\"children\":[" +
         children + "]}";
}

// Operations as six numbers each (a box's colour as its red, green and blue
// in one number), and the texts of the text operations, each ended by a unit
// separator.
void flatten(std::vector<DrawOp>::const_iterator from, std::vector<DrawOp>::const_iterator to,
             std::vector<float>& numbers, std::string& texts) {
  numbers.clear();
  texts.clear();
  for (auto op = from; op != to; ++op) {
    const bool text = op->kind == DrawOp::Kind::Text;
    const PaletteColour c = paletteColour(op->colour);
    const float rgb = static_cast<float>((c.red << 16) | (c.green << 8) | c.blue);
    numbers.insert(numbers.end(), {text ? 1.0f : 0.0f, op->x1, op->y1, op->x2, op->y2, rgb});
    if (text) texts += op->text + '\x1f';
  }
}

}  // namespace

WebView::WebView(Form& form) : form_(form) {}

WebView::~WebView() { form_.setObserver(nullptr); }

void WebView::show() {
  std::string controls, menus;
  for (const Control* c : form_.controls()) controls += (controls.empty() ? "" : ",") + controlJson(*c);
  for (const MenuItem* top : form_.menuBar()) menus += (menus.empty() ? "" : ",") + menuJson(*top, form_.menuItems());
  const TwipRect& area = form_.clientArea();
  page_build(("{\"caption\":" + quoted(form_.caption()) + ",\"width\":" + std::to_string(pixels(area.width)) +
              ",\"height\":" + std::to_string(pixels(area.height)) + ",\"controls\":[" + controls +
              "],\"menus\":[" + menus + "]}")
                 .c_str());
  form_.setObserver(this);
  form_.userActivate();
}

void WebView::paint() {
  const Surface& surface = form_.surface();
  const std::vector<DrawOp>& ops = surface.ops();
  if (cleared_ || painted_ != ops.size()) {
    flatten(ops.begin() + static_cast<std::ptrdiff_t>(painted_), ops.end(), numbers_, texts_);
    page_draw(cleared_ ? 1 : 0, numbers_.data(), static_cast<int>(numbers_.size() / 6), texts_.c_str());
    painted_ = ops.size();
    cleared_ = false;
  }
}

void WebView::describeGrids() {
  const Surface& surface = form_.surface();
  for (std::size_t i = 0; i < gridsToTell_.size() && i < surface.grids().size(); ++i) {
    if (!gridsToTell_[i]) continue;
    gridsToTell_[i] = false;
    const GridArea& g = surface.grids()[i];
    texts_.clear();
    for (int row = 0; row < g.rows; ++row) {
      for (int column = 0; column < g.columns; ++column) texts_ += surface.spokenName({i, row, column}) + '\x1f';
    }
    page_grid(static_cast<int>(i), g.left, g.top, g.cellWidth, g.cellHeight, g.columns, g.rows, texts_.c_str());
  }
}

std::size_t WebView::printPage() {
  const std::vector<DrawOp>& ops = form_.surface().ops();
  std::vector<float> numbers;
  std::string texts, controls;
  flatten(ops.begin(), ops.end(), numbers, texts);
  for (const Control* c : form_.controls()) {
    if (c->visible()) controls += (controls.empty() ? "" : ",") + controlJson(*c);
  }
  const page::PrintedArea area = page::printedArea(ops);
  page_print(numbers.data(), static_cast<int>(numbers.size() / 6), texts.c_str(), ("[" + controls + "]").c_str(),
             static_cast<float>(area.width), static_cast<float>(area.height));
  return numbers.size() * sizeof(float) + texts.size() + controls.size();
}

bool WebView::handleEvents() {
  bool any = false;
  double values[5];
  while (const int kind = page_next_event(values)) {
    eventText_.assign(static_cast<std::size_t>(values[4]) + 1, '\0');
    page_event_text(eventText_.data(), static_cast<int>(eventText_.size()));
    eventText_.resize(static_cast<std::size_t>(values[4]));
    handle(kind, values, eventText_);
    any = true;
  }
  return any;
}

void WebView::handle(int kind, const double* values, const std::string& text) {
  const auto controlAt = [&](double index) -> Control* {
    const auto& all = form_.controls();
    return index >= 0 && index < static_cast<double>(all.size()) ? all[static_cast<std::size_t>(index)] : nullptr;
  };
  const int key = static_cast<int>(values[1]), shift = static_cast<int>(values[2]);
  Control* control = controlAt(values[0]);
  switch (static_cast<PageEvent>(kind)) {
    case PageEvent::Activate:
      form_.userActivate();
      return;
    case PageEvent::Click:
      if (control == nullptr) return;
      control->userClick();
      break;
    case PageEvent::Edit:
      if (control == nullptr) return;
      control->userEdit(text);
      break;
    case PageEvent::KeyDown:
      // A key typed into a control the window has since hidden or disabled
      // goes to the window, as the focus would have by then.
      if (control == nullptr || !control->visible() || !control->enabled()) return form_.userKeyDown(key, shift);
      control->userKeyDown(key, shift);
      break;
    case PageEvent::KeyUp:
      if (control == nullptr) return;
      control->userKeyUp(key, shift);
      break;
    case PageEvent::MenuClick: {
      const auto& items = form_.menuItems();
      if (values[0] < 0 || values[0] >= static_cast<double>(items.size())) return;
      MenuItem& item = *items[static_cast<std::size_t>(values[0])];
      item.userClick();
      menuChanged(item);  // the check mark is the model's, whatever the page did with it
      return;
    }
    case PageEvent::MouseDown:
      form_.userMouseDown(static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<float>(values[2]),
                          static_cast<float>(values[3]));
      return;
    case PageEvent::Close:
      form_.userClose();
      return;
    case PageEvent::None:
      return;
  }
  // The model may have refused or rewritten what the page shows already.
  controlChanged(*control);
}

int WebView::indexOf(const Control& control) const {
  const auto& all = form_.controls();
  return static_cast<int>(std::find(all.begin(), all.end(), &control) - all.begin());
}

int WebView::indexOf(const MenuItem& item) const {
  const auto& all = form_.menuItems();
  return static_cast<int>(std::find(all.begin(), all.end(), &item) - all.begin());
}

void WebView::controlChanged(const Control& control) { page_control(indexOf(control), controlJson(control).c_str()); }

void WebView::focusRequested(const Control& control) { page_focus(indexOf(control)); }

void WebView::menuChanged(const MenuItem& item) {
  page_menu(indexOf(item), item.visible() ? 1 : 0, item.enabled() ? 1 : 0, item.checked() ? 1 : 0);
}

void WebView::captionChanged(const std::string& caption) { page_caption(caption.c_str()); }

void WebView::surfaceChanged(const SurfaceChange& change) {
  const Surface& surface = form_.surface();
  switch (change.kind) {
    case SurfaceChange::Kind::GridAdded:
    case SurfaceChange::Kind::CellNamed:
      gridsToTell_.resize(surface.grids().size());
      gridsToTell_[change.kind == SurfaceChange::Kind::GridAdded ? surface.grids().size() - 1 : change.cell.grid] = true;
      break;
    case SurfaceChange::Kind::Cleared:
      gridsToTell_.clear();
      cleared_ = true;
      painted_ = 0;
      page_cursor(-1, 0, 0, 0, 0, 0, 0);
      break;
    case SurfaceChange::Kind::Hint: {
      std::vector<float> boxes;
      for (const GridCell& marked : surface.hintMarks()) {
        const CellBox box = cellBox(surface.grids()[marked.grid], marked.row, marked.column);
        boxes.insert(boxes.end(), {box.left, box.top, box.width, box.height});
      }
      page_hint(boxes.data(), static_cast<int>(boxes.size() / 4), static_cast<int>(change.cell.grid), change.cell.row,
                change.cell.column, surface.cellDescription(change.cell).c_str());
      break;
    }
    case SurfaceChange::Kind::Cursor:
      if (const std::optional<GridCell> cursor = surface.cellCursor()) {
        const CellBox box = cellBox(surface.grids()[cursor->grid], cursor->row, cursor->column);
        page_cursor(static_cast<int>(cursor->grid), cursor->row, cursor->column, box.left, box.top, box.width,
                    box.height);
      } else {
        page_cursor(-1, 0, 0, 0, 0, 0, 0);
      }
      break;
    default:
      break;
  }
}

void WebView::surfaceFocusRequested() { page_focus(-1); }

}  // namespace quill::web
