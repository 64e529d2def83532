// `Form17`: the ten bookmarks of the reader that opened it, each with its
// title and first text, to read or to write. The window shows the core's
// `BookmarkDialog` and asks its questions through `Form10`. What a read
// bookmark asks of the owner comes out of `moved()`: the owner applies it.
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPoint>
#include <QPushButton>
#include <QString>
#include <array>
#include <functional>
#include <optional>
#include <string>

#include "core/corpus/bookmarks.h"
#include "core/corpus/corpus.h"
#include "core/corpus/profile.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/bookmark_dialog.h"
#include "core/reader/texts.h"

namespace suizo::app {

class BookmarkWindow : public QDialog {
  Q_OBJECT

 public:
  // The bookmarks of `kind` in `file` (suiten.ini), the owner's place for a
  // write, and `MovX`, `MovY`: the dialog's top left corner, global, where
  // the owner's `BMark` button put it. The width is kept under "@しおり".
  BookmarkWindow(corpus::BookmarkKind kind, corpus::ProfileFile& file, corpus::Corpus& corpus,
                 corpus::Selection& selection, const search::Position& place,
                 corpus::SettingsStore& store, QPoint mov, QWidget* owner = nullptr);

  const reader::BookmarkDialog& model() const { return model_; }

  // After the dialog closed: where a read bookmark leads the owner. With
  // `selectionChanged` the orders were rebuilt for the bookmark's
  // collection: every open window follows first, then the owner takes the
  // place and redraws. Nothing after a write or a plain close.
  const std::optional<reader::BookmarkMove>& moved() const { return moved_; }
  // The bookmark written, 1 to 10, or 0.
  int written() const { return written_; }
  // The fault the data gave while the bookmark's collection was placed.
  const std::string& failure() const { return failure_; }

  // `Form10`: true for "はい". Tests and the owner may put another here.
  std::function<bool(QWidget*, const QString&)> ask;

 protected:
  void showEvent(QShowEvent* event) override;
  void done(int result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void Fill();
  void Choose(int i);
  void Command1();
  void Command3();
  reader::Confirm Question();
  void Place();

  reader::BookmarkDialog model_;
  search::Position place_;
  corpus::SettingsStore& store_;
  std::array<QPushButton*, corpus::kBookmarks> bm_{};
  std::array<QLineEdit*, corpus::kBookmarks> text1_{};
  std::array<QLineEdit*, corpus::kBookmarks> text2_{};
  QPushButton* command1_ = nullptr;
  QPushButton* command2_ = nullptr;
  QPushButton* command3_ = nullptr;
  std::optional<reader::BookmarkMove> moved_;
  int written_ = 0;
  std::string failure_;
};

}  // namespace suizo::app
