#include "app/platform/popup_menu.h"

#include <QApplication>
#include <QApplicationStateChangeEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "app/platform/qt_text.h"

namespace suizo::platform {

namespace {

constexpr int kSideMargin = 20;  // 300 twips
constexpr int kItemPadding = 6;
constexpr int kBorder = 1;
constexpr std::u16string_view kSeparator = u"-";

// At most one menu is open in the whole program.
QPointer<PopupMenu>& Current() {
  static QPointer<PopupMenu> current;
  return current;
}

bool Valid(int n) {
  return n >= 1 && n < reader::kMenuItemCount;
}

}  // namespace

PopupMenu::PopupMenu(const reader::MenuState& menu, QWidget* owner)
    : QWidget(owner, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      menu_(menu),
      owner_(owner) {
  setObjectName(QStringLiteral("Menu1"));
  // The reader keeps the activation and the keyboard all the while.
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFocusPolicy(Qt::NoFocus);
  setMouseTracking(true);
  Layout();
}

PopupMenu::~PopupMenu() {
  if (open_) qApp->removeEventFilter(this);
}

PopupMenu* PopupMenu::ShowAt(const reader::MenuState& menu, QPoint globalPos, QWidget* owner) {
  auto* popup = new PopupMenu(menu, owner);
  popup->setAttribute(Qt::WA_DeleteOnClose);
  popup->MoveMe(globalPos);
  popup->show();
  return popup;
}

PopupMenu* PopupMenu::Open() {
  return Current();
}

bool PopupMenu::CloseMenu() {
  PopupMenu* open = Current();
  if (open == nullptr) return false;
  open->Close();
  return true;
}

void PopupMenu::MoveMe(QPoint globalPos) {
  QScreen* screen = QGuiApplication::screenAt(globalPos);
  if (screen == nullptr && owner_ != nullptr) screen = owner_->screen();
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  QRect place(globalPos, size());
  if (screen != nullptr) {
    const QRect area = screen->availableGeometry();
    if (place.right() > area.right()) place.moveRight(globalPos.x());
    if (place.bottom() > area.bottom()) place.moveBottom(globalPos.y());
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
  }
  move(place.topLeft());
}

void PopupMenu::Close() {
  close();
}

QRect PopupMenu::ItemRect(int n) const {
  return Valid(n) ? rects_[static_cast<std::size_t>(n)] : QRect();
}

bool PopupMenu::IsEnabled(int n) const {
  if (!Valid(n)) return false;
  const auto i = static_cast<std::size_t>(n);
  return menu_.MenuEnabled[i] == 1 && menu_.MenuItems[i] != kSeparator;
}

int PopupMenu::ItemAt(QPoint pos) const {
  for (int n = 1; n < reader::kMenuItemCount; ++n) {
    if (rects_[static_cast<std::size_t>(n)].contains(pos)) return n;
  }
  return 0;
}

void PopupMenu::Layout() {
  const QFontMetrics metrics(font());
  const QSize sample = metrics.size(Qt::TextSingleLine, QStringLiteral("講義"));
  const int itemHeight = sample.height() + kItemPadding;
  const int lineHeight = std::max(itemHeight / 2, 3);
  int textWidth = sample.width();
  for (int n = 1; n < reader::kMenuItemCount; ++n) {
    textWidth = std::max(
        textWidth, metrics.horizontalAdvance(Q(menu_.MenuItems[static_cast<std::size_t>(n)])));
  }
  const int width = textWidth + 2 * kSideMargin;
  int y = kBorder;
  for (int n = 1; n < reader::kMenuItemCount; ++n) {
    const auto i = static_cast<std::size_t>(n);
    const int h = menu_.MenuItems[i] == kSeparator ? lineHeight : itemHeight;
    rects_[i] = QRect(kBorder, y, width, h);
    y += h;
  }
  size_ = QSize(width + 2 * kBorder, y + kBorder);
  resize(size_);
}

void PopupMenu::Highlight(int n) {
  const int lit = IsEnabled(n) ? n : 0;
  if (lit == highlighted_) return;
  highlighted_ = lit;
  update();
}

void PopupMenu::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QPalette& colours = palette();
  painter.fillRect(rect(), colours.color(QPalette::Window));
  painter.setPen(colours.color(QPalette::Dark));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  for (int n = 1; n < reader::kMenuItemCount; ++n) {
    const auto i = static_cast<std::size_t>(n);
    const QRect item = rects_[i];
    if (menu_.MenuItems[i] == kSeparator) {
      const int y = item.center().y();
      painter.setPen(colours.color(QPalette::Mid));
      painter.drawLine(item.left() + kSideMargin / 2, y, item.right() - kSideMargin / 2, y);
      painter.setPen(colours.color(QPalette::Light));
      painter.drawLine(item.left() + kSideMargin / 2, y + 1, item.right() - kSideMargin / 2, y + 1);
      continue;
    }
    if (n == highlighted_) {
      painter.fillRect(item, colours.color(QPalette::Highlight));
      painter.setPen(colours.color(QPalette::HighlightedText));
    } else {
      painter.setPen(colours.color(IsEnabled(n) ? QPalette::Active : QPalette::Disabled,
                                   QPalette::WindowText));
    }
    painter.drawText(item.adjusted(kSideMargin, 0, -kSideMargin, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, Q(menu_.MenuItems[i]));
  }
}

void PopupMenu::mouseMoveEvent(QMouseEvent* event) {
  Highlight(ItemAt(event->position().toPoint()));
}

void PopupMenu::mousePressEvent(QMouseEvent* event) {
  Highlight(ItemAt(event->position().toPoint()));
  event->accept();
}

void PopupMenu::mouseReleaseEvent(QMouseEvent* event) {
  const int n = ItemAt(event->position().toPoint());
  if (IsEnabled(n)) {
    const QPointer<PopupMenu> alive(this);
    emit chosen(n);
    if (alive == nullptr) return;
  }
  // Whatever the release was over, the menu has had its click.
  Close();
}

void PopupMenu::leaveEvent(QEvent* event) {
  Highlight(0);
  QWidget::leaveEvent(event);
}

void PopupMenu::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    Layout();
    update();
  }
  QWidget::changeEvent(event);
}

void PopupMenu::showEvent(QShowEvent* event) {
  if (!open_) {
    if (PopupMenu* old = Current(); old != nullptr && old != this) old->Close();
    open_ = true;
    Current() = this;
    // Presses anywhere in the program are watched: one outside closes the menu.
    qApp->installEventFilter(this);
  }
  QWidget::showEvent(event);
}

void PopupMenu::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) Finish();
  QWidget::hideEvent(event);
}

void PopupMenu::Finish() {
  if (!open_) return;
  open_ = false;
  qApp->removeEventFilter(this);
  if (Current() == this) Current() = nullptr;
  highlighted_ = 0;
  emit closed();
}

bool PopupMenu::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::NonClientAreaMouseButtonPress: {
      const auto* press = static_cast<const QMouseEvent*>(event);
      if (watched != this && !frameGeometry().contains(press->globalPosition().toPoint())) {
        Close();
      }
      break;
    }
    // A click in another program takes the activation from this one.
    case QEvent::ApplicationStateChange:
      if (static_cast<const QApplicationStateChangeEvent*>(event)->applicationState() !=
          Qt::ApplicationActive) {
        Close();
      }
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace suizo::platform
