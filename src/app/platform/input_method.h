// Only the search box takes Japanese input: the input method is cut from the
// window and every other control at load.
#pragma once

class QWidget;

namespace suizo::platform {

// Turns the input method off for `window` and all its widgets but the one
// named "Combo1" and the parts inside it. Call after the window is built:
// widgets added later are not covered.
void InputMethodOnlyInCombo1(QWidget* window);

}  // namespace suizo::platform
