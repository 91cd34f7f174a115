// A started window on the fake platform, as the user first sees it.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "main_window.h"
#include "support/fake_platform.h"

namespace quill::testing {

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
