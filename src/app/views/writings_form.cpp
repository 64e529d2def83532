#include "app/views/writings_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTimer>
#include <cmath>

#include "app/corpus/program.h"
#include "app/platform/clipboard.h"
#include "app/platform/grid.h"
#include "app/platform/input_method.h"
#include "app/platform/keys.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/bookmark_window.h"
#include "app/views/hit_list_window.h"
#include "core/corpus/profile.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/reader/context_menu.h"
#include "core/reader/frame.h"
#include "core/reader/links.h"
#include "core/reader/page_boxes.h"
#include "core/text/sjis.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

constexpr std::u16string_view kSection = u"@本文";

// The tab captions, read downwards.
constexpr std::array<std::u16string_view, 11> kTabCaptions = {
    u"システム版", u"現代語訳", u"真蹟直読", u"真蹟活用", u"門下写本", u"原型活用",
    u"真備考",     u"写備考",   u"メモ２",   u"メモ３",   u"引用索引"};
// The tab labels take the colour of their pane's body.
constexpr std::array<std::uint32_t, 11> kTabColours = {15987674, 16709354, 16709354, 16709354,
                                                       15332093, 15332093, 16709354, 15332093,
                                                       16777215, 16777215, 16709354};

QString Downwards(std::u16string_view caption) {
  QString out;
  for (const char16_t c : caption) {
    if (!out.isEmpty()) out += QLatin1Char('\n');
    out += QChar(c);
  }
  return out;
}

QString Css(std::uint32_t bgr, const QWidget* w) {
  const QColor c = (bgr & 0x80000000u) != 0 ? w->palette().button().color() : platform::FromBgr(bgr);
  return c.name();
}

QRect Scaled(QRect r, double s) {
  const auto at = [s](int v) { return static_cast<int>(std::lround(v * s)); };
  return {at(r.x()), at(r.y()), std::max(1, at(r.width())), std::max(1, at(r.height()))};
}

std::int64_t NowMs() {
  static QElapsedTimer clock = [] {
    QElapsedTimer t;
    t.start();
    return t;
  }();
  return clock.elapsed();
}

}  // namespace

WritingsForm::WritingsForm(reader::WritingsWindow& window, Program& program)
    : QWidget(nullptr, Qt::Window), window_(window), program_(program) {
  setObjectName("Form2");
  setFocusPolicy(Qt::StrongFocus);  // the form itself is `Pic1`, the reading area's focus
  setAttribute(Qt::WA_InputMethodEnabled, false);
  Build();
  reader().SetClock(&NowMs);
  reader().SetDpi(logicalDpiX());

  window_.onView = [this](const reader::WritingsView& v) { Show(v); };
  window_.onShow = [this] { show(); };
  window_.onRaise = [this] {
    showNormal();
    raise();
    activateWindow();
  };
  LayOut();
  if (const auto g = corpus::ReadGeometry(program_.store(), kSection)) {
    move(g->x, g->y);
    if (g->w > 0) resize(g->w, static_cast<int>(std::lround(layout_.height * g->w / double(layout_.width))));
  }
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->Load();
}

WritingsForm::~WritingsForm() = default;

void WritingsForm::Put(QWidget* w, QRect design) {
  design_[w] = design;
  const QFont f = w->font();
  fontPx_[w] = f.pixelSize() > 0 ? f.pixelSize() : f.pointSizeF() * 96.0 / 72.0;
}

QPushButton* WritingsForm::Button(const char* name, const QString& caption, QRect design) {
  auto* b = new QPushButton(caption, this);
  b->setObjectName(name);
  b->setFocusPolicy(Qt::NoFocus);
  Put(b, design);
  return b;
}

QLabel* WritingsForm::Field(const char* name, QRect design) {
  auto* l = new QLabel(this);
  l->setObjectName(name);
  l->setStyleSheet("background:white; border:1px solid #999; padding-left:2px;");
  l->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Put(l, design);
  return l;
}

