#include "app/views/writings_form.h"

#include <QEvent>
#include <QMessageBox>

#include "app/corpus/program.h"
#include "app/platform/plain_text.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"
#include "app/views/hit_list_window.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/reader/frame.h"
#include "core/reader/links.h"
#include "core/reader/page_boxes.h"
#include "core/views/contents.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

ReaderFormShape WritingsShape() {
  // The tab labels take the colour of their pane's body.
  return {.name = "Form2",
          .section = u"@本文",
          .kind = reader::FormKind::Form2,
          .bookmarks = corpus::BookmarkKind::Writings,
          .tabs = {u"システム版", u"現代語訳", u"真蹟直読", u"真蹟活用", u"門下写本", u"原型活用",
                   u"真備考", u"写備考", u"メモ２", u"メモ３", u"引用索引"},
          .tabColours = {15987674, 16709354, 16709354, 16709354, 15332093, 15332093, 16709354,
                         15332093, 16777215, 16777215, 16709354},
          .paneOfTab = {1, 2, 3, 3, 3, 3, 4, 4, 5, 6, 7},
          .panes = reader::kPanes};
}

}  // namespace

WritingsForm::WritingsForm(reader::WritingsWindow& window, Program& program)
    : ReaderForm(window, window.reader(), program, WritingsShape()), writings_(window) {
  Init();
  Hook(writings_);
}

WritingsForm::~WritingsForm() = default;

void WritingsForm::BuildOwn() {
  // First row: the document, the views, the classes.
  bangou_ = Field("Bangou", {8, 6, 84, 24});
  text4_ = Field("Text4", {96, 6, 250, 24});
  text4_->setStyleSheet(
      "background:white; border:1px solid #999; font-weight:bold; color:#0A5657;");
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
  constexpr std::array<reader::FormKind, 5> kTargets = {
      reader::FormKind::Form9, reader::FormKind::Form5, reader::FormKind::Form7,
      reader::FormKind::Form12, reader::FormKind::Form6};
  for (const auto& [number, caption] : views) {
    const QByteArray name = "Command" + QByteArray::number(number);
    commands_[number] = Button(name.constData(), caption, {x, 6, 44, 24});
    commands_[number]->setEnabled(program_.Builds(kTargets[static_cast<std::size_t>(number - 4)]));
    // Clang 14 captures no structured binding.
    connect(commands_[number], &QPushButton::clicked, this, [this, n = number] { Jump(n); });
    x += 46;
  }
  picture3_ = new QWidget(this);
  picture3_->setObjectName("Picture3");
  Put(picture3_, {914, 6, 198, 24});
  for (int c = 0; c <= 10; ++c) {
    auto* l = platform::PlainLabel(Q(views::ClevCaption(c)), picture3_);
    l->setObjectName(QStringLiteral("Clev_%1").arg(c));
    l->setAlignment(Qt::AlignCenter);
    l->installEventFilter(this);
    Put(l, {c * 18, 2, 17, 20});
    clev_[static_cast<std::size_t>(c)] = l;
  }
  commands_[11] = Button("Command11", QStringLiteral("真 蹟"), {1114, 6, 40, 24});
  connect(commands_[11], &QPushButton::clicked, this, [this] { program_.OpenSelection(this); });

  // The switches of the search strip's row.
  commands_[2] = Button("Command2", QStringLiteral("一覧"), {638, 36, 44, 26});
  connect(commands_[2], &QPushButton::clicked, this, [this] {
    FocusPanel();
    OpenHitList();
  });
  kakko_ = Button("Kakko", QStringLiteral("（）"), {716, 36, 36, 26});
  kakko_->setCheckable(true);
  sinSya_ = Button("SinSyaButton", {}, {756, 36, 26, 26});
  tyoKat_ = Button("TyoKatButton", {}, {786, 36, 26, 26});
  commands_[9] = Button("Command9", {}, {816, 36, 26, 26});
  commands_[9]->hide();  // the layout's spare: no action of its own
  commands_[10] = Button("Command10", QStringLiteral("△"), {816, 36, 26, 26});
  commands_[13] = Button("Command13", QStringLiteral("▽"), {816, 36, 26, 26});
  commands_[16] = Button("Command16", QStringLiteral("切替"), {846, 36, 44, 26});
  fav_ = Button("Fav", QStringLiteral("★"), {1002, 36, 26, 26});
  fav_->setCheckable(true);
  connect(kakko_, &QPushButton::clicked, this, [this] { Apply(reader().KakkoClick()); });
  connect(sinSya_, &QPushButton::clicked, this, [this] { Apply(reader().SinSyaButton()); });
  connect(tyoKat_, &QPushButton::clicked, this, [this] { Apply(reader().TyoKatButton()); });
  connect(commands_[10], &QPushButton::clicked, this, [this] { Apply(reader().Command10()); });
  connect(commands_[13], &QPushButton::clicked, this, [this] { Apply(reader().Command13()); });
  connect(commands_[16], &QPushButton::clicked, this, [this] { Apply(reader().Command16()); });
  connect(fav_, &QPushButton::clicked, this, [this] {
    FocusPanel();
    // A toggle that keeps nothing: pressing it only says so.
    if (!fav_->isChecked()) return;
    fav_->setChecked(false);
    fav_->setStyleSheet("background:" + palette().dark().color().name() + "; color:yellow;");
    platform::ShowMessage(this, QMessageBox::Information, windowTitle(), QStringLiteral("ok"));
    fav_->setStyleSheet("color:#C0C0C0;");
  });

  // Third row: the page boxes of the collections.
  x = 8;
  for (const int box : reader::kPageBoxes) {
    const int titleIndex = reader::PageTitleOf(box);
    const corpus::Collection* c = corpus::FindCollection(titleIndex);
    AddPageBox(box, c != nullptr ? Q(c->label) : QString(),
               QStringLiteral("PageTitle_%1").arg(titleIndex), {x, 68, 38, 24},
               {x + 38, 68, 64, 24});
    pageTitle_[titleIndex] = findChild<QLabel*>(QStringLiteral("PageTitle_%1").arg(titleIndex));
    x += 106;
  }
}

