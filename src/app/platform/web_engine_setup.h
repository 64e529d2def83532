// What must happen before the application object exists: the program's own
// URL scheme, under which every pane's frame is written so that the frames'
// relative links resolve and reach the window, and the browser's sandbox,
// which refuses to run as root.
#pragma once

#include <QByteArray>

namespace suizo::platform {

// The scheme of the panes' base URL: a link "D17" in a frame written under
// "suizo://pane/" navigates to "suizo://pane/D17", which the window reads.
inline const QByteArray kPaneScheme = QByteArrayLiteral("suizo");

// Registers the scheme and, only when the program runs as root, turns the
// browser's sandbox off. Call once, before QApplication.
void PrepareWebEngine();

}  // namespace suizo::platform