void WritingsForm::Build() {
  // First row: the document, the views, the classes.
  bangou_ = Field("Bangou", {8, 6, 84, 24});
  text4_ = Field("Text4", {96, 6, 250, 24});
  text4_->setStyleSheet("background:white; border:1px solid #999; font-weight:bold; color:#0A5657;");
  text6_ = Field("Text6", {350, 6, 120, 24});
  text5_ = Field("Text5", {474, 6, 50, 24});
  text1_ = Field("Text1", {528, 6, 148, 24});
  const std::array<std::pair<int, QString>, 5> views = {{{4, QStringLiteral("目次")},
                                                         {5, QStringLiteral("資料")},
                                                         {6, QStringLiteral("法華")},
                                                         {7, QStringLiteral("年表")},
                                                         {8, QStringLiteral("辞書")}}};
  int x = 680;
  // A view whose window this build does not have yet is not offered.
  constexpr std::array<reader::FormKind, 5> kTargets = {reader::FormKind::Form9, reader::FormKind::Form5,
                                                        reader::FormKind::Form7, reader::FormKind::Form12,
                                                        reader::FormKind::Form6};
  for (const auto& [number, caption] : views) {
    const QByteArray name = "Command" + QByteArray::number(number);
    commands_[number] = Button(name.constData(), caption, {x, 6, 44, 24});
    commands_[number]->setEnabled(program_.Builds(kTargets[static_cast<std::size_t>(number - 4)]));
    x += 46;
  }
  picture3_ = new QWidget(this);
  picture3_->setObjectName("Picture3");
  Put(picture3_, {914, 6, 198, 24});
  for (int c = 0; c <= 10; ++c) {
    auto* l = new QLabel(Q(views::ClevCaption(c)), picture3_);
    l->setObjectName(QStringLiteral("Clev_%1").arg(c));
    l->setAlignment(Qt::AlignCenter);
    l->installEventFilter(this);
    Put(l, {c * 18, 2, 17, 20});
    clev_[static_cast<std::size_t>(c)] = l;
  }
  commands_[11] = Button("Command11", QStringLiteral("真 蹟"), {1114, 6, 40, 24});
  pin_ = Button("Pin", QStringLiteral("固定"), {1158, 6, 34, 24});
  pin_->setCheckable(true);

  // Second row: the search and the switches.
  combo1_ = new QLineEdit(this);
  combo1_->setObjectName("Combo1");
  combo1_->installEventFilter(this);
  Put(combo1_, {8, 36, 240, 26});
  command12_ = Button("Command12", QStringLiteral("▼"), {248, 36, 20, 26});
  combo_ = new QComboBox(this);
  combo_->setObjectName("Combo");
  Put(combo_, {8, 36, 260, 26});
  combo_->lower();  // only its list is seen
  command1_ = Button("Command1", QStringLiteral("検索"), {272, 36, 52, 26});
  command1_->installEventFilter(this);
  label3_ = Button("Label3", {}, {328, 36, 76, 26});
  label3_->setFlat(true);
  command14_ = Button("Command14", QStringLiteral("絞込"), {408, 36, 44, 26});
  refineLevel_ = new QLabel(this);
  refineLevel_->setObjectName("RefineLevel");
  Put(refineLevel_, {456, 36, 56, 26});
  command15_ = Button("Command15", QStringLiteral("解除"), {516, 36, 44, 26});
  label5_ = new QLabel(this);
  label5_->setObjectName("Label5");
  Put(label5_, {564, 36, 70, 26});
  commands_[2] = Button("Command2", QStringLiteral("一覧"), {638, 36, 44, 26});
  limit_ = Button("Limit", {}, {686, 36, 26, 26});
  kakko_ = Button("Kakko", QStringLiteral("（）"), {716, 36, 36, 26});
  kakko_->setCheckable(true);
  sinSya_ = Button("SinSyaButton", {}, {756, 36, 26, 26});
  tyoKat_ = Button("TyoKatButton", {}, {786, 36, 26, 26});
  commands_[9] = Button("Command9", {}, {816, 36, 26, 26});
  commands_[9]->hide();  // the layout's spare: no action of its own
  commands_[10] = Button("Command10", QStringLiteral("△"), {816, 36, 26, 26});
  commands_[13] = Button("Command13", QStringLiteral("▽"), {816, 36, 26, 26});
  commands_[16] = Button("Command16", QStringLiteral("切替"), {846, 36, 44, 26});
  commands_[3] = Button("Command3", QStringLiteral("縦横"), {894, 36, 52, 26});
  bMark_ = Button("BMark", QStringLiteral("しおり"), {950, 36, 48, 26});
  fav_ = Button("Fav", QStringLiteral("★"), {1002, 36, 26, 26});
  fav_->setCheckable(true);
  btUp_ = Button("BTup", QStringLiteral("▲"), {1036, 36, 26, 26});
  btDown_ = Button("BTdown", QStringLiteral("▼"), {1066, 36, 26, 26});
  okuri_ = new QCheckBox(QStringLiteral("行送"), this);
  okuri_->setObjectName("Okuri");
  okuri_->setFocusPolicy(Qt::NoFocus);
  Put(okuri_, {1096, 36, 60, 26});

  // Third row: the page boxes of the collections.
  x = 8;
  for (const int box : reader::kPageBoxes) {
    const int titleIndex = reader::PageTitleOf(box);
    const corpus::Collection* c = corpus::FindCollection(titleIndex);
    auto* title = new QLabel(c != nullptr ? Q(c->label) : QString(), this);
    title->setObjectName(QStringLiteral("PageTitle_%1").arg(titleIndex));
    title->setAlignment(Qt::AlignCenter);
    Put(title, {x, 68, 38, 24});
    pageTitle_[titleIndex] = title;
    auto* page = new QLineEdit(this);
    page->setObjectName(QStringLiteral("Page_%1").arg(box));
    page->installEventFilter(this);
    Put(page, {x + 38, 68, 64, 24});
    page_[box] = page;
    connect(page, &QLineEdit::returnPressed, this, [this, box, page] {
      Apply(reader().PageBoxEnter(box, U(page->text())));
    });
    x += 106;
  }

  // The panes, their tabs and the note editor.
  for (std::size_t t = 0; t < tagT_.size(); ++t) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("TagT_%1").arg(t));
    label->setStyleSheet("background:" + platform::FromBgr(kTabColours[t]).name() +
                         "; border:1px solid #AAA;");
    label->installEventFilter(this);
    tagT_[t] = label;
    auto* b = new QPushButton(Downwards(kTabCaptions[t]), label);
    b->setObjectName(QStringLiteral("TagB_%1").arg(t));
    b->setCheckable(true);
    b->setFocusPolicy(Qt::NoFocus);
    b->setStyleSheet(
        "QPushButton{border:none; background:transparent; color:#555; font-size:12px;}"
        "QPushButton:checked{background:#FFFFC0; color:black; font-weight:bold;}");
    tagB_[t] = b;
    connect(b, &QPushButton::clicked, this, [this, t] {
      Apply(reader().TagBClick(static_cast<int>(t)));
    });
  }
  for (int p = 1; p <= reader::kPanes; ++p) {
    auto* pane = new platform::HtmlPane(this);
    pane->setObjectName(QStringLiteral("Web_%1").arg(p));
    panes_[static_cast<std::size_t>(p)] = pane;
    pane->installEventFilter(this);
    connect(pane, &platform::HtmlPane::linkClicked, this, [this](const QString& href) { Link(href); });
    connect(pane, &platform::HtmlPane::keyPressed, this,
            [this, p](int key, Qt::KeyboardModifiers modifiers, bool& handled) {
              PaneKey(p, key, modifiers, handled);
            });
    connect(pane, &platform::HtmlPane::doubleClicked, this, [this, p] {
      if (QApplication::keyboardModifiers().testFlag(Qt::ControlModifier)) {
        StartNoteEdit(p);
      } else {
        // The browser selects its own word first; the run is grown after it.
        QTimer::singleShot(0, this, [this, p] { SelectKanjiRun(p); });
      }
    });
    connect(pane, &platform::HtmlPane::contextMenuRequested, this,
            [this, pane](QPoint at) { ShowMenu(pane, at); });
  }
  platform::InputMethodOnlyInCombo1(this);
  // Made after the cut: notes are typed in Japanese too.
  editBox_ = new QPlainTextEdit(this);
  editBox_->setObjectName("EditBox");
  editBox_->hide();
  editBox_->installEventFilter(this);
  // The text boxes offer the program's menu, not their own.
  std::vector<QWidget*> boxes = {combo1_, editBox_};
  for (const auto& [box, page] : page_) boxes.push_back(page);
  for (QWidget* box : boxes) {
    box->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(box, &QWidget::customContextMenuRequested, this,
            [this, box](QPoint at) { ShowMenu(box, box->mapToGlobal(at)); });
  }

  connect(command1_, &QPushButton::clicked, this, [this] { Search(0); });
  connect(command12_, &QPushButton::clicked, this, [this] { combo_->showPopup(); });
  connect(combo_, qOverload<int>(&QComboBox::activated), this, [this](int index) {
    combo1_->setText(combo_->itemText(index));
    combo1_->setFocus();
    combo1_->end(false);
  });
  connect(label3_, &QPushButton::clicked, this, [this] {
    Apply(reader().Label3Click());
    combo1_->setText(Q(reader().engine().Combo1));
  });
  connect(command14_, &QPushButton::clicked, this, [this] { Apply(reader().Command14()); });
  connect(command15_, &QPushButton::clicked, this, [this] {
    Apply(reader().Command15());
    combo1_->setText(Q(reader().engine().Combo1));
  });
  connect(commands_[2], &QPushButton::clicked, this, [this] {
    FocusPanel();
    OpenHitList();
  });
  connect(limit_, &QPushButton::clicked, this, [this] { Apply(reader().LimitClick()); });
  connect(kakko_, &QPushButton::clicked, this, [this] { Apply(reader().KakkoClick()); });
  connect(sinSya_, &QPushButton::clicked, this, [this] { Apply(reader().SinSyaButton()); });
  connect(tyoKat_, &QPushButton::clicked, this, [this] { Apply(reader().TyoKatButton()); });
  connect(commands_[10], &QPushButton::clicked, this, [this] { Apply(reader().Command10()); });
  connect(commands_[13], &QPushButton::clicked, this, [this] { Apply(reader().Command13()); });
  connect(commands_[16], &QPushButton::clicked, this, [this] { Apply(reader().Command16()); });
  connect(commands_[3], &QPushButton::clicked, this, [this] {
    Apply(reader().Command3(NowMs()));
    balloons_->LayoutChanged();
  });
  connect(fav_, &QPushButton::clicked, this, [this] {
    FocusPanel();
    // A toggle that keeps nothing: pressing it only says so.
    if (!fav_->isChecked()) return;
    fav_->setChecked(false);
    fav_->setStyleSheet("background:" + palette().dark().color().name() + "; color:yellow;");
    QMessageBox::information(this, windowTitle(), QStringLiteral("ok"));
    fav_->setStyleSheet("color:#C0C0C0;");
  });
  connect(bMark_, &QPushButton::clicked, this, [this] {
    OpenBookmarks();
    FocusPanel();
  });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });
  for (QPushButton* b : {btUp_, btDown_}) {
    b->installEventFilter(this);
    connect(b, &QPushButton::clicked, this, [this, b] {
      FocusPanel();
      Apply(b == btUp_ ? reader().BTup() : reader().BTdown());
    });
  }
  connect(okuri_, &QCheckBox::toggled, this, [this](bool on) { reader().Okuri = on ? 1 : 0; });
  for (const int number : {4, 5, 6, 7, 8}) {
    connect(commands_[number], &QPushButton::clicked, this, [this, number] { Jump(number); });
  }
  connect(commands_[11], &QPushButton::clicked, this, [this] { program_.OpenSelection(this); });
}

