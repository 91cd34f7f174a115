// The window's fonts, palette and style.
#include "qt/appearance.h"

#include <QStyle>
#include <QStyleFactory>

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

QPalette windowPalette() {
  const QColor window(239, 239, 239);
  const QColor disabledText(160, 160, 160);
  QPalette palette(Qt::black, window, Qt::white, QColor(160, 160, 160), QColor(190, 190, 190), Qt::black,
                   Qt::white, Qt::white, window);
  palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
  palette.setColor(QPalette::ToolTipText, Qt::black);
  palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, disabledText);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, disabledText);
  }
  return palette;
}

QStyle* windowStyle() {
  // One style for the whole window, made once and kept for the program's life.
  static QStyle* const style = QStyleFactory::create("Fusion");
  return style;
}

}  // namespace quill::qt
