#include "app/views/hit_list_window.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/proportional_resize.h"
#include "app/platform/qt_text.h"
#include "core/reader/reader_base.h"
#include "core/text/utf16.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

// The design size at 96 dots per inch; controls and the pane's zoom follow
// the window in proportion.
constexpr int kDesignWidth = 640;
constexpr int kDesignHeight = 680;
constexpr int kStripHeight = 30;

constexpr std::array<const char*, 4> kCommandCaptions = {"|◀", "◀", "▶", "▶|"};

}  // namespace

HitListWindow::HitListWindow(search::SearchEngine& engine, reader::Highlighter& highlighter,
                             const corpus::Corpus& corpus, const corpus::Selection& selection,
                             corpus::Settings& settings, const int& Nok,
                             corpus::SettingsStore& store, std::u16string_view ownerCaption,
                             std::u16string_view ownerId, QWidget* owner)
    : QWidget(owner, Qt::Window),
      model_(engine, highlighter, corpus, selection, settings, Nok),
      settings_(settings),
      store_(store),
      parent_(reader::HitListParent(ownerCaption, ownerId)) {
  setObjectName(QStringLiteral("Form4"));
  setWindowTitle(QStringLiteral("検索結果一覧"));
  setFocusPolicy(Qt::StrongFocus);
  resize(kDesignWidth, kDesignHeight);
  Build();
  // The frame is the same at every render: it is written once, and each
  // page goes into its body.
  web1_->WriteFrame(Q(reader::HitListFrame()));
  resize_ = new platform::ProportionalResize(this);
  connect(resize_, &platform::ProportionalResize::resized, this,
          [this](double widthRatio, double) { Zoom(widthRatio); });
  if (const auto g = corpus::ReadGeometry(store_, parent_)) {
    setGeometry(g->x, g->y, g->w, g->h);
  }
  new platform::KeptPlace(*this, store_, parent_);
  CheckOption();
}

void HitListWindow::Build() {
  label1_ = platform::PlainLabel(this);
  label1_->setObjectName(QStringLiteral("Label1"));
  label1_->setGeometry(8, 6, 148, 22);
  label1_->setStyleSheet(QStringLiteral("font-weight:bold; color:#0079af;"));
  label2_ = platform::PlainLabel(this);
  label2_->setObjectName(QStringLiteral("Label2"));
  label2_->setGeometry(158, 6, 92, 22);

  int x = 256;
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    auto* b = new QPushButton(QString::fromUtf8(kCommandCaptions[i]), this);
    b->setObjectName(QStringLiteral("Command%1").arg(i + 2));
    b->setFocusPolicy(Qt::NoFocus);
    b->setGeometry(x, 4, 40, 26);
    x += 42;
    commands_[i] = b;
  }
  connect(commands_[0], &QPushButton::clicked, this, [this] {
    web1_->setFocus();
    Shown(model_.Command2());
  });
  connect(commands_[1], &QPushButton::clicked, this, [this] {
    web1_->setFocus();
    Shown(model_.Command3());
  });
  connect(commands_[2], &QPushButton::clicked, this, [this] {
    web1_->setFocus();
    Shown(model_.Command4());
  });
  connect(commands_[3], &QPushButton::clicked, this, [this] {
    web1_->setFocus();
    Shown(model_.Command5());
  });

  x = 432;
  for (std::size_t i = 0; i < opt_.size(); ++i) {
    auto* o = new QRadioButton(QStringLiteral("%1件").arg(reader::kHitPageSizes[i]), this);
    o->setObjectName(QStringLiteral("Opt_%1").arg(i));
    o->setFocusPolicy(Qt::NoFocus);
    o->setGeometry(x, 6, 50, 22);
    x += 51;
    opt_[i] = o;
    connect(o, &QRadioButton::clicked, this, [this, i] { Opt(static_cast<int>(i)); });
  }

  web1_ = new platform::HtmlPane(this);
  web1_->setObjectName(QStringLiteral("Web1"));
  web1_->setGeometry(4, kStripHeight + 4, kDesignWidth - 8, kDesignHeight - kStripHeight - 8);
  web1_->installEventFilter(this);
  connect(web1_, &platform::HtmlPane::keyPressed, this, &HitListWindow::PaneKey);
  connect(web1_, &platform::HtmlPane::linkClicked, this, &HitListWindow::LinkClick);
  connect(web1_, &platform::HtmlPane::contextMenuRequested, this, [this](QPoint at) {
    if (onContextMenu) onContextMenu(at);
  });
}

void HitListWindow::Hyouji() {
  Show(model_.Hyouji());
}

void HitListWindow::Show(const reader::HitListPage& page) {
  label1_->setText(Q(page.Label1));
  label2_->setText(Q(page.Label2));
  web1_->SetBody(Q(page.body));
  web1_->ScrollTo(0, 0);
  CheckOption();
}

void HitListWindow::Shown(const std::optional<reader::HitListPage>& page) {
  if (page) Show(*page);
}

void HitListWindow::CheckOption() {
  const int dispN = settings_.DispN;
  for (std::size_t i = 0; i < opt_.size(); ++i) {
    QRadioButton* o = opt_[i];
    if (static_cast<int>(i) == dispN) {
      o->setChecked(true);
    } else if (o->isChecked()) {
      // Another window may have chosen a size none of the options is.
      o->setAutoExclusive(false);
      o->setChecked(false);
      o->setAutoExclusive(true);
    }
  }
}

void HitListWindow::Opt(int index) {
  Show(model_.Opt(index));
  // The one key of "@設定" this window writes.
  store_.Write(corpus::kSettingsSection, u"DispN", text::IntText(settings_.DispN));
  web1_->setFocus();
}

void HitListWindow::ClearSelection() {
  web1_->ClearSelection();
}

void HitListWindow::PaneKey(int key, Qt::KeyboardModifiers modifiers, bool& handled) {
  using Action = reader::PaneKey::Action;
  const bool open = menuOpen && menuOpen();
  const reader::PaneKey k = reader::PaneKeyDown(
      platform::KeyCode(key), modifiers.testFlag(Qt::ShiftModifier),
      modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier), open);
  switch (k.action) {
    case Action::Pass:
      handled = false;
      return;
    case Action::CloseMenu:
      if (closeMenu) closeMenu();
      break;
    case Action::Copy:
      web1_->Copy();
      break;
    case Action::Move:
      // Left and Right turn the page; the other arrows do nothing here.
      Shown(model_.KeyDownAll(platform::KeyCode(key), k.shift));
      break;
    case Action::Swallow:
    case Action::FocusSearch:  // the list has no search box
      break;
  }
  handled = true;
}

void HitListWindow::keyPressEvent(QKeyEvent* event) {
  const int code = platform::KeyCode(event->key());
  if (code == 37 || code == 39) {
    Shown(model_.KeyDownAll(code, platform::ShiftState(event->modifiers())));
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);
}

void HitListWindow::LinkClick(const QString& href) {
  if (model_.LinkClick(U(href)) && onJump) onJump();
}

bool HitListWindow::eventFilter(QObject* watched, QEvent* event) {
  // The pointer over the list gives it the keyboard.
  if (watched == web1_ && event->type() == QEvent::Enter && isActiveWindow()) web1_->setFocus();
  return QWidget::eventFilter(watched, event);
}

void HitListWindow::Zoom(double widthRatio) {
  const int percent = static_cast<int>(std::lround(widthRatio * 100));
  web1_->SetZoom(QStringLiteral("%1%").arg(std::max(percent, 10)));
}

// `ResizeEnd`: the place is kept as it changes, a shown and normal window's.

}  // namespace suizo::app
