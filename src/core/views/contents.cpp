#include "core/views/contents.h"

#include <cmath>

#include "core/corpus/orders.h"
#include "core/reader/reader_base.h"
#include "core/search/compilers.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::views {
namespace {

using corpus::Table;

// Fields that only this window reads.
namespace mokf {
constexpr int kTranslation = 11;    // 語訳
constexpr int kRecipientForm = 19;  // 対告研室
constexpr int kReading = 25;        // よみ
}  // namespace mokf
namespace smokf {
constexpr int kTitle = 4;    // 書名
constexpr int kReading = 5;  // 書名よみ
constexpr int kDating = 6;   // 系年
constexpr int kAuthor = 9;   // 著者
constexpr int kHolder = 10;  // 蔵所
}  // namespace smokf

using A = CellAlign;

constexpr ContentsLayout kWritingsLayout{
    u"ｼｽﾃﾑNo|翠典番号|翠典頁|翠　典　名|語訳|C|系　年|対　告　者",
    {900, 900, 1100, 4300, 500, 400, 2400, 3100},
    {A::Centre, A::Centre, A::Centre, A::LeftTop, A::Centre, A::Centre, A::LeftCentre,
     A::LeftCentre},
    {3, 7},
    u"翠　典　目　次",
    u"目次",
    reader::kFromWritingsContents,
};

// The last two columns only keep the writings' row painting whole.
constexpr ContentsLayout kSourcesLayout{
    u"ｼｽﾃﾑNo|史料番号|書　名|系　年|著　者|蔵　所|×|×",
    {900, 900, 4100, 3400, 2300, 2600, 0, 0},
    {A::Centre, A::Centre, A::LeftTop, A::LeftCentre, A::LeftCentre, A::LeftCentre, A::Centre,
     A::Centre},
    {2, 4},
    u"史　料　目　次",
    u"史料目次",
    reader::kFromSourcesContents,
};

std::u16string_view BeforeFirst(std::u16string_view text, char16_t mark) {
  return text.substr(0, std::min(text.find(mark), text.size()));
}

int Scaled(int twips, double scale) {
  return static_cast<int>(std::lround(twips * scale));
}

}  // namespace

const ContentsLayout& LayoutOf(ContentsKind kind) {
  return kind == ContentsKind::Writings ? kWritingsLayout : kSourcesLayout;
}

SelPlace SetSel(const Rect& cell) {
  const double dx = cell.width / 10;
  const double dy = cell.height / 10;
  return {cell, {cell.left + dx, cell.top + dy, cell.width - 2 * dx, cell.height - 2 * dy}};
}

std::u16string_view ClevCaption(int index) {
  static constexpr std::u16string_view kCaptions[] = {u"0", u"1", u"2", u"3", u"4", u"5",
                                                      u"6", u"7", u"8", u"9", u"S"};
  return index >= 0 && index <= 10 ? kCaptions[index] : std::u16string_view();
}

// --- the grid ---

std::u16string_view ContentsGrid::TextMatrix(int row, int col) const {
  if (row < 0 || row >= Rows || col < 0 || col >= kContentsCols) return {};
  return texts_[static_cast<std::size_t>(row) * kContentsCols + static_cast<std::size_t>(col)];
}

CellAlign ContentsGrid::CellAlignment(int row, int col) const {
  if (row == 0) return col == 0 ? CellAlign::LeftCentre : CellAlign::Centre;
  return col >= 0 && col < kContentsCols ? ColAlignment[static_cast<std::size_t>(col)]
                                         : CellAlign::LeftCentre;
}

std::uint32_t ContentsGrid::CellBackColor(int row, int col) const {
  if (row == 0 || col == 0) return kContentsFixedBack;
  return !empty && row == Row ? kContentsRowOn : kContentsRowBack;
}

// --- the model ---

Contents::Contents(ContentsKind kind, corpus::Corpus& corpus, corpus::Selection& selection,
                   const corpus::Settings& settings)
    : kind_(kind),
      layout_(&LayoutOf(kind)),
      corpus_(&corpus),
      selection_(&selection),
      settings_(&settings) {
  controls_.RefineLevel = u"－－－－－";
  controls_.Label5Visible = true;  // here it counts the list, refined or not
  SetMpos(1);
  Hyouji();
  ClevWrite();
}