// --- showing a render ---

void WritingsForm::Show(const reader::WritingsView& v) {
  for (int p = 1; p <= reader::kPanes; ++p) {
    const reader::PaneView& pv = v.panes[static_cast<std::size_t>(p)];
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    if (pv.frame) {
      pane->WriteFrame(Q(*pv.frame));
      pane->SetZoom(Q(reader::ZoomText(96 * scale_)));
      // A vertical page starts at the pane's right edge and runs left, as
      // a printed page does; the browser would put it at the left.
      if (v.Muki1 == 1 && !pv.frame->empty()) pane->AddStyle(QStringLiteral("body{direction:rtl}body>*{direction:ltr}"));
    }
    // A pane out of sight is written when it comes back: each page turn
    // costs only the panes that are seen.
    Held& held = held_[static_cast<std::size_t>(p)];
    if (pv.frame) held = {};
    if (pv.colourSet) held.colour = pv.colour;
    if (pv.written) held.body = Q(pv.body);
    held.scrollRight = pv.scrollRight;
    held.toTop = v.scrollPanesToTop && pv.written;
    held.due = held.due || pv.colourSet || pv.written;
  }
  setWindowTitle(Q(v.caption));
  bangou_->setText(Q(v.Bangou));
  text1_->setText(Q(v.Text1));
  text4_->setText(Q(v.Text4));
  text5_->setText(Q(v.Text5));
  text6_->setText(Q(v.Text6));
  for (const auto& [box, text] : v.pageBoxes) {
    QLineEdit* page = page_[box];
    if (page != nullptr && !page->hasFocus()) page->setText(Q(text));
  }
  for (const auto& [index, title] : pageTitle_) {
    title->setStyleSheet("background:" + Css(v.clev.PageTitle[static_cast<std::size_t>(index)], this) + ";");
  }
  for (std::size_t c = 0; c < clev_.size(); ++c) {
    clev_[c]->setStyleSheet("background:" + Css(v.clev.Clev[c], this) + "; border:1px solid #666;");
  }
  sinSya_->setText(v.SinSyaCaption.empty() ? QStringLiteral("真") : Q(v.SinSyaCaption));
  sinSya_->setStyleSheet("background:" + Css(v.SinSyaColour, this) + ";");
  tyoKat_->setText(Q(v.TyoKatCaption));
  kakko_->setVisible(v.KakkoVisible);
  kakko_->setChecked(reader().Kakko);
  label3_->setText(Q(v.Label3Text));
  label3_->setStyleSheet("background:" + Css(v.Label3Colour, this) + "; border:1px solid #999;");
  label3_->setEnabled(v.Label3Enabled);
  command14_->setVisible(v.refine.Command14Visible);
  command14_->setEnabled(v.refine.Command14Enabled);
  command15_->setVisible(v.refine.Command15Visible);
  command15_->setEnabled(v.refine.Command15Enabled);
  refineLevel_->setVisible(v.refine.RefineLevelVisible);
  refineLevel_->setText(Q(v.refine.RefineLevel));
  label5_->setVisible(v.refine.Label5Visible);
  command1_->setText(Q(reader().engine().Command1Caption()));
  limit_->setText(Q(reader().engine().LimitCaption()));
  commands_[13]->setText(Q(v.Command13Caption));
  commands_[10]->setText(Q(v.Command10Caption));
  for (std::size_t t = 0; t < tagB_.size(); ++t) tagB_[t]->setChecked(static_cast<int>(t) == v.tabDown);
  if (!combo1_->hasFocus()) combo1_->setText(Q(reader().engine().Combo1));
  combo_->clear();
  for (const std::u16string& item : reader().engine().Combo) combo_->addItem(Q(item));
  LayOut();
}

