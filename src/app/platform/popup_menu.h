// `Menu1`, the program's own pop-up menu: a small borderless window drawn by
// hand, one for every view. It shows what its `MenuState` offers, never takes
// the activation from the window it serves, and goes at a choice, at a press
// anywhere else, or when told. What a choice does is the owner's business.
#pragma once

#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <array>

#include "core/reader/context_menu.h"

namespace suizo::platform {

class PopupMenu : public QWidget {
  Q_OBJECT

 public:
  explicit PopupMenu(const reader::MenuState& menu, QWidget* owner = nullptr);
  ~PopupMenu() override;

  // Closes any open menu, then shows a new one at `globalPos` (the cursor) on
  // behalf of `owner`. It deletes itself once closed.
  static PopupMenu* ShowAt(const reader::MenuState& menu, QPoint globalPos,
                           QWidget* owner = nullptr);
  // The menu that is open, or null: while there is one, a key other than Esc
  // in a pane closes it and goes no further.
  static PopupMenu* Open();
  // Closes the open menu; false when none was open.
  static bool CloseMenu();

  // Opens at `globalPos`, to the left of or above it where the screen's work
  // area would otherwise cut it off.
  void MoveMe(QPoint globalPos);
  void Close();

  const reader::MenuState& State() const { return menu_; }
  QWidget* Owner() const { return owner_; }
  // Where item n (1 to 8) is drawn; empty for anything else.
  QRect ItemRect(int n) const;
  bool IsEnabled(int n) const;
  // The item at `pos` in the menu's own coordinates, 0 for none.
  int ItemAt(QPoint pos) const;
  // The item drawn highlighted, 0 for none.
  int Highlighted() const { return highlighted_; }

  QSize sizeHint() const override { return size_; }

 signals:
  // Item n was clicked; the menu closes right after.
  void chosen(int n);
  void closed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Layout();
  void Highlight(int n);
  void Finish();

  reader::MenuState menu_;
  QPointer<QWidget> owner_;
  std::array<QRect, reader::kMenuItemCount> rects_{};
  QSize size_;
  int highlighted_ = 0;
  bool open_ = false;
};

}  // namespace suizo::platform
