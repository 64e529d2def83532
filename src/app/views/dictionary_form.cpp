#include "app/views/dictionary_form.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "app/corpus/program.h"
#include "app/platform/input_method.h"
#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/program_menu.h"
#include "app/views/reader_form.h"
#include "core/corpus/settings.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

constexpr std::u16string_view kSection = u"@辞書";

QLabel* NewField(QWidget* parent, const char* name) {
  auto* l = platform::PlainLabel(parent);
  l->setObjectName(name);
  l->setStyleSheet("background:white; border:1px solid #999; padding:2px;");
  l->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return l;
}

// Which window a jump of the dictionary needs.
reader::FormKind TargetOf(views::DictionaryOutcome::Jump jump) {
  using J = views::DictionaryOutcome::Jump;
  switch (jump) {
    case J::Reader:
      return reader::FormKind::Form2;
    case J::Record:
      return reader::FormKind::Form5;
    case J::Sutra:
      return reader::FormKind::Form7;
    case J::Sources:
      return reader::FormKind::Form16;
    default:
      return reader::FormKind::Form6;
  }
}

}  // namespace

DictionaryForm::DictionaryForm(views::DictionaryWindow& window, Program& program)
    : QWidget(nullptr, Qt::Window), window_(window), program_(program) {
  setObjectName("Form6");
  setFocusPolicy(Qt::StrongFocus);
  auto* top = new QVBoxLayout(this);
  top->setContentsMargins(6, 6, 6, 6);

  auto* head = new QHBoxLayout;
  text4_ = NewField(this, "Text4");
  text4_->setStyleSheet(
      "background:white; border:1px solid #999; padding:2px; font-size:18px; font-weight:bold;");
  label1_ = platform::PlainLabel(this);
  label1_->setObjectName("Label1");
  text2_ = NewField(this, "Text2");
  text3_ = NewField(this, "Text3");
  pin_ = ViewButton(this, "Pin", QStringLiteral("固定"));
  pin_->setCheckable(true);
  head->addWidget(text4_, 3);
  head->addWidget(label1_, 2);
  head->addWidget(text2_, 1);
  head->addWidget(text3_, 1);
  head->addWidget(pin_);
  top->addLayout(head);

  auto* strip = new QHBoxLayout;
  search_.Build(this, strip);
  const std::array<QString, 2> targets = {QStringLiteral("見出"), QStringLiteral("解説")};
  for (std::size_t i = 0; i < sel_.size(); ++i) {
    sel_[i] = ViewButton(this, QStringLiteral("Sel_%1").arg(i), targets[i]);
    sel_[i]->setCheckable(true);
    strip->addWidget(sel_[i]);
  }
  search_.AddCounter(strip);
  strip->addStretch(1);
  top->addLayout(strip);

  auto* related = new QHBoxLayout;
  for (int i = 1; i <= views::kKanrenCount; ++i) {
    kanren_[static_cast<std::size_t>(i)] = ViewButton(this, QStringLiteral("Kanren_%1").arg(i), {});
    related->addWidget(kanren_[static_cast<std::size_t>(i)]);
    connect(kanren_[static_cast<std::size_t>(i)], &QPushButton::clicked, this,
            [this, i] { Follow(model().KanrenClick(i)); });
  }
  top->addLayout(related);

  web_ = new platform::HtmlPane(this);
  web_->setObjectName("Web");
  top->addWidget(web_, 1);

  auto* buttons = new QHBoxLayout;
  command2_ = ViewButton(this, "Command2", {});
  command3_ = ViewButton(this, "Command3", QStringLiteral("資料"));
  command4_ = ViewButton(this, "Command4", QStringLiteral("戻る"));
  buttons->addWidget(command2_);
  buttons->addWidget(command3_);
  buttons->addStretch(1);
  buttons->addWidget(command4_);
  top->addLayout(buttons);

  platform::InputMethodOnlyInCombo1(this);

  const auto search = [this] {
    model().Combo1 = U(search_.combo1->text());
    window_.Kensaku(0);
    if (window_.toastDue && program_.toast) program_.toast(this);
    window_.toastDue = false;
    setFocus();
  };
  connect(search_.combo1, &QLineEdit::returnPressed, this, search);
  connect(search_.command1, &QPushButton::clicked, this, [this] {
    model().Combo1 = U(search_.combo1->text());
    Follow(model().Command1(U(web_->SelectedText().trimmed())));
  });
  for (std::size_t i = 0; i < sel_.size(); ++i) {
    connect(sel_[i], &QPushButton::clicked, this,
            [this, i] { Follow(model().SelClick(static_cast<int>(i))); });
  }
  connect(search_.label3, &QPushButton::clicked, this, [this] { Follow(model().Label3Click()); });
  connect(command2_, &QPushButton::clicked, this, [this] { Follow(model().Command2()); });
  connect(command3_, &QPushButton::clicked, this, [this] { Follow(model().Command3()); });
  connect(command4_, &QPushButton::clicked, this, [this] { Follow(model().Command4()); });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });
  connect(web_, &platform::HtmlPane::linkClicked, this,
          [this](const QString& href) { Follow(model().LinkClick(U(href))); });
  connect(web_, &platform::HtmlPane::contextMenuRequested, this, [this](QPoint at) {
    ShowProgramMenu(program_, this, web_, at,
                    {.kind = reader::FormKind::Form6, .ParentForm = window_.ParentForm});
  });
  connect(web_, &platform::HtmlPane::keyPressed, this,
          [this](int key, Qt::KeyboardModifiers modifiers, bool& handled) {
            if (balloons_ != nullptr) balloons_->KeyDown();
            const int code = platform::KeyCode(key);
            // While the menu is open a key only closes it.
            if (reader::PaneKeyClosesMenu(code, platform::PopupMenu::Open() != nullptr)) {
              platform::PopupMenu::CloseMenu();
              handled = true;
              return;
            }
            if (code < reader::key::kLeft || code > reader::key::kDown) return;
            Follow(model().KeyDownAll(code, platform::ShiftState(modifiers)));
            handled = true;
          });

  window_.onView = [this](const views::DictionaryDisplay& d) { Show(d); };
  window_.onShow = [this] { show(); };
  window_.onRaise = [this] {
    showNormal();
    raise();
    activateWindow();
  };
  new platform::KeptPlace(*this, program_.store(), std::u16string(kSection),
                          [this] { return program_.Ending(); });
  model().SetDpi(logicalDpiX());
  resize(760, 560);
  if (const auto g = corpus::ReadGeometry(program_.store(), kSection))
    setGeometry(g->x, g->y, g->w, g->h);
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->WatchMouseMoves(web_);
  balloons_->Load();
}

