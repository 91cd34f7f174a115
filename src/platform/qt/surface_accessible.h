// The drawing surface as assistive technology sees it: besides the controls
// on it, each grid drawn is a table of its cells, a cell's text its number or
// "blank"; pressing a cell is a mouse click at its centre, so that practice
// can be played with a screen reader.
#pragma once

class QWidget;

namespace quill::qt {

// Makes every SurfaceWidget offer its grids as tables.
void installSurfaceAccessibility();
// Tells assistive technology that the surface's drawing changed.
void surfaceDrawingChanged(QWidget* surface);

}  // namespace quill::qt
