#include "app/views/scripture_forms.h"

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app/views/outline_form.h"
#include "core/corpus/settings.h"
#include "core/reader/page_boxes.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

constexpr std::uint32_t kReadingColour = 15987674;
constexpr std::uint32_t kTextColour = 16709354;
constexpr std::uint32_t kNotesColour = 16777215;

}  // namespace

ScriptureForm::ScriptureForm(reader::TextView& window, scripture::ScriptureReader& model,
                             Program& program, ReaderFormShape shape)
    : ReaderForm(window, model, program, std::move(shape)), scripture_(model) {}

QPushButton* ScriptureForm::ViewButton(int number, const QString& caption, int x,
                                       reader::FormKind target) {
  const QByteArray name = "Command" + QByteArray::number(number);
  QPushButton* b = Button(name.constData(), caption, {x, 6, 44, 24});
  b->setEnabled(program_.Builds(target));
  commands_[number] = b;
  return b;
}

void ScriptureForm::BuildScripture(const QString& check1, int flip,
                                   const std::vector<std::pair<int, QString>>& pages) {
  check1_ = new QCheckBox(check1, this);
  check1_->setObjectName("Check1");
  check1_->setFocusPolicy(Qt::NoFocus);
  Put(check1_, {716, 36, 60, 26});
  connect(check1_, &QCheckBox::clicked, this, [this] { Apply(scripture_.Check1Click()); });
  const QByteArray name = "Command" + QByteArray::number(flip);
  flip_ = Button(name.constData(), QStringLiteral("切替"), {846, 36, 44, 26});
  commands_[flip] = flip_;
  int x = 8;
  for (const auto& [box, title] : pages) {
    AddPageBox(box, title, QStringLiteral("PageTitle_%1").arg(box), {x, 68, 64, 24},
               {x + 64, 68, 96, 24});
    x += 168;
  }
}

void ScriptureForm::ShowScripture(const reader::ReaderView& v) {
  const std::array<const std::u16string*, 7> texts = {nullptr,  &v.Text1, &v.Text2, &v.Text3,
                                                      &v.Text4, &v.Text5, &v.Text6};
  for (const auto& [number, field] : fields_)
    field->setText(Q(*texts[static_cast<std::size_t>(number)]));
  check1_->setVisible(v.Check1Visible);
  check1_->setChecked(v.Check1);
}

reader::WritingsLayout ScriptureForm::MakeLayout() const {
  reader::ScriptureLayoutState state = vertical_;
  state.Muki1 = model_.Muki1;
  state.Gcm1 = program_.settings().Gcm1;
  return reader::LayOutScripture(state);
}

void ScriptureForm::PlaceOwn() {
  flip_->setVisible(layout_.Command16);
}

std::optional<std::u16string> ScriptureForm::NoteText(int pane) const {
  return scripture_.StartNoteEdit(pane);
}

reader::ReaderOutcome ScriptureForm::NoteEnd(int pane, std::u16string_view start,
                                             std::u16string_view text) {
  return scripture_.EndNoteEdit(pane, start, text);
}

bool ScriptureForm::PageTakes(char16_t c) const {
  return reader::ScripturePageBoxTakes(c);
}

void ScriptureForm::LookUp(reader::FormKind target) {
  FocusPanel();
  if (!program_.Builds(target)) return;
  reader::Navigator& nav = program_.navigator();
  const std::u16string selected = U(GetSelection());
  switch (target) {
    case reader::FormKind::Form2:
      nav.GoHonbun(selected, 0, 0, search::Method::And, model_.Muki1, Family());
      return;
    case reader::FormKind::Form7:
      nav.GoKyou(selected, 0, Family());
      return;
    case reader::FormKind::Form6:
      nav.GoJisho(selected, Family());
      return;
    default:
      return;
  }
}

// --- the sutra ---

SutraForm::SutraForm(scripture::SutraWindow& window, Program& program)
    : ScriptureForm(window, window.reader(), program,
                    {.name = "Form7",
                     .section = u"@経文",
                     .kind = reader::FormKind::Form7,
                     .bookmarks = corpus::BookmarkKind::Sutra,
                     .tabs = {u"訓読", u"現代語訳", u"真読", u"メモ"},
                     .tabColours = {kReadingColour, kTextColour, kTextColour, kNotesColour},
                     .paneOfTab = {1, 2, 3, 4},
                     .panes = 4}),
      sutra_(window) {
  Init();
  Hook(sutra_);
}