int Contents::Count() const {
  return kind_ == ContentsKind::Writings ? corpus_->MosMaxY : corpus_->SMosMaxY;
}

int Contents::RowAt(int mpos) const {
  const auto& order = kind_ == ContentsKind::Writings ? corpus_->MokOrder : corpus_->SMokOrder;
  return order[static_cast<std::size_t>(mpos)];
}

int Contents::FirstLine(int mpos) const {
  if (mpos < 1 || mpos > Count()) return 0;
  const Table& records = kind_ == ContentsKind::Writings ? corpus_->Mok() : corpus_->SMok();
  return text::ValInt(records.Get(RowAt(mpos), corpus::mok::kPosition));
}

void Contents::SetMpos(int mpos) {
  Mpos = mpos;
  Lpos = FirstLine(mpos);
}

std::u16string Contents::SearchText(int row) const {
  if (kind_ == ContentsKind::Writings) {
    const Table& mok = corpus_->Mok();
    if (SrTarget == 1)
      return std::u16string(mok.Get(row, corpus::mok::kRecipient))
          .append(mok.Get(row, mokf::kRecipientForm));
    return std::u16string(mok.Get(row, corpus::mok::kTitle)).append(mok.Get(row, mokf::kReading));
  }
  const Table& smok = corpus_->SMok();
  if (SrTarget == 1) return std::u16string(smok.Get(row, smokf::kAuthor));
  return std::u16string(smok.Get(row, smokf::kTitle)).append(smok.Get(row, smokf::kReading));
}

void Contents::Cells(int m, std::u16string* cells) const {
  const int row = RowAt(m);
  if (kind_ == ContentsKind::Sources) {
    const Table& smok = corpus_->SMok();
    cells[0] = smok.Get(row, corpus::smok::kSysNo);
    cells[1] = smok.Get(row, corpus::smok::kNumber);
    cells[2] = std::u16string(smok.Get(row, smokf::kTitle)) + u" ";
    cells[3] = smok.Get(row, smokf::kDating);
    cells[4] = smok.Get(row, smokf::kAuthor);
    cells[5] = smok.Get(row, smokf::kHolder);
    return;
  }
  const Table& mok = corpus_->Mok();
  cells[0] = mok.Get(row, corpus::mok::kSysNo);
  cells[1] = mok.Get(row, corpus::mok::kBangou);
  const corpus::Collection* c = corpus::FindCollection(selection_->Gk);
  if (selection_->Gk != 0 && c != nullptr) {
    cells[2] = text::Format(mok.Get(row, c->mokStartField), text::kShortPageFormat);
  }
  cells[3] = std::u16string(mok.Get(row, corpus::mok::kTitle)) + u" ";
  cells[4] = mok.Get(row, mokf::kTranslation).substr(0, 1);
  cells[5] = mok.Get(row, corpus::mok::kClass);
  cells[6] = mok.Get(row, corpus::mok::kDating);
  // Behind the "/" stand the recipient's classes, which only the search reads.
  cells[7] =
      BeforeFirst(mok.Get(row, Check1 ? mokf::kRecipientForm : corpus::mok::kRecipient), u'/');
}

void Contents::Hyouji() {
  const int count = Count();
  grid_.empty = count == 0;
  grid_.Rows = grid_.empty ? 2 : count + 1;
  grid_.texts_.assign(static_cast<std::size_t>(grid_.Rows) * kContentsCols, std::u16string());
  const auto headers = text::Split(layout_->FormatString, u"|");
  for (std::size_t c = 0; c < headers.size() && c < kContentsCols; ++c)
    grid_.texts_[c] = headers[c];
  for (int m = 1; m <= count; ++m)
    Cells(m, &grid_.texts_[static_cast<std::size_t>(m) * kContentsCols]);
  for (std::size_t c = 0; c < kContentsCols; ++c) {
    grid_.ColWidth[c] = Scaled(layout_->widths[c], Scale);
    grid_.ColAlignment[c] = layout_->alignments[c];
  }
  grid_.RowHeight = Scaled(kContentsRowHeight, Scale);
  grid_.FontSize = kContentsFontSize * Scale;
  Hyouji2();
  const int all = kind_ == ContentsKind::Writings ? corpus_->MokAllY : corpus_->SMok().rows();
  label5_ = text::IntText(count) + u"/" + text::IntText(all);
}

