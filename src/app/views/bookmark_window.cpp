#include "app/views/bookmark_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "app/platform/grid.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "app/platform/toast.h"
#include "app/platform/yes_no.h"
#include "core/corpus/errors.h"
#include "core/corpus/settings_dialog.h"

namespace suizo::app {

using platform::Q;

namespace {

constexpr std::u16string_view kCaption = u"しおり";
constexpr std::u16string_view kDigits = u"①②③④⑤⑥⑦⑧⑨⑩";

QPushButton* Button(QWidget* parent, const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

void SetBack(QLineEdit* box, std::uint32_t bgr) {
  QPalette p = box->palette();
  p.setColor(QPalette::Base, platform::FromBgr(bgr));
  box->setPalette(p);
}

}  // namespace

BookmarkWindow::BookmarkWindow(corpus::BookmarkKind kind, corpus::ProfileFile& file,
                               corpus::Corpus& corpus, corpus::Selection& selection,
                               const search::Position& place, corpus::SettingsStore& store,
                               QPoint mov, QWidget* owner)
    : QDialog(owner),
      ask(&platform::YesNoDialog::Ask),
      model_(kind, file, corpus, selection),
      place_(place),
      store_(store) {
  setObjectName(QStringLiteral("Form17"));
  setWindowTitle(Q(kCaption));
  setModal(true);
  model_.MovX = mov.x();
  model_.MovY = mov.y();
  Build();
  Fill();
  adjustSize();
  if (const auto w = corpus::StoredWidth(store_, model_.Parent)) {
    resize(std::max(*w, minimumSizeHint().width()), height());
  }
}

void BookmarkWindow::Build() {
  auto* layout = new QVBoxLayout(this);
  auto* rows = new QGridLayout;
  rows->setHorizontalSpacing(4);
  rows->setVerticalSpacing(2);
  for (int i = 1; i <= corpus::kBookmarks; ++i) {
    const auto at = static_cast<std::size_t>(i - 1);
    QPushButton* bm = Button(this, QStringLiteral("Bm_%1").arg(i), QString(QChar(kDigits[at])));
    bm->setCheckable(true);
    bm->setAutoExclusive(true);
    bm->setFixedWidth(32);
    bm_[at] = bm;
    connect(bm, &QPushButton::clicked, this, [this, i] { Choose(i); });

    auto* t1 = new QLineEdit(this);
    t1->setObjectName(QStringLiteral("Text1_%1").arg(i));
    t1->setMinimumWidth(180);
    auto* t2 = new QLineEdit(this);
    t2->setObjectName(QStringLiteral("Text2_%1").arg(i));
    t2->setMinimumWidth(340);
    for (QLineEdit* box : {t1, t2}) {
      box->setReadOnly(true);
      box->setFocusPolicy(Qt::NoFocus);
      box->installEventFilter(this);
    }
    text1_[at] = t1;
    text2_[at] = t2;
    rows->addWidget(bm, i - 1, 0);
    rows->addWidget(t1, i - 1, 1);
    rows->addWidget(t2, i - 1, 2);
  }
  rows->setColumnStretch(1, 1);
  rows->setColumnStretch(2, 2);
  layout->addLayout(rows);

  command1_ = Button(this, QStringLiteral("Command1"), QStringLiteral("読込"));
  command3_ = Button(this, QStringLiteral("Command3"), QStringLiteral("保存"));
  command2_ = Button(this, QStringLiteral("Command2"), QStringLiteral("閉じる"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(command1_);
  buttons->addWidget(command3_);
  buttons->addSpacing(16);
  buttons->addWidget(command2_);
  layout->addLayout(buttons);

  connect(command1_, &QPushButton::clicked, this, &BookmarkWindow::Command1);
  connect(command3_, &QPushButton::clicked, this, &BookmarkWindow::Command3);
  connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
}

void BookmarkWindow::Fill() {
  for (int i = 1; i <= corpus::kBookmarks; ++i) {
    const auto at = static_cast<std::size_t>(i - 1);
    const reader::BookmarkRow& row = model_.row(i);
    text1_[at]->setText(Q(row.Text1));
    text2_[at]->setText(Q(row.Text2));
    text1_[at]->setCursorPosition(0);
    text2_[at]->setCursorPosition(0);
    SetBack(text1_[at], row.Text1BackColor);
    SetBack(text2_[at], row.Text2BackColor);
  }
}

void BookmarkWindow::Choose(int i) {
  model_.Bm_Click(i);
  bm_[static_cast<std::size_t>(i - 1)]->setChecked(true);
  Fill();
}

reader::Confirm BookmarkWindow::Question() {
  return [this](std::u16string_view question) { return ask && ask(this, Q(question)); };
}

void BookmarkWindow::Command1() {
  try {
    if (auto move = model_.Command1(Question())) {
      moved_ = std::move(move);
      accept();
    }
  } catch (const corpus::CorpusError& e) {
    failure_ = e.what();
    reject();
  }
}

void BookmarkWindow::Command3() {
  try {
    if (!model_.Command3(Question(), place_)) return;
  } catch (const corpus::CorpusError& e) {
    // The file and the rows stay as they were; the dialog stays open.
    platform::ShowMessage(this, QMessageBox::Warning, windowTitle(),
                          Q(corpus::BookmarksFailure(e)));
    return;
  }
  written_ = model_.chosen();
  Fill();
  accept();
}

bool BookmarkWindow::eventFilter(QObject* watched, QEvent* event) {
  // A click on a row's text chooses the row as its button does.
  if (event->type() == QEvent::MouseButtonPress) {
    for (int i = 1; i <= corpus::kBookmarks; ++i) {
      const auto at = static_cast<std::size_t>(i - 1);
      if (watched == text1_[at] || watched == text2_[at]) {
        Choose(i);
        return false;
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

void BookmarkWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  Place();
}

// Beside the owner's button: the top left corner at `MovX`, `MovY`, kept on
// the screen. Without a place, over the owner.
void BookmarkWindow::Place() {
  const QPoint mov(model_.MovX, model_.MovY);
  if (mov.isNull()) {
    platform::CentreOn(this, parentWidget());
    return;
  }
  QRect frame(mov, frameGeometry().size());
  const QScreen* screen = QGuiApplication::screenAt(mov);
  if (screen == nullptr) screen = this->screen();
  if (screen != nullptr) {
    const QRect area = screen->availableGeometry();
    frame.moveLeft(
        std::clamp(frame.left(), area.left(), std::max(area.left(), area.right() - frame.width())));
    frame.moveTop(
        std::clamp(frame.top(), area.top(), std::max(area.top(), area.bottom() - frame.height())));
  }
  move(frame.topLeft());
}

void BookmarkWindow::done(int result) {
  corpus::StoreWidth(store_, model_.Parent, width());
  QDialog::done(result);
}

}  // namespace suizo::app
