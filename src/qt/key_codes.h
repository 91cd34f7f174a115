// Qt keys, buttons and modifiers as the classic numbers the handlers test.
#pragma once

#include <Qt>

namespace quill::qt {

// Enter 13, Up 38, Down 40, letters and digits their upper-case ASCII; 0 for
// keys no handler knows.
int classicKeyCode(int qtKey);
// 1 Shift, 2 Ctrl, 4 Alt, added together.
int classicShift(Qt::KeyboardModifiers modifiers);
// 1 left, 2 right, 4 middle.
int classicButton(Qt::MouseButton button);

}  // namespace quill::qt
