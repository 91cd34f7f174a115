// The fonts of the window: controls and drawing.
#pragma once

#include <QFont>

namespace quill::qt {

// Liberation Sans. Controls use 10 px, the size at which every one-line
// caption fits its designed width as the old 8.25 pt captions did. The
// drawing's 9.75 pt is 13 px, so a digit (7.2 px) fits the 8 pixels per
// character that the cell layout assumes.
QFont controlFont();
QFont drawingFont();

}  // namespace quill::qt
