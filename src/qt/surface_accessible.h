// The drawing surface as assistive technology sees it: besides the controls
// on it, each grid drawn is a table of its cells, a cell's name its number or
// "blank"; pressing a cell is a mouse click at its centre, and the cell under
// the keyboard's cell cursor is the focused one, so that practice can be
// played with a screen reader.
#pragma once

#include "platform/surface.h"

namespace quill::qt {

class SurfaceWidget;

// Makes every SurfaceWidget offer its grids as tables.
void installSurfaceAccessibility();
// Tells assistive technology what changed: tables come and go with the
// grids, a cell's name changes, the cell cursor moves.
void surfaceAccessibilityChanged(SurfaceWidget* surface, const SurfaceChange& change);
// The surface took the keys: the cell under the cursor has the focus.
void surfaceFocused(SurfaceWidget* surface);

}  // namespace quill::qt
