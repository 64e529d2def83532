// The program's pop-up menu for a pane or a text box of any window: what
// it offers (a lookup into a view this build has no window for is greyed)
// and what a choice does, the lookups going through the jumps.
#pragma once

#include <QPoint>
#include <QWidget>

#include "core/reader/context_menu.h"

namespace suizo::app {

class Program;

// Shows the menu at `at` over `over` for `target`, on behalf of `owner`.
void ShowProgramMenu(Program& program, QWidget* over, QWidget* target, QPoint at,
                     const reader::MenuOwner& owner);

}  // namespace suizo::app