void Contents::Hyouji2() {
  GoRow(Mpos);
}

void Contents::GoRow(int row) {
  if (grid_.empty || row < 1 || row > Count()) return;
  grid_.Row = row;
  SetMpos(row);
  // The selected row rests a little above the middle of the grid.
  const double visible = metrics.rowHeight > 0 ? metrics.height / metrics.rowHeight / 2.3 : 0;
  const int top = std::max(1, static_cast<int>(std::nearbyint(row - visible)));
  if (KeepTop == 0) {
    grid_.TopRow = top;
  } else {
    grid_.TopRow = KeepTop;
    KeepTop = 0;
  }
}

void Contents::EnterCell(int row) {
  if (grid_.empty || row < 1 || row > Count()) return;
  grid_.Row = row;
  SetMpos(row);
}

void Contents::ClevWrite() {
  const corpus::Selection& s = *selection_;
  if (kind_ == ContentsKind::Sources) {
    label1_ = std::u16string(kOrderLabelHead) + (s.SKn == 1 ? u"系年順" : u"ｼｽﾃﾑ順");
    label1Back_ = s.SKn == 1 ? reader::kDateOrder : reader::kPageOrder;
    return;
  }
  clev_ = reader::ClevWriteColours(s).Clev;
  const corpus::Collection* c = corpus::FindCollection(s.Gk);
  label1_ = c != nullptr ? std::u16string(c->label) : std::u16string();
  label1_ += kOrderLabelHead;
  label1_ += s.Kn == 1 ? u"系年順" : (s.Gk == 0 ? u"No.順" : u"頁行順");
  label1Back_ = s.Kn == 1 ? reader::kDateOrder : reader::kPageOrder;
}

// --- the search ---

void Contents::ClearHitList() {
  Sr_.clear();
  Srf_.assign(static_cast<std::size_t>(Count()) + 1, 0);
  srnPos_ = 0;
}

int Contents::getSr(int i, int j) const {
  if (i < 1 || i > Srn()) return 0;
  return j == 0 ? Hit(i).Mpos : Hit(i).Lpos;
}

int Contents::getSrf(int mpos) const {
  return mpos >= 0 && static_cast<std::size_t>(mpos) < Srf_.size()
             ? Srf_[static_cast<std::size_t>(mpos)]
             : 0;
}

search::Outcome Contents::Kensaku(int mode) {
  if (text::SpaceTrim(Combo1).empty()) mode = 1;
  if (mode > 0) Combo1.clear();
  search::RememberSearch(Combo, Combo1);
  label3Back_ = search::kButtonFace;
  label3Enabled_ = false;
  ClearHitList();
  sw_.clear();
  search::Outcome out{.redraw = true};
  if (mode > 0) {
    Hyouji2();
    return out;
  }

  // Titles and recipients are searched with AND only.
  if (auto query = search::WordQuery::Compile(Combo1, search::Method::And, settings_->Itaiji)) {
    sw_ = query->Sw();
    for (int m = 1; m <= Count(); ++m) {
      const int row = RowAt(m);
      if (!query->Matches(SearchText(row))) continue;
      Sr_.push_back({m, FirstLine(m), row});
      Srf_[static_cast<std::size_t>(m)] = 1;
    }
  }
  if (Srn() > 0) {
    srnPos_ = 1;
    SetMpos(Sr_.front().Mpos);
    label3Back_ = kHitsShown;
    ShowRefine();
  } else {
    out.toast = HitQuiet == 0;
    ClearHits();
  }
  label3Enabled_ = true;
  Hyouji2();
  return out;
}

void Contents::SrnBack() {
  if (Srn() == 0) return;
  srnPos_ = std::max(srnPos_ - 1, 1);
  Mpos = Hit(srnPos_).Mpos;
  Lpos = Hit(srnPos_).Lpos;
  Hyouji2();
}

void Contents::SrnNext() {
  if (Srn() == 0) return;
  srnPos_ = std::min(srnPos_ + 1, Srn());
  Mpos = Hit(srnPos_).Mpos;
  Lpos = Hit(srnPos_).Lpos;
  Hyouji2();
}

