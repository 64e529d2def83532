#include "app/platform/keys.h"

namespace suizo::platform {

int KeyCode(int qtKey) {
  switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Escape:
      return 27;
    case Qt::Key_Space:
      return 32;
    case Qt::Key_PageUp:
      return 33;
    case Qt::Key_PageDown:
      return 34;
    case Qt::Key_End:
      return 35;
    case Qt::Key_Home:
      return 36;
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    default:
      break;
  }
  // Digits and capitals share their codes with Qt's.
  if ((qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9) || (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z))
    return qtKey;
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12) return 112 + (qtKey - Qt::Key_F1);
  return 0;
}

int ShiftState(Qt::KeyboardModifiers modifiers) {
  return ((modifiers & Qt::ShiftModifier) ? 1 : 0) | ((modifiers & Qt::ControlModifier) ? 2 : 0) |
         ((modifiers & Qt::AltModifier) ? 4 : 0);
}

}  // namespace suizo::platform
