// Every control's and menu item's state, to compare a page before and after
// a run or a practice.
#pragma once

#include <map>
#include <string>

#include "window/main_window.h"

namespace quill::testing {

inline std::map<std::string, std::string> pageState(const MainWindow& w) {
  std::map<std::string, std::string> state;
  for (const Control* control : w.controls()) {
    state[control->name()] = std::string(control->visible() ? "V" : "-") + (control->enabled() ? "E" : "-") +
                             std::to_string(control->value()) + control->text();
  }
  // A menu item counts as shown only when every menu above it is shown too.
  for (const MenuItem* item : w.menuItems()) {
    bool shown = true;
    for (const MenuItem* m = item; m != nullptr; m = m->parent()) shown = shown && m->visible();
    state[item->name()] = std::string(shown ? "V" : "-") + (item->enabled() ? "E" : "-") +
                          (item->checked() ? "C" : "-");
  }
  return state;
}

inline std::string differences(const std::map<std::string, std::string>& now,
                        const std::map<std::string, std::string>& before) {
  std::string found;
  for (const auto& [name, state] : now) {
    if (before.at(name) != state) found += name + ": " + before.at(name) + " -> " + state + "\n";
  }
  return found;
}

}  // namespace quill::testing