void DictionaryForm::Show(const views::DictionaryDisplay& d) {
  setWindowTitle(Q(d.caption));
  text4_->setText(Q(d.Text4));
  label1_->setText(Q(d.Label1));
  text2_->setText(Q(d.Text2));
  text3_->setText(Q(d.Text3));
  if (balloons_ != nullptr) balloons_->SetText(u"Text3", d.Text3Balloon);
  for (int i = 1; i <= views::kKanrenCount; ++i) {
    const views::KanrenButton& k = d.Kanren[static_cast<std::size_t>(i)];
    QPushButton* b = kanren_[static_cast<std::size_t>(i)];
    b->setText(Q(k.caption));
    b->setEnabled(k.enabled);
  }
  if (d.frame) {
    web_->WriteFrame(Q(*d.frame));
    web_->SetZoom(Q(d.zoom));
  }
  web_->SetBody(Q(d.body));
  if (d.toStart) web_->ScrollTo(0, 0);
  for (std::size_t i = 0; i < sel_.size(); ++i)
    sel_[i]->setChecked(static_cast<int>(i) == d.selDown);
  search_.ShowCounter(d.Label3Text, d.Label3Colour, d.Label3Enabled);
  // The record has no window in this build yet.
  command3_->setEnabled(d.Command3Enabled && program_.Builds(reader::FormKind::Form5));
  command4_->setStyleSheet("background:" + Css(window_.Command4BackColor, this) + ";");
  command2_->setText(Q(window_.Command2Caption));
  search_.ShowBox(model().Combo1, model().Combo);
}

void DictionaryForm::Follow(const views::DictionaryOutcome& outcome) {
  using J = views::DictionaryOutcome::Jump;
  if (outcome.toast && program_.toast) program_.toast(this);
  if (outcome.openSettings) program_.OpenSettings(this);
  if (outcome.focusSearchBox) {
    search_.SelectBox();
  }
  switch (outcome.jump) {
    case J::Contents:
      program_.ShowContentsAt(reader::ContentsOf(window_.ParentForm), 0);
      return;
    case J::Back:
      program_.navigator().BackToParent(window_.ParentForm.empty()
                                            ? std::u16string(reader::kWritingsFamily)
                                            : window_.ParentForm);
      return;
    default:
      break;
  }
  // A view whose window this build does not have is not reached.
  if (outcome.jump != J::None && !program_.Builds(TargetOf(outcome.jump))) return;
  window_.Follow(program_.navigator(), outcome);
  if (window_.Minimized) showMinimized();
}

void DictionaryForm::keyPressEvent(QKeyEvent* event) {
  if (balloons_ != nullptr) balloons_->KeyDown();
  if (focusWidget() == search_.combo1) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (event->key() == Qt::Key_Escape && window_.CancelOnEsc) {
    close();
    return;
  }
  Follow(model().KeyDownAll(platform::KeyCode(event->key()),
                            platform::ShiftState(event->modifiers())));
}

void DictionaryForm::closeEvent(QCloseEvent* event) {
  program_.CloseView(window_, *event);
}

}  // namespace suizo::app