ContentsKey Contents::KeyDownAll(int keyCode, int shift) {
  namespace key = reader::key;
  switch (keyCode) {
    case key::kEnter:
      return {.handled = true, .openReader = true};
    case key::kLeft:
      SrnBack();
      return {.handled = true, .redraw = true};
    case key::kRight:
      SrnNext();
      return {.handled = true, .redraw = true};
    case key::kF1:
      return {.handled = true, .openSettings = true};
    case key::kF:
      if (shift & key::kCtrl) return {.handled = true, .focusBox = true};
      return {};
    default:
      return {};  // the grid walks its rows itself
  }
}

search::Outcome Contents::SelClick(int target) {
  SrTarget = target == 1 ? 1 : 0;
  if (Combo1.empty()) return {};
  return Kensaku(0);
}

void Contents::Check1Click() {
  if (kind_ != ContentsKind::Writings) return;
  Check1 = !Check1;
  KeepTop = grid_.TopRow;
  Hyouji();
}

bool Contents::Label1Click() {
  if (kind_ == ContentsKind::Writings) return true;
  selection_->SKn = selection_->SKn == 1 ? 0 : 1;
  KeepPlace();
  Rebuild();
  return false;
}

// --- the refinement by 印 ---

void Contents::UpdateBar() {
  std::u16string bar;
  for (int i = 0; i < refineCount_ && i < 5; ++i) bar += u'■';
  controls_.RefineLevel = (bar + u"－－－－－").substr(0, 5);
}

void Contents::ShowRefine() {
  controls_.Command14Visible = true;
  controls_.Command15Visible = true;
  controls_.RefineLevelVisible = true;
  controls_.Text6Visible = false;
  controls_.Command14Enabled = true;
  controls_.Command15Enabled = refineCount_ > 0;
}

void Contents::ClearHits() {
  if (refineCount_ > 0) {
    controls_.Command14Enabled = false;
    return;
  }
  controls_.Command14Visible = false;
  controls_.Command15Visible = false;
  controls_.RefineLevelVisible = false;
  controls_.Text6Visible = true;
}

void Contents::AddToMarks(int delta, bool negativeOnly) {
  const bool writings = kind_ == ContentsKind::Writings;
  Table& records = writings ? corpus_->Mok() : corpus_->SMok();
  const int field = writings ? corpus::mok::kMark : corpus::smok::kMark;
  for (int row = 1; row <= records.rows(); ++row) {
    const auto mark = text::ValWhole(records.Get(row, field));
    if (negativeOnly && mark >= 0) continue;
    records.Set(row, field, text::IntText(mark + delta));
  }
}

void Contents::RefineClear() {
  const bool writings = kind_ == ContentsKind::Writings;
  Table& records = writings ? corpus_->Mok() : corpus_->SMok();
  const int field = writings ? corpus::mok::kMark : corpus::smok::kMark;
  for (int row = 1; row <= records.rows(); ++row) records.Set(row, field, u"0");
  refineCount_ = 0;
  UpdateBar();
}

void Contents::Rebuild() {
  if (ConvSui) {
    ConvSui();
    return;
  }
  if (kind_ == ContentsKind::Writings) {
    const bool placed = selection_->MokRedo == 1;
    corpus::ApplySelection(*corpus_, *selection_);
    if (placed) GetBack();
  } else {
    corpus::ApplySourceSelection(*corpus_, *selection_);
  }
  FollowSelection();
}

