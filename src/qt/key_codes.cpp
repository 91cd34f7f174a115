// The one table from Qt key values to classic virtual-key numbers.
#include "qt/key_codes.h"

#include <array>
#include <utility>

namespace quill::qt {

int classicKeyCode(int qtKey) {
  // Letters and digits share their code with upper-case ASCII in both schemes.
  if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)) {
    return qtKey;
  }
  static constexpr std::array<std::pair<int, int>, 24> table{{
      {Qt::Key_Return, 13}, {Qt::Key_Enter, 13},  {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},
      {Qt::Key_Escape, 27}, {Qt::Key_Space, 32},  {Qt::Key_PageUp, 33},   {Qt::Key_PageDown, 34},
      {Qt::Key_End, 35},    {Qt::Key_Home, 36},   {Qt::Key_Left, 37},     {Qt::Key_Up, 38},
      {Qt::Key_Right, 39},  {Qt::Key_Down, 40},   {Qt::Key_Insert, 45},   {Qt::Key_Delete, 46},
      {Qt::Key_Shift, 16},  {Qt::Key_Control, 17}, {Qt::Key_Alt, 18},     {Qt::Key_Minus, 189},
      {Qt::Key_Period, 190}, {Qt::Key_Comma, 188}, {Qt::Key_Plus, 187},   {Qt::Key_F1, 112},
  }};
  for (const auto& [qt, classic] : table) {
    if (qt == qtKey) return classic;
  }
  return 0;
}

int classicShift(Qt::KeyboardModifiers modifiers) {
  int shift = 0;
  if (modifiers & Qt::ShiftModifier) shift += 1;
  if (modifiers & Qt::ControlModifier) shift += 2;
  if (modifiers & Qt::AltModifier) shift += 4;
  return shift;
}

int classicButton(Qt::MouseButton button) {
  switch (button) {
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 1;
  }
}

}  // namespace quill::qt