void WritingsForm::LayOut() {
  const reader::WritingsReader& r = reader();
  const corpus::Settings& s = program_.settings();
  reader::WritingsLayoutState state{.Muki1 = r.Muki1,
                                    .Gcm1 = s.Gcm1,
                                    .GcmShow = r.GcmShow,
                                    .TateOne = r.TateOne,
                                    .CompactSwap = r.CompactSwap,
                                    .GmL1 = s.GmL1,
                                    .GmL2 = s.GmL2,
                                    .tabVisible = r.TabVisibility()};
  const int oldHeight = layout_.height;
  layout_ = reader::LayOutWritings(state);
  for (int p = 1; p <= reader::kPanes; ++p) {
    const reader::LayoutRect& l = layout_.panes[static_cast<std::size_t>(p)];
    design_[panes_[static_cast<std::size_t>(p)]] = {l.x, l.y, l.w, l.h};
  }
  for (std::size_t t = 0; t < tagT_.size(); ++t) {
    const reader::LayoutRect& l = layout_.tabs[t];
    design_[tagT_[t]] = {l.x, l.y, l.w, l.h};
  }
  if (oldHeight != layout_.height) {
    // The layout decides the window's height; the width stays.
    placing_ = true;
    resize(width() > 0 && isVisible() ? width() : static_cast<int>(std::lround(layout_.width * scale_)),
           static_cast<int>(std::lround(layout_.height * scale_)));
    placing_ = false;
  }
  Place();
}

