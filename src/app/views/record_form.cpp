#include "app/views/record_form.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
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
#include "core/views/contents.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

constexpr std::u16string_view kSection = u"@資料";

// Which window a jump of the record needs.
reader::FormKind TargetOf(views::RecordOutcome::Jump jump) {
  using J = views::RecordOutcome::Jump;
  switch (jump) {
    case J::Reader:
      return reader::FormKind::Form2;
    case J::Sutra:
      return reader::FormKind::Form7;
    case J::Chronology:
      return reader::FormKind::Form12;
    case J::Dictionary:
      return reader::FormKind::Form6;
    default:
      return reader::FormKind::Form5;
  }
}

}  // namespace

RecordForm::RecordForm(views::RecordWindow& window, Program& program)
    : QWidget(nullptr, Qt::Window), window_(window), program_(program) {
  setObjectName("Form5");
  setFocusPolicy(Qt::StrongFocus);
  auto* top = new QVBoxLayout(this);
  top->setContentsMargins(6, 6, 6, 6);
  top->setSpacing(4);

  // The head: number, title and the document's facts.
  auto* head = new QHBoxLayout;
  const std::array<std::pair<const char*, int>, 10> fields = {{{"Bangou", 1},
                                                               {"Text4", 4},
                                                               {"Text5", 1},
                                                               {"Text6", 2},
                                                               {"Text7", 2},
                                                               {"Text8", 1},
                                                               {"Text1", 2},
                                                               {"Text2", 2},
                                                               {"Text3", 1},
                                                               {"Text9", 0}}};
  for (const auto& [name, stretch] : fields) {
    auto* l = platform::PlainLabel(this);
    l->setObjectName(name);
    l->setStyleSheet("background:white; border:1px solid #999; padding:2px;");
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    l->installEventFilter(this);
    fields_[QString::fromLatin1(name)] = l;
    if (stretch > 0) head->addWidget(l, stretch);
  }
  fields_[QStringLiteral("Text4")]->setStyleSheet(
      "background:white; border:1px solid #999; padding:2px; font-weight:bold; color:#0A5657;");
  pin_ = ViewButton(this, "Pin", QStringLiteral("固定"));
  pin_->setCheckable(true);
  head->addWidget(pin_);
  top->addLayout(head);

  // The page boxes of every series.
  auto* pages = new QHBoxLayout;
  for (const views::RecordPageBox& box : views::kRecordPageBoxes) {
    auto* title = platform::PlainLabel(Q(box.caption), this);
    title->setObjectName(QStringLiteral("PageTitle_%1").arg(box.title));
    pageTitles_[box.title] = title;
    auto* page = new QLineEdit(this);
    page->setObjectName(QStringLiteral("Page_%1").arg(box.box));
    page->setReadOnly(true);
    page->setMinimumWidth(40);
    pages_[box.box] = page;
    pages->addWidget(title);
    pages->addWidget(page, 1);
  }
  top->addLayout(pages);

  // The search strip.
  auto* strip = new QHBoxLayout;
  search_.Build(this, strip);
  search_.AddCounter(strip);
  search_.AddRefine(strip);
  strip->addStretch(1);
  clev_.Build(this, this);
  strip->addWidget(clev_.picture3);
  top->addLayout(strip);

  // The large left pane and six on the right, each under its tab.
  auto* body = new QHBoxLayout;
  auto* left = new QVBoxLayout;
  labels_[0] = nullptr;
  panes_[1] = new platform::HtmlPane(this);
  auto* leftTab = ViewButton(this, "Label1_1", Q(views::kRecordPaneInfo[1].label));
  labels_[1] = leftTab;
  left->addWidget(leftTab);
  left->addWidget(panes_[1], 1);
  body->addLayout(left, 3);
  auto* right = new QGridLayout;
  for (int p = 2; p <= views::kRecordPanes; ++p) {
    auto* tab = ViewButton(this, QStringLiteral("Label1_%1").arg(p),
                           Q(views::kRecordPaneInfo[static_cast<std::size_t>(p)].label));
    labels_[static_cast<std::size_t>(p)] = tab;
    panes_[static_cast<std::size_t>(p)] = new platform::HtmlPane(this);
    const int at = (p - 2) / 2 * 2;
    const int col = (p - 2) % 2;
    right->addWidget(tab, at, col);
    right->addWidget(panes_[static_cast<std::size_t>(p)], at + 1, col);
    right->setRowStretch(at + 1, 1);
  }
  body->addLayout(right, 4);
  top->addLayout(body, 1);
  pic_ = platform::PlainLabel(Q(views::kPicNote), this);
  pic_->setObjectName("Pic");
  pic_->setAlignment(Qt::AlignCenter);
  pic_->setStyleSheet("background:rgba(200,200,200,220); color:#333; font-weight:bold;");
  pic_->hide();

  auto* buttons = new QHBoxLayout;
  const std::array<std::pair<int, QString>, 6> views = {{{3, QStringLiteral("縦横")},
                                                         {4, QStringLiteral("目次")},
                                                         {5, QStringLiteral("本文")},
                                                         {6, QStringLiteral("法華")},
                                                         {7, QStringLiteral("年表")},
                                                         {8, QStringLiteral("辞書")}}};
  for (const auto& [number, caption] : views) {
    commands_[number] = ViewButton(this, QStringLiteral("Command%1").arg(number), caption);
    buttons->addWidget(commands_[number]);
  }
  buttons->addStretch(1);
  top->addLayout(buttons);

  platform::InputMethodOnlyInCombo1(this);

  for (int p = 1; p <= views::kRecordPanes; ++p) {
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    pane->setObjectName(QStringLiteral("Web_%1").arg(p));
    connect(pane, &platform::HtmlPane::linkClicked, this, [this](const QString& href) {
      if (!views::CancelsNavigation(U(href))) return;
      Follow(model().LinkClick(U(href)));
    });
    connect(pane, &platform::HtmlPane::doubleClicked, this, [this, p] {
      if (auto d = model().PaneDoubleClick(p)) Show(*d);
    });
    // A click on the pane shown on the left brings the left one back.
    connect(pane, &platform::HtmlPane::clicked, this, [this, p] {
      if (auto d = model().PaneClick(p)) Show(*d);
    });
    connect(pane, &platform::HtmlPane::contextMenuRequested, this, [this, pane](QPoint at) {
      ShowProgramMenu(program_, this, pane, at,
                      {.kind = reader::FormKind::Form5, .ParentForm = window_.Family()});
    });
    connect(pane, &platform::HtmlPane::keyPressed, this,
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
    connect(labels_[static_cast<std::size_t>(p)], &QPushButton::clicked, this,
            [this, p] { Follow(model().Label1Click(p)); });
  }
  const auto search = [this] {
    model().Combo1 = U(search_.combo1->text());
    Follow(model().Combo1Enter());
  };
  connect(search_.combo1, &QLineEdit::returnPressed, this, search);
  connect(search_.command1, &QPushButton::clicked, this, [this] {
    model().Combo1 = U(search_.combo1->text());
    Follow(model().Command1(U(Selection())));
  });
  connect(search_.label3, &QPushButton::clicked, this, [this] { Follow(model().Label3Click()); });
  connect(search_.command14, &QPushButton::clicked, this, [this] { Follow(model().Command14()); });
  connect(search_.command15, &QPushButton::clicked, this, [this] { Follow(model().Command15()); });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });
  connect(commands_[3], &QPushButton::clicked, this, [this] { Follow(model().Command3()); });
  connect(commands_[4], &QPushButton::clicked, this, [this] { Follow(model().Command4()); });
  connect(commands_[5], &QPushButton::clicked, this, [this] { Follow(model().Command5()); });
  connect(commands_[6], &QPushButton::clicked, this,
          [this] { Follow(model().Command6(U(Selection()))); });
  connect(commands_[7], &QPushButton::clicked, this, [this] { Follow(model().Command7()); });
  connect(commands_[8], &QPushButton::clicked, this,
          [this] { Follow(model().Command8(U(Selection()))); });

  window_.onView = [this](const views::RecordDisplay& d) { Show(d); };
  window_.onShow = [this] { show(); };
  window_.onRaise = [this] {
    showNormal();
    raise();
    activateWindow();
  };
  new platform::KeptPlace(*this, program_.store(), std::u16string(kSection),
                          [this] { return program_.Ending(); });
  model().SetDpi(logicalDpiX());
  resize(1100, 720);
  if (const auto g = corpus::ReadGeometry(program_.store(), kSection))
    setGeometry(g->x, g->y, g->w, g->h);
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->Load();
}

