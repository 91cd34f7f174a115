// Quillion in a web page: the window, its runs, pages and practice, built
// from the same core as the desktop window; `--seed N` (from the page's
// address) seeds the draws.
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

#include "web/web_platform.h"
#include "web/web_view.h"
#include "window/main_window.h"

namespace {

// A whole number from 0 to 2^64 - 1 in decimal digits; nothing otherwise.
std::optional<std::uint64_t> seedFrom(int argc, char** argv) {
  for (int i = 1; i + 1 < argc; ++i) {
    if (std::strcmp(argv[i], "--seed") != 0) continue;
    const char* digits = argv[i + 1];
    if (*digits == '\0') return std::nullopt;
    std::uint64_t seed = 0;
    for (const char* c = digits; *c != '\0'; ++c) {
      if (*c < '0' || *c > '9') return std::nullopt;
      const auto digit = static_cast<std::uint64_t>(*c - '0');
      if (seed > (UINT64_MAX - digit) / 10) return std::nullopt;
      seed = seed * 10 + digit;
    }
    return seed;
  }
  return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  quill::web::WebPlatform platform(seedFrom(argc, argv));
  auto window = std::make_unique<quill::MainWindow>(platform);
  quill::web::WebView view(*window);
  platform.attach(&view);
  view.show();
  for (;;) platform.waitForEvents();
}