void WritingsForm::Place() {
  for (const auto& [w, r] : design_) {
    if (w->parentWidget() == this || w->parentWidget() == picture3_) w->setGeometry(Scaled(r, scale_));
    const auto f = fontPx_.find(w);
    if (f != fontPx_.end() && f->second > 0) {
      QFont font = w->font();
      font.setPixelSize(std::max(6, static_cast<int>(std::lround(f->second * scale_))));
      w->setFont(font);
    }
  }
  for (int p = 1; p <= reader::kPanes; ++p) {
    const bool seen = layout_.panes[static_cast<std::size_t>(p)].visible;
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    pane->setVisible(seen);
    Held& held = held_[static_cast<std::size_t>(p)];
    if (!seen || !held.due) continue;
    held.due = false;
    if (held.colour) pane->SetBackground(*held.colour);
    pane->SetBody(held.body);
    if (held.scrollRight != 0) pane->ScrollTo(held.scrollRight, 0);
    if (held.toTop) pane->ScrollTo(0, 0);
  }
  if (layout_.Command16) panes_[static_cast<std::size_t>(layout_.paneOnTop)]->raise();
  for (std::size_t t = 0; t < tagT_.size(); ++t) {
    tagT_[t]->setVisible(layout_.tabs[t].visible);
    tagB_[t]->setGeometry(1, 1, tagT_[t]->width() - 2, std::min(tagT_[t]->height() - 2, static_cast<int>(150 * scale_)));
    tagT_[t]->raise();
  }
  commands_[10]->setVisible(layout_.Command10);
  commands_[13]->setVisible(layout_.Command13);
  commands_[16]->setVisible(layout_.Command16);
  sinSya_->setEnabled(reader().Muki1 == 0);
  tyoKat_->setEnabled(reader().Muki1 == 0);
  if (editBox_->isVisible() && editPane_ != 0) {
    editBox_->setGeometry(panes_[static_cast<std::size_t>(editPane_)]->geometry());
  }
  if (muki_ != reader().Muki1) {
    muki_ = reader().Muki1;
    if (balloons_ != nullptr) balloons_->LayoutChanged();
  }
}

// --- actions ---

void WritingsForm::OpenHitList() {
  if (!hitList_) {
    highlighter_ = std::make_unique<reader::Highlighter>(reader().engine(), program_.settings().Itaiji);
    const QString id = QString::number(reinterpret_cast<quintptr>(this), 16);
    hitList_ = std::make_unique<HitListWindow>(reader().engine(), *highlighter_, program_.corpus(),
                                               program_.selection(), program_.settings(), nok_,
                                               program_.store(), U(windowTitle()), U(id));
    hitList_->onJump = [this] {
      window_.Hyouji();
      window_.Raise();
    };
    hitList_->onContextMenu = [this](QPoint at) { ShowMenu(hitList_->pane(), at); };
    hitList_->menuOpen = [] { return platform::PopupMenu::Open() != nullptr; };
    hitList_->closeMenu = [] { platform::PopupMenu::CloseMenu(); };
  }
  hitList_->Hyouji();
  hitList_->show();
  hitList_->raise();
}

void WritingsForm::OpenBookmarks() {
  corpus::ProfileFile file(program_.corpus().dataPath() / "suiten.ini");
  const QPoint mov = bMark_->mapToGlobal(QPoint(0, bMark_->height()));
  BookmarkWindow dialog(corpus::BookmarkKind::Writings, file, program_.corpus(), program_.selection(),
                        window_.Place(), program_.store(), mov, this);
  dialog.ask = program_.ask;
  dialog.exec();
  const std::optional<reader::BookmarkMove>& moved = dialog.moved();
  if (!moved) return;
  // The bookmark's collection is in force already: every open window
  // follows it, then this one takes the bookmark's place.
  if (moved->selectionChanged) program_.FollowSelection();
  window_.SetPlace(moved->place);
  window_.Hyouji();
}

void WritingsForm::Apply(const reader::ReaderOutcome& out) {
  if (out.closeHitList && hitList_) hitList_->hide();
  if (out.redraw) window_.Hyouji();
  if (out.focusPanel) FocusPanel();
  if (out.focusSearchBox) {
    combo1_->setFocus();
    combo1_->selectAll();
  }
  if (!out.message.empty()) QMessageBox::information(this, windowTitle(), Q(out.message));
  if (out.openSettings) program_.OpenSettings(this);
  if (out.toast && program_.toast) program_.toast(this);
  // An open list follows the search.
  if (hitList_ && hitList_->isVisible()) hitList_->Hyouji();
}