QString RecordForm::Selection() const {
  QString out;
  for (int p = 1; p <= views::kRecordPanes; ++p)
    out += panes_[static_cast<std::size_t>(p)]->SelectedText();
  return out.trimmed();
}

void RecordForm::Show(const views::RecordDisplay& d) {
  setWindowTitle(Q(d.caption));
  const std::array<std::pair<const char*, const std::u16string*>, 10> texts = {
      {{"Bangou", &d.Bangou},
       {"Text1", &d.Text1},
       {"Text2", &d.Text2},
       {"Text3", &d.Text3},
       {"Text4", &d.Text4},
       {"Text5", &d.Text5},
       {"Text6", &d.Text6},
       {"Text7", &d.Text7},
       {"Text8", &d.Text8},
       {"Text9", &d.Text9}}};
  for (const auto& [name, text] : texts) fields_[QString::fromLatin1(name)]->setText(Q(*text));
  for (const views::RecordPageView& page : d.pages) {
    pages_[page.box]->setText(Q(page.text));
    pageTitles_[page.title]->setStyleSheet("background:" + Css(page.titleColour, this) + ";");
  }
  clev_.Paint(d.Clev);
  for (int p = 1; p <= views::kRecordPanes; ++p) {
    const views::RecordPaneView& pv = d.panes[static_cast<std::size_t>(p)];
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    if (pv.frame) {
      pane->WriteFrame(Q(*pv.frame));
      pane->SetZoom(Q(d.zoom));
    }
    if (pv.written) pane->SetBody(Q(pv.body));
    if (pv.toStart) pane->ScrollTo(0, 0);
    if (pv.clearSelection) pane->ClearSelection();
    labels_[static_cast<std::size_t>(p)]->setStyleSheet(
        p == d.selDown ? QStringLiteral("background:#FFFFC0; font-weight:bold;") : QString());
  }
  fields_[QStringLiteral("Text4")]->setStyleSheet(
      QStringLiteral(
          "border:1px solid #999; padding:2px; font-weight:bold; color:#0A5657; background:%1;")
          .arg(d.selDown == 0 ? QStringLiteral("#FFFFC0") : QStringLiteral("white")));
  // The note over the pane shown on the left.
  picPane_ = d.PicVisible ? d.PicPane : 0;
  PlacePic();
  fields_[QStringLiteral("Text9")]->setVisible(d.Text9Visible);
  search_.ShowCounter(d.Label3Text, d.Label3Colour, d.Label3Enabled);
  search_.ShowRefine(d.refine);
  // A view whose window this build does not have yet is not offered.
  commands_[4]->setEnabled(d.Command4Enabled);
  commands_[5]->setEnabled(d.Command5Enabled);
  commands_[6]->setEnabled(program_.Builds(reader::FormKind::Form7));
  commands_[7]->setEnabled(d.Command7Enabled && program_.Builds(reader::FormKind::Form12));
  commands_[8]->setEnabled(program_.Builds(reader::FormKind::Form6));
  search_.ShowBox(model().Combo1, model().Combo);
}

