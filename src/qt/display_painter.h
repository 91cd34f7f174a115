// Painting a display list with a QPainter, for the screen and the printed page alike.
#pragma once

#include <vector>

#include "platform/surface.h"

class QPainter;

namespace quill::qt {

// Paints a display list with the painter's current transformation. What each
// pixel ends up showing is what painting the operations one by one in order
// would show.
void paintDisplayList(QPainter& painter, const std::vector<DrawOp>& drawing);

}  // namespace quill::qt