void WritingsForm::Search(int divMode) {
  search::SearchEngine& engine = reader().engine();
  engine.Combo1 = U(combo1_->text().remove(QLatin1Char('\n')));
  engine.DivMode = divMode;
  const QString selected = GetSelection();
  Apply(reader().Command1(U(selected)));
  if (!selected.isEmpty()) combo1_->setText(selected);
}

QString WritingsForm::GetSelection() const {
  QString out;
  for (int p = 1; p <= reader::kPanes; ++p) out += panes_[static_cast<std::size_t>(p)]->SelectedText();
  return out.trimmed();
}

bool WritingsForm::TypingIn(QWidget* w) const {
  return w == combo1_ || w == editBox_ || qobject_cast<QLineEdit*>(w) != nullptr;
}

bool WritingsForm::KeyDownAll(int qtKey, Qt::KeyboardModifiers modifiers) {
  if (balloons_ != nullptr) balloons_->KeyDown();
  const int code = platform::KeyCode(qtKey);
  if (code == reader::kEscape) {
    if (platform::PopupMenu::CloseMenu()) return true;
    if (window_.CancelOnEsc) close();
    return window_.CancelOnEsc;
  }
  const reader::ReaderOutcome out = reader().KeyDownAll(code, platform::ShiftState(modifiers));
  Apply(out);
  return out.redraw || out.focusSearchBox || out.openSettings || out.focusPanel ||
         code == reader::key::kUp || code == reader::key::kDown || code == reader::key::kLeft ||
         code == reader::key::kRight;
}

void WritingsForm::keyPressEvent(QKeyEvent* event) {
  if (TypingIn(focusWidget())) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (!KeyDownAll(event->key(), event->modifiers())) QWidget::keyPressEvent(event);
}

void WritingsForm::PaneKey(int pane, int qtKey, Qt::KeyboardModifiers modifiers, bool& handled) {
  (void)pane;
  const int code = platform::KeyCode(qtKey);
  const reader::PaneKey asked =
      reader::PaneKeyDown(code, modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
                          modifiers.testFlag(Qt::AltModifier), platform::PopupMenu::Open() != nullptr);
  using A = reader::PaneKey::Action;
  switch (asked.action) {
    case A::Pass:
      if (code == reader::kEscape) handled = KeyDownAll(qtKey, modifiers);
      return;
    case A::Swallow: handled = true; return;
    case A::CloseMenu:
      platform::PopupMenu::CloseMenu();
      handled = true;
      return;
    case A::FocusSearch:
      combo1_->setFocus();
      combo1_->selectAll();
      handled = true;
      return;
    case A::Copy:
      platform::Clipboard::SetText(panes_[static_cast<std::size_t>(pane)]->SelectedText());
      handled = true;
      return;
    case A::Move:
      if (balloons_ != nullptr) balloons_->KeyDown();
      Apply(reader().KeyDownAll(code, asked.shift));
      handled = true;
      return;
  }
}

void WritingsForm::Link(const QString& href) {
  const std::u16string target = U(href);
  // A view whose window this build does not have is not reached.
  if (reader::ResolveLink(target, program_.corpus()).kind == reader::LinkTarget::Kind::Sutra &&
      !program_.Builds(reader::FormKind::Form7)) {
    return;
  }
  Apply(window_.LinkClick(program_.navigator(), target));
}

void WritingsForm::Jump(int command) {
  FocusPanel();
  reader::Navigator& nav = program_.navigator();
  const std::u16string family = window_.ParentForm.empty() ? std::u16string(reader::kWritingsFamily)
                                                            : window_.ParentForm;
  const int mpos = reader().Mpos();
  const corpus::Table& mok = program_.corpus().Mok();
  const auto title = [&] {
    if (mpos < 1 || mpos > program_.corpus().MosMaxY) return std::u16string();
    std::u16string t(mok.Get(program_.corpus().MokOrder[static_cast<std::size_t>(mpos)], corpus::mok::kTitle));
    if (const std::size_t blank = t.find_first_of(u" \u3000"); blank != std::u16string::npos) t.resize(blank);
    return t;
  };
  switch (command) {
    case 4:
      program_.ShowContentsAt(mpos);
      return;
    case 5:
      if (program_.Builds(reader::FormKind::Form5)) nav.GoMok(u"", mpos, family);
      return;
    case 6:
      if (program_.Builds(reader::FormKind::Form7)) nav.GoKyou(U(GetSelection()), 0, family);
      return;
    case 7:
      if (program_.Builds(reader::FormKind::Form12)) nav.GoNen(title(), mpos, family);
      return;
    case 8: {
      if (!program_.Builds(reader::FormKind::Form6)) return;
      const std::u16string selected = U(GetSelection());
      nav.GoJisho(selected.empty() ? title() : selected, family);
      return;
    }
    default: return;
  }
}

// --- the pop-up menu ---

namespace {

// The selected text of a menu's target: a pane's selection or a box's.
QString SelectionOf(QWidget* target) {
  if (auto* pane = qobject_cast<platform::HtmlPane*>(target)) return pane->SelectedText();
  if (auto* line = qobject_cast<QLineEdit*>(target)) return line->selectedText();
  if (auto* edit = qobject_cast<QPlainTextEdit*>(target)) return edit->textCursor().selectedText();
  return {};
}

}  // namespace