void SutraForm::BuildOwn() {
  fields_[4] = Field("Text4", {8, 6, 330, 24});
  fields_[5] = Field("Text5", {342, 6, 220, 24});
  // The contents of the family the reader was opened in.
  connect(ViewButton(2, QStringLiteral("目次"), 680, reader::FormKind::Form9),
          &QPushButton::clicked, this, [this] {
            FocusPanel();
            program_.ShowContentsAt(reader::ContentsOf(Family()), 0);
          });
  connect(ViewButton(4, QStringLiteral("翠典"), 726, reader::FormKind::Form2),
          &QPushButton::clicked, this, [this] { LookUp(reader::FormKind::Form2); });
  connect(ViewButton(5, QStringLiteral("総科"), 772, reader::FormKind::Form8),
          &QPushButton::clicked, this, [this] { OpenOutline(scripture::kSoukaGrid); });
  connect(ViewButton(6, QStringLiteral("科文"), 818, reader::FormKind::Form8),
          &QPushButton::clicked, this, [this] { OpenOutline(scripture::kKamonGrid); });
  // The commentary has no view: the button only gives the focus back.
  QPushButton* commentary = Button("Command7", QStringLiteral("注経"), {864, 6, 44, 24});
  commands_[7] = commentary;
  connect(commentary, &QPushButton::clicked, this, [this] { Apply(reader().Command7()); });
  connect(ViewButton(8, QStringLiteral("辞書"), 910, reader::FormKind::Form6),
          &QPushButton::clicked, this, [this] { LookUp(reader::FormKind::Form6); });
  BuildScripture(QStringLiteral("真訓"), 13,
                 {{1, QStringLiteral("法華No.")},
                  {10, QStringLiteral("蔵経")},
                  {11, QStringLiteral("開結")},
                  {12, QStringLiteral("対訳")}});
  connect(flip_, &QPushButton::clicked, this, [this] { Apply(reader().Command13()); });
}

SutraForm::~SutraForm() = default;

void SutraForm::OpenOutline(int skFlag) {
  FocusPanel();
  if (!outline_) {
    outline_ = std::make_unique<OutlineForm>(program_.corpus(), program_.store());
    // `SutraGo`: back into this reader at the outline's row.
    outline_->onSutraGo = [this](const search::Position& place) {
      sutra_.SetPlace(place);
      sutra_.Show();
      sutra_.Raise();
      sutra_.Hyouji();
    };
  }
  outline_->Open(skFlag, reader().Lpos());
}

// --- the sources ---

SourcesForm::SourcesForm(scripture::SourcesWindow& window, Program& program)
    : ScriptureForm(window, window.reader(), program,
                    {.name = "Form16",
                     .section = u"@史料本文",
                     .kind = reader::FormKind::Form16,
                     .bookmarks = corpus::BookmarkKind::Sources,
                     .tabs = {u"原型活用", u"漢文成形", u"読下本文", u"備考"},
                     .tabColours = {kReadingColour, kTextColour, kTextColour, kNotesColour},
                     .paneOfTab = {1, 2, 3, 4},
                     .panes = 4}),
      sources_(window) {
  Init();
  Hook(sources_);
}

void SourcesForm::BuildOwn() {
  fields_[4] = Field("Text4", {8, 6, 250, 24});
  fields_[3] = Field("Text3", {262, 6, 110, 24});
  fields_[6] = Field("Text6", {376, 6, 100, 24});
  fields_[1] = Field("Text1", {480, 6, 96, 24});
  fields_[2] = Field("Text2", {580, 6, 96, 24});
  connect(ViewButton(2, QStringLiteral("目次"), 680, reader::FormKind::Form15),
          &QPushButton::clicked, this, [this] {
            FocusPanel();
            program_.ShowContentsAt(reader::FormKind::Form15, reader().Mpos());
          });
  connect(ViewButton(4, QStringLiteral("翠典"), 726, reader::FormKind::Form2),
          &QPushButton::clicked, this, [this] { LookUp(reader::FormKind::Form2); });
  connect(ViewButton(5, QStringLiteral("法華"), 772, reader::FormKind::Form7),
          &QPushButton::clicked, this, [this] { LookUp(reader::FormKind::Form7); });
  // "--" does nothing.
  commands_[6] = Button("Command6", QStringLiteral("--"), {818, 6, 44, 24});
  connect(ViewButton(7, QStringLiteral("年表"), 864, reader::FormKind::Form12),
          &QPushButton::clicked, this, [this] {
            FocusPanel();
            if (program_.Builds(reader::FormKind::Form12))
              program_.navigator().GoNenS(u"", reader().Mpos(), Family());
          });
  connect(ViewButton(8, QStringLiteral("辞書"), 910, reader::FormKind::Form6),
          &QPushButton::clicked, this, [this] { LookUp(reader::FormKind::Form6); });
  commands_[13] = Button("Command13", QStringLiteral("▽"), {816, 36, 26, 26});
  connect(commands_[13], &QPushButton::clicked, this, [this] { Apply(reader().Command13()); });
  BuildScripture(QStringLiteral("漢文"), 16,
                 {{1, QStringLiteral("ｼｽﾃﾑNo")}, {10, QStringLiteral("史料番号")}});
  connect(flip_, &QPushButton::clicked, this, [this] { Apply(reader().Command16()); });
}

void SourcesForm::ShowOwn(const reader::ReaderView& v) {
  ShowScripture(v);
  commands_[13]->setText(Q(v.Command13Caption));
}

void SourcesForm::PlaceOwn() {
  ScriptureForm::PlaceOwn();
  commands_[13]->setVisible(reader().Command13Shown());
}

}  // namespace suizo::app