void WritingsForm::ShowOwn(const reader::ReaderView& v) {
  bangou_->setText(Q(v.Bangou));
  text1_->setText(Q(v.Text1));
  text4_->setText(Q(v.Text4));
  text5_->setText(Q(v.Text5));
  text6_->setText(Q(v.Text6));
  for (const auto& [index, title] : pageTitle_) {
    title->setStyleSheet(
        "background:" + Css(v.clev.PageTitle[static_cast<std::size_t>(index)], this) + ";");
  }
  for (std::size_t c = 0; c < clev_.size(); ++c) {
    clev_[c]->setStyleSheet("background:" + Css(v.clev.Clev[c], this) + "; border:1px solid #666;");
  }
  sinSya_->setText(v.SinSyaCaption.empty() ? QStringLiteral("真") : Q(v.SinSyaCaption));
  sinSya_->setStyleSheet("background:" + Css(v.SinSyaColour, this) + ";");
  tyoKat_->setText(Q(v.TyoKatCaption));
  kakko_->setVisible(v.KakkoVisible);
  kakko_->setChecked(reader().Kakko);
  commands_[13]->setText(Q(v.Command13Caption));
  commands_[10]->setText(Q(v.Command10Caption));
}

reader::WritingsLayout WritingsForm::MakeLayout() const {
  const reader::WritingsReader& r = writings_.reader();
  const corpus::Settings& s = program_.settings();
  return reader::LayOutWritings({.Muki1 = r.Muki1,
                                 .Gcm1 = s.Gcm1,
                                 .GcmShow = r.GcmShow,
                                 .TateOne = r.TateOne,
                                 .CompactSwap = r.CompactSwap,
                                 .GmL1 = s.GmL1,
                                 .GmL2 = s.GmL2,
                                 .tabVisible = r.TabVisibility()});
}

void WritingsForm::PlaceOwn() {
  commands_[10]->setVisible(layout_.Command10);
  commands_[13]->setVisible(layout_.Command13);
  commands_[16]->setVisible(layout_.Command16);
  sinSya_->setEnabled(reader().Muki1 == 0);
  tyoKat_->setEnabled(reader().Muki1 == 0);
}

std::optional<std::u16string> WritingsForm::NoteText(int pane) const {
  return writings_.reader().StartNoteEdit(pane);
}

reader::ReaderOutcome WritingsForm::NoteEnd(int pane, std::u16string_view start,
                                            std::u16string_view text) {
  return reader().EndNoteEdit(pane, start, text);
}

bool WritingsForm::PageTakes(char16_t c) const {
  return reader::PageBoxTakes(c);
}

bool WritingsForm::OwnEvent(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::MouseButtonRelease) return false;
  const bool strip =
      watched == picture3_ || std::find(clev_.begin(), clev_.end(), watched) != clev_.end();
  if (strip) program_.OpenSelection(this);
  return strip;
}

// --- the hit list ---

void WritingsForm::OpenHitList() {
  if (!hitList_) {
    highlighter_ =
        std::make_unique<reader::Highlighter>(reader().engine(), program_.settings().Itaiji);
    const QString id = QString::number(reinterpret_cast<quintptr>(this), 16);
    hitList_ = std::make_unique<HitListWindow>(reader().engine(), *highlighter_, program_.corpus(),
                                               program_.selection(), program_.settings(), nok_,
                                               program_.store(), U(windowTitle()), U(id));
    hitList_->onJump = [this] {
      writings_.Hyouji();
      writings_.Raise();
    };
    hitList_->onContextMenu = [this](QPoint at) { ShowMenu(hitList_->pane(), at); };
    hitList_->menuOpen = [] { return platform::PopupMenu::Open() != nullptr; };
    hitList_->closeMenu = [] { platform::PopupMenu::CloseMenu(); };
  }
  hitList_->Hyouji();
  hitList_->show();
  hitList_->raise();
}

void WritingsForm::CloseHitList() {
  if (hitList_) hitList_->hide();
}

void WritingsForm::RefreshHitList() {
  // An open list follows the search.
  if (hitList_ && hitList_->isVisible()) hitList_->Hyouji();
}

// --- links and jumps ---

void WritingsForm::Link(const QString& href) {
  const std::u16string target = U(href);
  // A view whose window this build does not have is not reached.
  if (reader::ResolveLink(target, program_.corpus()).kind == reader::LinkTarget::Kind::Sutra &&
      !program_.Builds(reader::FormKind::Form7)) {
    return;
  }
  Apply(writings_.LinkClick(program_.navigator(), target));
}

void WritingsForm::Jump(int command) {
  FocusPanel();
  reader::Navigator& nav = program_.navigator();
  const std::u16string family = Family();
  const int mpos = reader().Mpos();
  const corpus::Table& mok = program_.corpus().Mok();
  const auto title = [&] {
    if (mpos < 1 || mpos > program_.corpus().MosMaxY) return std::u16string();
    std::u16string t(
        mok.Get(program_.corpus().MokOrder[static_cast<std::size_t>(mpos)], corpus::mok::kTitle));
    if (const std::size_t blank = t.find_first_of(u" \u3000"); blank != std::u16string::npos)
      t.resize(blank);
    return t;
  };
  switch (command) {
    case 4:
      program_.ShowContentsAt(reader::FormKind::Form9, mpos);
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
    default:
      return;
  }
}

}  // namespace suizo::app