bool Contents::Command14() {
  if (Srn() == 0 || refineCount_ >= search::kRefineLevels) return false;
  refineWord_[static_cast<std::size_t>(refineCount_)] = Combo1;
  refineTarget_[static_cast<std::size_t>(refineCount_)] = SrTarget;

  // The search runs again over every class, so that the narrowed list still
  // answers a later change of the class filter.
  const auto saved = selection_->CSel;
  if (kind_ == ContentsKind::Writings) {
    for (std::size_t c = 1; c <= 9; ++c) selection_->CSel[c] = 1;
  }
  KeepPlace();
  Rebuild();

  // Each level pushes the rows it drops one further below 0, so that
  // "解除" can lift them back level by level.
  AddToMarks(-1, false);
  const bool writings = kind_ == ContentsKind::Writings;
  Table& records = writings ? corpus_->Mok() : corpus_->SMok();
  const int field = writings ? corpus::mok::kMark : corpus::smok::kMark;
  for (const ContentsHit& hit : Sr_) {
    const auto mark = text::ValWhole(records.Get(hit.row, field));
    records.Set(hit.row, field, text::IntText(mark + 1));
  }

  ++refineCount_;
  UpdateBar();
  for (std::size_t c = 1; c <= 9; ++c) selection_->CSel[c] = saved[c];
  Rebuild();
  Kensaku(1);
  controls_.Command14Enabled = false;
  return true;
}

void Contents::Command15() {
  if (refineCount_ <= 0) return;
  AddToMarks(1, true);
  --refineCount_;
  UpdateBar();
  if (refineCount_ == 0) ClearHits();
  KeepPlace();
  Rebuild();
}

void Contents::GetBack() {
  const int target = SrTarget;
  const std::u16string box = Combo1;
  // The replay moves the list; the document the user stood on is what the
  // caller finds again afterwards.
  const std::u16string oldMsys = OldMsys, oldLsys = OldLsys;
  HitQuiet = 1;
  const int levels = refineCount_;
  RefineClear();
  for (int i = 0; i < levels; ++i) {
    Combo1 = refineWord_[static_cast<std::size_t>(i)];
    SrTarget = refineTarget_[static_cast<std::size_t>(i)];
    Kensaku(0);
    // A level that finds nothing here would leave later levels narrowing a
    // list it never made: the replay ends, as the readers' does.
    if (Srn() == 0) break;
    Command14();
  }
  SrTarget = target;
  Combo1 = box;
  OldMsys = oldMsys;
  OldLsys = oldLsys;
  HitQuiet = 0;
}

search::Outcome Contents::Label3Click() {
  if (!label3Enabled_) return {};
  if (refineCount_ < 1) {
    ClearHits();
    return Kensaku(1);
  }
  GetBack();
  Combo1.clear();
  Hyouji2();
  return {.redraw = true};
}

// --- a change of selection ---

void Contents::KeepPlace() {
  if (Mpos < 1 || Mpos > Count()) return;
  const bool writings = kind_ == ContentsKind::Writings;
  const Table& records = writings ? corpus_->Mok() : corpus_->SMok();
  OldMsys = records.Get(RowAt(Mpos), writings ? corpus::mok::kSysNo : corpus::smok::kSysNo);
  const auto& order = writings ? corpus_->DatOrder : corpus_->SDatOrder;
  const int lines = writings ? corpus_->DasMaxY : corpus_->SDasMaxY;
  if (Lpos >= 1 && Lpos <= lines) {
    const Table& text = writings ? corpus_->Dat() : corpus_->SDat();
    OldLsys = text.Get(order[static_cast<std::size_t>(Lpos)],
                       writings ? corpus::dat::kSysNo : corpus::sdat::kSysNo);
  }
}

search::Outcome Contents::FollowSelection() {
  const corpus::ContentsPlace place = kind_ == ContentsKind::Writings
                                          ? corpus::FindContentsPlace(*corpus_, OldMsys)
                                          : corpus::FindSourceContentsPlace(*corpus_, OldMsys);
  SetMpos(place.Mpos);
  // An emptied list keeps the old number, so that the document comes back
  // with its classes.
  if (!place.OldMsys.empty()) OldMsys = place.OldMsys;
  Hyouji();
  ClevWrite();
  Hyouji2();
  if (!Combo1.empty()) return Kensaku(0);
  return {.redraw = true};
}

// --- what the window shows ---

