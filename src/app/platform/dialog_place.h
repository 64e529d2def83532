// Where a small dialog of a view appears: centred on the view's collection
// strip `Picture3` (or on the view when it shows none), kept on the screen,
// with the pointer on its confirming button so that Enter or a click ends it.
#pragma once

#include <QWidget>

namespace suizo::platform {

void CentreOnOpener(QWidget& dialog, const QWidget* opener);
void PointerOn(const QWidget& button);

}  // namespace suizo::platform
