// Keys as the core's models know them: the codes and shift bits of the
// original key events (Enter 13, the arrows 37 to 40, letters by their
// capital, F1 112).
#pragma once

#include <Qt>

namespace suizo::platform {

// The code of a Qt key, or 0 for a key the models do not know.
int KeyCode(int qtKey);
// The shift state: 1 Shift, 2 Ctrl, 4 Alt.
int ShiftState(Qt::KeyboardModifiers modifiers);

}  // namespace suizo::platform