ContentsScreen Contents::Screen() const {
  ContentsScreen s;
  s.Caption = layout_->Caption;
  s.Label2 = layout_->Label2;
  s.Label1 = label1_;
  s.Label1Back = label1Back_;
  s.ClevVisible = kind_ == ContentsKind::Writings;
  s.ClevBack = clev_;
  s.Label3 = text::IntText(srnPos_) + u"/" + text::IntText(Srn());
  s.Label3Back = label3Back_;
  s.Label3Enabled = label3Enabled_;
  s.Label5 = label5_;
  s.refine = controls_;
  s.Check1Visible = kind_ == ContentsKind::Writings;
  s.Check1 = Check1;
  s.Check1Back = Check1 ? kCheck1On : search::kButtonFace;
  const auto headers = text::Split(layout_->FormatString, u"|");
  for (std::size_t i = 0; i < 2; ++i) {
    const int col = layout_->selColumns[i];
    s.Sel[i] = {col, headers[static_cast<std::size_t>(col)], SrTarget == static_cast<int>(i)};
  }
  s.Combo1 = Combo1;
  s.Combo = Combo;
  return s;
}

std::u16string Contents::JumpTitle() const {
  if (Mpos < 1 || Mpos > Count()) return {};
  const std::u16string_view title = kind_ == ContentsKind::Writings
                                        ? corpus_->Mok().Get(RowAt(Mpos), corpus::mok::kTitle)
                                        : corpus_->SMok().Get(RowAt(Mpos), smokf::kTitle);
  return std::u16string(BeforeFirst(title, u' '));
}

// --- the window in the registry ---

ContentsWindow::ContentsWindow(ContentsKind kind, corpus::Corpus& corpus,
                               corpus::Selection& selection, const corpus::Settings& settings)
    : Hooked(kind == ContentsKind::Writings ? reader::FormKind::Form9 : reader::FormKind::Form15),
      model_(kind, corpus, selection, settings) {}

void ContentsWindow::Emit() {
  if (onView) onView(model_);
}

void ContentsWindow::Hyouji() {
  model_.Hyouji();
  Emit();
}

void ContentsWindow::Kensaku(int mode) {
  toastDue = model_.Kensaku(mode).toast;
  Emit();
}

void ContentsWindow::SelectBox() {
  if (onSelectBox) onSelectBox();
}

void ContentsWindow::FollowSelection() {
  toastDue = model_.FollowSelection().toast;
  Emit();
}

void ContentsWindow::PlacementsRebuilt() {
  if (model_.kind() == ContentsKind::Writings) model_.GetBack();
}

ContentsAction ContentsWindow::Command(int number, reader::Navigator& navigator,
                                       reader::WindowRegistry& windows) {
  const bool writings = model_.kind() == ContentsKind::Writings;
  const std::u16string_view tag = LayoutOf(model_.kind()).FromTag;
  const int mpos = model_.Mpos;
  ContentsAction out;
  switch (number) {
    case 4:
    case 5:
      if (model_.ListEmpty()) return out;
      if (!writings) {
        out.jump = navigator.GoShiryou(u"", mpos, 0, search::Method::And, 0, tag);
      } else if (number == 4) {
        out.jump = navigator.GoHonbun(u"", mpos, 0, search::Method::And, 0, tag);
      } else {
        out.jump = navigator.GoMok(u"", mpos, tag);
      }
      break;
    case 6:
      out.jump = navigator.GoKyou(u"", 0, tag);
      break;
    case 7:
      if (model_.ListEmpty()) return out;
      out.jump = writings ? navigator.GoNen(model_.JumpTitle(), mpos, tag)
                          : navigator.GoNenS(u"", mpos, tag);
      break;
    case 8:
      if (model_.ListEmpty()) return out;
      out.jump = navigator.GoJisho(model_.JumpTitle(), tag);
      break;
    case 9:
      if (writings) {
        out.jump = navigator.GoSMok(u"");
      } else {
        reader::OpenWindow& main = windows.Single(reader::FormKind::Form9);
        main.Show();
        main.Raise();
        out.jump.window = dynamic_cast<reader::JumpView*>(&main);
      }
      break;
    case 11:
      out.openSettings = true;
      return out;
    default:  // `Command3` 注経 and `Command10` 本尊 stay inert here
      return out;
  }
  out.minimise = out.jump.window != nullptr && !Pin;
  return out;
}

ContentsAction ContentsWindow::GridDblClick(double mouseY, reader::Navigator& navigator,
                                            reader::WindowRegistry& windows) {
  if (!model_.BelowHeader(mouseY)) return {};
  return Command(4, navigator, windows);
}

}  // namespace suizo::views
