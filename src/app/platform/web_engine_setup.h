// What must happen around the application object's making: before it, the
// program's own URL scheme, under which every pane's frame is written so that
// the frames' relative links resolve and reach the window, and the browser's
// sandbox, which refuses to run as root; after it, the choice of renderer.
#pragma once

#include <string_view>

#include <QByteArray>

namespace suizo::platform {

// The scheme of the panes' base URL: a link "D17" in a frame written under
// "suizo://pane/" navigates to "suizo://pane/D17", which the window reads.
inline const QByteArray kPaneScheme = QByteArrayLiteral("suizo");

// Registers the scheme and, only when the program runs as root, turns the
// browser's sandbox off. Call once, before QApplication.
void PrepareWebEngine();

// Whether an OpenGL renderer's name is one of the rasterizers that draw in
// software (a virtual machine, a remote session, a display without a GPU).
bool SoftwareRasterizer(std::string_view glRenderer);

// Once the application exists and before the first page: where the desktop's
// OpenGL draws in software, Qt's own software renderer draws the pages in a
// fraction of the time, since every page turn otherwise goes through the
// emulated GPU. A renderer the user chose in the environment stands.
void ChooseRenderer();

}  // namespace suizo::platform
