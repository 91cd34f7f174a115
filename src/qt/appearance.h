// How the window looks whatever the desktop's theme: its fonts, its light
// palette and the style its controls are drawn in.
#pragma once

#include <QFont>
#include <QPalette>

class QStyle;

namespace quill::qt {

// Liberation Sans. Controls use 10 px, the size at which every one-line
// caption fits its designed width. The drawing uses 13 px, so a digit
// (7.2 px) fits the 8 pixels per character that the cell layout assumes.
QFont controlFont();
QFont drawingFont();

// Black text on the light grey window, white text fields: the contrast the
// design's coloured labels and drawn numbers are made for, also under a dark
// desktop theme.
QPalette windowPalette();
// The style the controls are drawn in (Fusion, with the window's palette), so
// that no desktop style shrinks the text boxes below their designed size.
QStyle* windowStyle();

}  // namespace quill::qt
