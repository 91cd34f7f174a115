// The window's two fonts.
#include "platform/qt/fonts.h"

namespace quill::qt {

namespace {
QFont liberationSans(int pixelSize) {
  QFont font("Liberation Sans");
  font.setPixelSize(pixelSize);
  return font;
}
}  // namespace

QFont controlFont() { return liberationSans(10); }
QFont drawingFont() { return liberationSans(13); }

}  // namespace quill::qt
