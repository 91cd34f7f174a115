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

class WindowTest : public ::testing::Test {
 protected:
  explicit WindowTest(std::uint64_t seed = 1)
      : platform(seed), window(std::make_unique<MainWindow>(platform)), w(*window) {
    platform.attach(window.get());
    w.userActivate();
  }

  FakePlatform platform;
  std::unique_ptr<MainWindow> window;  // large: the grids live on the heap
  MainWindow& w;
};

}  // namespace quill::testing
