// A started window on the fake platform, as the user first sees it.
#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <memory>
#include <string>

#include "window/main_window.h"
#include "support/fake_platform.h"

namespace quill::testing {

// Clears a text box and types the text into it one key at a time, as a
// person would: each key changes the text, then is released.
inline void retype(Control& box, const std::string& text) {
  constexpr int kBackspace = 8;
  box.userEdit("");
  box.userKeyUp(kBackspace);
  for (std::size_t typed = 1; typed <= text.size(); ++typed) {
    box.userEdit(text.substr(0, typed));
    box.userKeyUp(std::toupper(static_cast<unsigned char>(text[typed - 1])));
  }
}

// Every control's and menu item's state, and the title: what must be as it
// was after a run or a practice ends. A menu item counts as shown only when
// every menu above it is shown too.
inline std::string pageState(const MainWindow& w) {
  std::string state = w.caption() + "\n";
  for (const Control* c : w.controls()) {
    state += c->name() + (c->visible() ? " V" : " -") + (c->enabled() ? "E " : "- ") + std::to_string(c->value()) +
             c->text() + "\n";
  }
  for (const MenuItem* item : w.menuItems()) {
    bool shown = true;
    for (const MenuItem* m = item; m != nullptr; m = m->parent()) shown = shown && m->visible();
    state += item->name() + (shown ? " V" : " -") + (item->enabled() ? "E" : "-") + (item->checked() ? "C\n" : "-\n");
  }
  return state;
}

// Practice: whether a puzzle is in play, and a press in the middle of a cell.
inline bool playing(const MainWindow& w) {
  return w.caption().rfind("Number of", 0) == 0 && w.runState() == RunState::Puzzle;
}
inline void clickCell(MainWindow& w, int x, int y) {
  w.userMouseDown(1, 0, static_cast<float>(8 + (x - 1) * w.cellWidth() + w.cellWidth() / 2),
                  static_cast<float>(8 + (y - 1) * page::kRowHeight + 9));
}

// A window on a fake platform of the seed, started as the user first sees it.
struct StartedWindow {
  explicit StartedWindow(std::uint64_t seed = 1) : platform(seed) {
    platform.attach(window.get());
    w.userActivate();
  }
  FakePlatform platform;
  std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(platform);  // large: the grids live on the heap
  MainWindow& w = *window;
};

}  // namespace quill::testing
