#include "app/platform/plain_text.h"

#include <QTextDocument>

namespace suizo::platform {

QLabel* PlainLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* PlainLabel(QWidget* parent) {
  return PlainLabel(QString(), parent);
}

QString PlainTip(const QString& text) {
  return text.isEmpty() ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

void ShowMessage(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                 const QString& text) {
  QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace suizo::platform
