// Text from the data in Qt's own widgets. A label, a tooltip or a message
// box would take text that looks like markup as rich text, and rich text
// loads the images it names, local files too: these show it as it is.
#pragma once

#include <QLabel>
#include <QMessageBox>
#include <QString>

namespace suizo::platform {

QLabel* PlainLabel(const QString& text, QWidget* parent);
QLabel* PlainLabel(QWidget* parent);

// A tooltip's text that shows exactly as written.
QString PlainTip(const QString& text);

// A modal message box whose text shows exactly as written.
void ShowMessage(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                 const QString& text);

}  // namespace suizo::platform