void WritingsForm::ShowMenu(QWidget* target, QPoint at) {
  const bool pane = qobject_cast<platform::HtmlPane*>(target) != nullptr;
  reader::MenuState menu = reader::MenuShow(pane ? reader::MenuTarget::Pane : reader::MenuTarget::TextBox,
                                            U(SelectionOf(target)), U(platform::Clipboard::Text()));
  // A lookup in a view this build has no window for is not offered.
  constexpr std::array<std::pair<int, reader::FormKind>, 3> kViews = {
      {{1, reader::FormKind::Form6}, {3, reader::FormKind::Form7}, {4, reader::FormKind::Form16}}};
  for (const auto& [item, kind] : kViews) {
    if (!program_.Builds(kind)) menu.MenuEnabled[static_cast<std::size_t>(item)] = 0;
  }
  platform::PopupMenu* shown = platform::PopupMenu::ShowAt(menu, at, this);
  const QPointer<QWidget> alive(target);
  connect(shown, &platform::PopupMenu::chosen, this, [this, alive, menu](int n) {
    if (alive) MenuGo(alive, menu, n);
  });
}

void WritingsForm::MenuGo(QWidget* target, const reader::MenuState& menu, int n) {
  const reader::MenuOwner owner{.kind = reader::FormKind::Form2,
                                .ParentForm = window_.ParentForm.empty() ? std::u16string(reader::kWritingsFamily)
                                                                         : window_.ParentForm,
                                .Muki1 = reader().Muki1};
  const reader::MenuChoice choice = reader::MenuGo(menu, n, U(SelectionOf(target)), owner);
  auto* pane = qobject_cast<platform::HtmlPane*>(target);
  if (choice.clearPaneSelection && pane != nullptr) pane->ClearSelection();
  if (choice.kind != reader::MenuChoice::Kind::Edit) {
    reader::RunLookup(program_.navigator(), choice);
    return;
  }
  if (pane != nullptr) {
    if (choice.execWB == reader::kExecCopy) platform::Clipboard::SetText(pane->SelectedText());
    return;
  }
  auto* line = qobject_cast<QLineEdit*>(target);
  auto* edit = qobject_cast<QPlainTextEdit*>(target);
  switch (choice.message) {
    case reader::kWmCut:
      if (line) line->cut();
      if (edit) edit->cut();
      break;
    case reader::kWmCopy:
      if (line) line->copy();
      if (edit) edit->copy();
      break;
    case reader::kWmPaste:
      if (line) line->paste();
      if (edit) edit->paste();
      break;
    default: break;
  }
}

// --- double clicks and notes ---

void WritingsForm::SelectKanjiRun(int pane) {
  // The node under the selection and the offsets in it; the run is grown in
  // the core, which knows what a kanji is here.
  platform::HtmlPane* p = panes_[static_cast<std::size_t>(pane)];
  p->RunScript(
      QStringLiteral("(function(){var s=window.getSelection();if(!s.rangeCount)return null;"
                     "var r=s.getRangeAt(0);if(r.startContainer!==r.endContainer||"
                     "r.startContainer.nodeType!==3)return null;"
                     "return [r.startContainer.data,r.startOffset,r.endOffset];})()"),
      [p](const QVariant& result) {
        const QVariantList parts = result.toList();
        if (parts.size() != 3) return;
        const std::u16string text = U(parts[0].toString());
        const auto [start, end] =
            reader::KanjiRunAround(text, parts[1].toUInt(), parts[2].toUInt());
        p->RunScript(QStringLiteral("(function(){var s=window.getSelection();var r=s.getRangeAt(0);"
                                    "var n=r.startContainer;r.setStart(n,%1);r.setEnd(n,%2);"
                                    "s.removeAllRanges();s.addRange(r);})()")
                         .arg(start)
                         .arg(end));
      });
}

bool WritingsForm::StartNoteEdit(int pane) {
  const std::optional<std::u16string> note = reader().StartNoteEdit(pane);
  if (!note) return false;
  editPane_ = pane;
  editStart_ = Q(*note);
  editBox_->setPlainText(editStart_);
  editBox_->setStyleSheet(pane == 7 ? "background:#FEF6EA;" : "background:white;");
  editBox_->setGeometry(panes_[static_cast<std::size_t>(pane)]->geometry());
  editBox_->show();
  editBox_->raise();
  editBox_->setFocus();
  editBox_->moveCursor(QTextCursor::End);
  return true;
}

void WritingsForm::EndNoteEdit() {
  if (editPane_ == 0) return;
  const int pane = editPane_;
  editPane_ = 0;
  editBox_->hide();
  QString text = editBox_->toPlainText();
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  QString start = editStart_;
  start.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  Apply(reader().EndNoteEdit(pane, U(start), U(text)));
}

// --- events ---

