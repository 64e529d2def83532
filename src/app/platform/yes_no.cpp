#include "app/platform/yes_no.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/platform/plain_text.h"
#include "app/platform/toast.h"

namespace suizo::platform {

YesNoDialog::YesNoDialog(const QString& question, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("Form10"));
  setWindowTitle(QStringLiteral("確認"));
  setModal(true);

  auto* text = PlainLabel(question, this);
  text->setObjectName(QStringLiteral("Text1"));
  text->setAlignment(Qt::AlignCenter);
  text->setWordWrap(true);
  text->setTextFormat(Qt::PlainText);
  text->setMinimumWidth(260);

  auto* yes = new QPushButton(QStringLiteral("はい"), this);
  yes->setObjectName(QStringLiteral("Command2"));
  auto* no = new QPushButton(QStringLiteral("いいえ"), this);
  no->setObjectName(QStringLiteral("Command1"));
  yes->setDefault(true);
  connect(yes, &QPushButton::clicked, this, [this] {
    answer_ = 1;
    accept();
  });
  connect(no, &QPushButton::clicked, this, [this] {
    answer_ = 0;
    reject();
  });
  // Esc and every other way out leave the answer at 0.
  connect(this, &QDialog::rejected, this, [this] { answer_ = 0; });

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(yes);
  buttons->addSpacing(16);
  buttons->addWidget(no);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 14, 16, 12);
  layout->addWidget(text);
  layout->addSpacing(10);
  layout->addLayout(buttons);
  yes->setFocus();
}

bool YesNoDialog::Ask(QWidget* over, const QString& question) {
  YesNoDialog dialog(question, over);
  CentreOn(&dialog, over);
  dialog.exec();
  return dialog.Answer() == 1;
}

bool YesNoDialog::AskAt(QPoint topLeft, const QString& question, QWidget* parent) {
  YesNoDialog dialog(question, parent);
  dialog.adjustSize();
  dialog.move(topLeft);
  dialog.exec();
  return dialog.Answer() == 1;
}

void YesNoDialog::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QLinearGradient fade(rect().topLeft(), rect().bottomLeft());
  fade.setColorAt(0, palette().color(QPalette::Light));
  fade.setColorAt(1, palette().color(QPalette::Midlight));
  painter.fillRect(rect(), fade);
  painter.setPen(palette().color(QPalette::Dark));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace suizo::platform
