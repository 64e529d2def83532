#include "app/platform/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace suizo::platform {

namespace {

QClipboard* Board() {
  return QGuiApplication::instance() != nullptr ? QGuiApplication::clipboard() : nullptr;
}

}  // namespace

QString Clipboard::Text() {
  const QClipboard* board = Board();
  return board != nullptr ? board->text() : QString();
}

void Clipboard::SetText(const QString& text) {
  QClipboard* board = Board();
  if (board == nullptr) return;
  if (text.isEmpty())
    board->clear();
  else
    board->setText(text);
}

Clipboard::Saved::Saved() {
  const QClipboard* board = Board();
  const QMimeData* data = board != nullptr ? board->mimeData() : nullptr;
  if (data != nullptr && data->hasText()) text_ = data->text();
}

Clipboard::Saved::~Saved() {
  QClipboard* board = Board();
  if (board == nullptr) return;
  if (text_.has_value() && !text_->isEmpty())
    board->setText(*text_);
  else
    board->clear();
}

}  // namespace suizo::platform