bool WritingsForm::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched == editBox_) {
    if (type == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (key->modifiers().testFlag(Qt::ControlModifier)) {
          editBox_->insertPlainText(QStringLiteral("\n"));
        } else {
          EndNoteEdit();
          FocusPanel();
        }
        return true;
      }
    }
    if (type == QEvent::FocusOut) EndNoteEdit();
    return false;
  }
  if (watched == combo1_ && type == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if (key->modifiers().testFlag(Qt::ControlModifier)) return true;  // a line feed is dropped
      FocusPanel();
      reader().engine().Combo1 = U(combo1_->text());
      Apply(reader().Combo1Enter());
      return true;
    }
    if (key->matches(QKeySequence::Paste)) {
      // Pasted without line ends; the clipboard keeps what it had.
      QString text = platform::Clipboard::Text();
      text.remove(QLatin1Char('\r')).remove(QLatin1Char('\n'));
      combo1_->insert(text);
      return true;
    }
    return false;
  }
  if (type == QEvent::KeyPress) {
    for (const auto& [box, page] : page_) {
      if (watched != page) continue;
      auto* key = static_cast<QKeyEvent*>(event);
      const QString typed = key->text();
      if (key->modifiers().testFlag(Qt::ControlModifier) || typed.isEmpty() || key->key() == Qt::Key_Return ||
          key->key() == Qt::Key_Enter) {
        return false;
      }
      return !reader::PageBoxTakes(typed.at(0).unicode());
    }
  }
  if (watched == command1_ && type == QEvent::MouseButtonPress) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton) {
      // Shift or Ctrl at the press: the split searches.
      const int divMode = mouse->modifiers().testFlag(Qt::ShiftModifier)     ? 1
                          : mouse->modifiers().testFlag(Qt::ControlModifier) ? 2
                                                                              : 0;
      if (divMode != 0) {
        reader().engine().SrMethod = search::Method::And;
        command1_->setDown(true);
        QTimer::singleShot(0, this, [this, divMode] {
          command1_->setDown(false);
          Search(divMode);
        });
        return true;
      }
    }
  }
  if (watched == command1_ && type == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
    reader().engine().StepMethod();
    command1_->setText(Q(reader().engine().Command1Caption()));
    return true;
  }
  if ((watched == btUp_ || watched == btDown_) && type == QEvent::MouseButtonPress) {
    reader().BTShift = platform::ShiftState(static_cast<QMouseEvent*>(event)->modifiers());
  }
  if (type == QEvent::MouseButtonRelease) {
    const bool strip = watched == picture3_ || std::find(clev_.begin(), clev_.end(), watched) != clev_.end();
    if (strip) {
      program_.OpenSelection(this);
      return true;
    }
    for (std::size_t t = 0; t < tagT_.size(); ++t) {
      if (watched == tagT_[t]) {
        tagB_[t]->click();
        return true;
      }
    }
  }
  if (type == QEvent::Enter) {
    // The focus follows the mouse into a pane, unless a box is being typed in.
    for (int p = 1; p <= reader::kPanes; ++p) {
      platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
      if (watched == pane && isActiveWindow() && !TypingIn(focusWidget()) && !pane->hasFocus()) pane->setFocus();
    }
  }
  if (type == QEvent::FocusIn) {
    for (int p = 1; p <= reader::kPanes; ++p) {
      if (watched == panes_[static_cast<std::size_t>(p)]) reader().ActivePane = p;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void WritingsForm::closeEvent(QCloseEvent* event) {
  if (platform::PopupMenu::CloseMenu()) {
    event->ignore();
    return;
  }
  if (!program_.Ending() && window_.Pin) {
    event->ignore();
    return;
  }
  event->accept();
  if (hitList_) hitList_->hide();
  if (!program_.Ending()) program_.Closed(window_);
}

void WritingsForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (placing_ || isMinimized() || layout_.width == 0) return;
  if (isMaximized()) {
    showNormal();
    return;
  }
  // The window keeps its proportions: the height follows the width, or the
  // width the height when only that was dragged.
  const bool byHeight = event->oldSize().width() == width() && event->oldSize().height() != height();
  const double scale = byHeight ? double(height()) / layout_.height : double(width()) / layout_.width;
  if (scale <= 0.2) return;
  const QSize want(static_cast<int>(std::lround(layout_.width * scale)),
                   static_cast<int>(std::lround(layout_.height * scale)));
  const bool zoomed = std::abs(scale - scale_) > 0.001;
  scale_ = scale;
  if (size() != want) {
    placing_ = true;
    resize(want);
    placing_ = false;
  }
  Place();
  if (zoomed) {
    for (int p = 1; p <= reader::kPanes; ++p) panes_[static_cast<std::size_t>(p)]->SetZoom(Q(reader::ZoomText(96 * scale_)));
  }
  SaveGeometry();
}

void WritingsForm::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  SaveGeometry();
}

void WritingsForm::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && !isActiveWindow()) window_.Deactivate();
}

void WritingsForm::SaveGeometry() {
  if (!isVisible() || isMinimized() || isMaximized() || program_.Ending()) return;
  const QRect g = geometry();
  corpus::WriteGeometry(program_.store(), kSection, {g.x(), g.y(), g.width(), g.height()});
}

bool WritingsForm::PanesSettled() const {
  for (int p = 1; p <= reader::kPanes; ++p) {
    if (!panes_[static_cast<std::size_t>(p)]->FrameReady()) return false;
  }
  return true;
}

}  // namespace suizo::app