void RecordForm::PlacePic() {
  if (picPane_ < 2 || picPane_ > views::kRecordPanes) {
    pic_->hide();
    return;
  }
  const QRect g = panes_[static_cast<std::size_t>(picPane_)]->geometry();
  pic_->setGeometry(g.adjusted(0, views::kPicInset, -views::kPicInset, 0));
  pic_->show();
  pic_->raise();
}

void RecordForm::Follow(const views::RecordOutcome& outcome) {
  using J = views::RecordOutcome::Jump;
  if (outcome.toast && program_.toast) program_.toast(this);
  if (outcome.openSettings) program_.OpenSettings(this);
  if (outcome.focusSearchBox) search_.SelectBox();
  if (outcome.focusPanel) setFocus();
  if (outcome.jump == J::Contents) {
    program_.ShowContentsAt(reader::FormKind::Form9, outcome.mpos);
    return;
  }
  // A view whose window this build does not have is not reached.
  if (outcome.jump != J::None && !program_.Builds(TargetOf(outcome.jump))) return;
  window_.Follow(program_.navigator(), outcome);
  if (window_.Minimized) showMinimized();
}

bool RecordForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    if (clev_.Contains(watched)) {
      program_.OpenSelection(this);
      return true;
    }
    if (watched == fields_[QStringLiteral("Text4")]) {
      Follow(model().Text4Click());
      return true;
    }
    if (watched == fields_[QStringLiteral("Text9")]) {
      if (auto d = model().Text9Click()) Show(*d);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void RecordForm::keyPressEvent(QKeyEvent* event) {
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

void RecordForm::closeEvent(QCloseEvent* event) {
  program_.CloseView(window_, *event);
}

void RecordForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // Laid out after the event: the note follows its pane.
  QTimer::singleShot(0, this, [this] { PlacePic(); });
}

}  // namespace suizo::app
