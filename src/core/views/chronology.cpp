#include "core/views/chronology.h"

#include <algorithm>
#include <cmath>

#include "core/corpus/orders.h"
#include "core/reader/reader_base.h"
#include "core/search/compilers.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::views {
namespace {

namespace nen = corpus::nen;
using text::IntText;
using text::Val;
using text::ValInt;
using text::ValWhole;

inline constexpr int kEra = 3;                   // 年号
inline constexpr int kMonthDay = 6;              // 月日
inline constexpr int kSeireki = 13;              // 西暦
inline constexpr int kKind = 15;                 // 分類
inline constexpr int kEraChars = 10;             // of the era shown in column 5
inline constexpr int kSameEraChars = 7;          // compared when opening again
inline constexpr double kFirstLinkless = 50000;  // ｼｽﾃﾑNo. from here on are sources'
inline constexpr int kRefineWidth = 5;
inline constexpr std::u16string_view kRefineEmpty = u"－－－－－";
inline constexpr char16_t kRefineMark = u'■';

// A cell of another table named by a number in `Nen`. A link found nowhere
// at import is row 0; a number past the table reads as an empty cell.
std::u16string_view LinkedCell(const corpus::Table& table, double row, int field) {
  if (row < 0 || row > table.schema().rowCapacity) return {};
  return table.Get(static_cast<int>(row), field);
}

std::u16string_view Left(std::u16string_view text, std::size_t n) {
  return text.substr(0, std::min(n, text.size()));
}

int Weighted(const NenSelection& boxes) {
  int sum = 0;
  for (std::size_t i = 0; i < boxes.size(); ++i) sum += boxes[i] << i;
  return sum;
}

std::u16string OrderLabel(const corpus::Selection& selection) {
  const corpus::Collection* c = corpus::FindCollection(selection.Gk);
  std::u16string label(c != nullptr ? c->label : u"");
  label += selection.Kn == 1 ? u"系年順" : selection.Gk == 0 ? u"No.順" : u"頁行順";
  return label + u"並替:";
}

}  // namespace

// --- Form14 ---

ChronologyFilterDialog::ChronologyFilterDialog(const NenSelection& nenSel)
    : Check2(nenSel), keptSum_(Weighted(nenSel)) {}

bool ChronologyFilterDialog::Check2Enabled(int index) const {
  if (index != 6) return true;
  return std::any_of(Check2.begin(), Check2.begin() + 6, [](int v) { return v == 1; });
}

bool ChronologyFilterDialog::Command1(NenSelection& nenSel) const {
  nenSel = Check2;
  // Weighted, so that one box off and another on still counts as a change.
  return Weighted(Check2) != keptSum_;
}

// --- the grid ---

std::u16string_view ChronologyGrid::TextMatrix(int row, int col) const {
  return rows[static_cast<std::size_t>(row)].text[static_cast<std::size_t>(col)];
}

int ChronologyGrid::ColWidth(int col) const {
  if (folded && col >= kFirstDetailCol) return 0;
  return kNenColWidths[static_cast<std::size_t>(col)];
}

std::uint32_t ChronologyGrid::CellBackColor(int row, int col) const {
  if (row == 0) return kFixedBack;
  if (row == Row && (!folded || col == kEraCol)) return kCurrentBack;
  if (col >= kFirstDetailCol && folded) return kFoldedBack;
  switch (col) {
    case kEraCol:
    case kAgeCol:
    case kEventCol:
      return kEraBack;
    case kDayCol:
    case kLinkCol:
    case kClassCol:
      return kDetailBack;
    default:
      return kGridBack;
  }
}

std::uint32_t ChronologyGrid::CellForeColor(int row, int col) const {
  if (row == 0) return kGridText;
  const ChronologyRow& r = rows[static_cast<std::size_t>(row)];
  switch (col) {
    case kAgeCol:
    case kClassCol:
      return kGreyText;
    case kLinkCol:
      return r.RowLink ? kLinkText : kGreyText;
    case kDayCol:
      return kBlack;
    case kEventCol:
      return r.kind >= 0 && r.kind < static_cast<int>(kKindText.size())
                 ? kKindText[static_cast<std::size_t>(r.kind)]
                 : kBlack;
    default:
      return kGridText;
  }
}

double FitRowHeight(double rowHeight, std::span<const double> labHeights) {
  for (const double h : labHeights) {
    if (h > rowHeight) rowHeight *= 2;
  }
  return rowHeight;
}

std::u16string AgeText(std::u16string_view seireki, double nenNo) {
  if (seireki.empty()) return {};
  const auto v = ValWhole(seireki) - 1221;
  if (nenNo > 1590) return IntText(v - 60) + u"*";
  return IntText(v <= 0 ? v - 1 : v);
}

// --- Form12 ---

Chronology::Chronology(corpus::Corpus& corpus, const corpus::Selection& selection,
                       const corpus::Settings& settings)
    : corpus_(corpus), selection_(selection), settings_(settings) {
  corpus_.ReadData(3);
  controls.Label5Visible = true;  // here Label5 is the count of the list
  UpdateGauge();
  NenSort();
  Hyouji();
  ClevWrite();
  Hyouji2();
}

std::u16string_view Chronology::Field(int row, int field) const {
  return corpus_.Nen().Get(row, field);
}

std::u16string Chronology::Label3Text() const {
  return IntText(SrnPos) + u"/" + IntText(Srn);
}

std::u16string Chronology::Label5Text() const {
  return IntText(NesMaxY()) + u"/" + IntText(corpus_.Nen().rows());
}

int Chronology::getSr(int i, int j) const {
  if (i < 1 || i > Srn) return 0;
  const auto& hit = sr_[static_cast<std::size_t>(i)];
  return j == 0 ? hit.first : hit.second;
}

int Chronology::getSrf(int npos) const {
  if (npos < 0 || npos >= static_cast<int>(srf_.size())) return 0;
  return srf_[static_cast<std::size_t>(npos)];
}

void Chronology::NenSort() {
  const corpus::Table& nen = corpus_.Nen();
  order_.assign(1, 0);
  for (int r = 1; r <= nen.rows(); ++r) {
    const auto kind = ValInt(nen.Get(r, kKind));
    if (kind < 0 || kind > 5 || NenSel[static_cast<std::size_t>(kind)] == 0) continue;
    if (NenSel[6] == 0 && Val(nen.Get(r, nen::kToldFlag)) == 1) continue;
    if (Val(nen.Get(r, nen::kShown)) < 0) continue;
    if (NenSel[7] == 1) {
      const double no = Val(nen.Get(r, nen::kNumber));
      if (no < kLifetimeFirst || no > kLifetimeLast) continue;
    }
    order_.push_back(r);
  }
}

Chronology::LinkCell Chronology::Column9(int row) const {
  LinkCell cell{std::u16string(Field(row, nen::kLink)), false};
  const double s = Val(Field(row, nen::kSysNo));
  const std::u16string_view sourceNo = Field(row, nen::kSourceNo);
  const double linked = Val(Field(row, nen::kRowLink));
  if (s > 0 && s < kFirstLinkless) {
    cell.link = true;
    const corpus::Table& dat = corpus_.Dat();
    const bool classOff = !selection_.Shows(ValInt(LinkedCell(dat, linked, corpus::dat::kClass)));
    const bool notInCollection =
        selection_.Gk > 0 && Val(LinkedCell(dat, linked, selection_.Gk)) == 0;
    const bool refinedAway =
        Val(LinkedCell(corpus_.Mok(), Val(Field(row, nen::kMokRow)), corpus::mok::kMark)) < 0;
    if (classOff || notInCollection || refinedAway) cell = {std::u16string(kBlank), false};
  } else if (text::IsNumeric(sourceNo) && Val(sourceNo) > 0) {
    cell.link = true;
    if (Val(LinkedCell(corpus_.SMok(), linked, corpus::smok::kMark)) < 0) {
      cell = {std::u16string(kBlank), false};
    }
  }
  cell.text = text::ReplaceAll(cell.text, u"／", u"\n");
  return cell;
}

ChronologyRow Chronology::MakeRow(int row) const {
  ChronologyRow r;
  for (std::size_t i = 0; i < nen::kOfficeFields.size(); ++i) {
    r.text[i] = Field(row, nen::kOfficeFields[i]);
  }
  r.text[kEraCol] = Left(Field(row, kEra), kEraChars);
  r.text[kAgeCol] = AgeText(Field(row, kSeireki), Val(Field(row, nen::kNumber)));
  r.kind = ValInt(Field(row, kKind));
  r.height = BaseRow;
  if (Fold == 1) return r;  // the details are hidden and link nowhere
  r.text[kDayCol] = Field(row, kMonthDay);
  r.text[kEventCol] = Field(row, nen::kEvent);
  LinkCell link = Column9(row);
  r.text[kLinkCol] = std::move(link.text);
  r.RowLink = link.link;
  r.text[kClassCol] = Field(row, nen::kClass);
  return r;
}

void Chronology::Hyouji() {
  grid_ = ChronologyGrid{};
  grid_.folded = Fold == 1;
  grid_.generation = ++generation_;
  ChronologyRow header;
  for (int c = 0; c < kNenCols; ++c) {
    if (Fold == 0 || c < kFirstDetailCol)
      header.text[static_cast<std::size_t>(c)] = kNenHeaders[static_cast<std::size_t>(c)];
  }
  header.height = HeaderRow;
  grid_.rows.push_back(std::move(header));

  std::vector<int> kept{0};
  for (int p = 1; p <= NesMaxY(); ++p) {
    const int row = NenRow(p);
    ChronologyRow r = MakeRow(row);
    // Folded, a run of one era is one row: its first event.
    if (Fold == 1 && grid_.rows.size() > 1 && r.text[kEraCol] == grid_.rows.back().text[kEraCol])
      continue;
    kept.push_back(row);
    grid_.rows.push_back(std::move(r));
  }
  order_ = std::move(kept);
  if (grid_.rows.size() == 1) {
    ChronologyRow empty;
    empty.height = 0;
    grid_.rows.push_back(std::move(empty));
  }
  edit_ = EditBox{};
}

void Chronology::ClevWrite() {
  Clev = reader::ClevWriteColours(selection_).Clev;
  Label1 = OrderLabel(selection_);
}

void Chronology::Hyouji2() {
  GoRow(Npos);
}

bool Chronology::OnList(int row) const {
  return row >= 1 && row <= NesMaxY() && row < grid_.Rows();
}

void Chronology::GoRow(int row) {
  if (!OnList(row)) return;
  RowChange(row);
  // The row comes to rest at a third of the window.
  const double rowHeight = grid_.RowHeight(1);
  const double visible = rowHeight > 0 ? GridHeight / rowHeight / 3 : 0;
  grid_.TopRow = std::max(1, static_cast<int>(std::nearbyint(row - visible)));
}

void Chronology::RowChange(int row) {
  if (!OnList(row)) return;
  LeaveCell();
  grid_.Row = row;
  EnterCell();
}

void Chronology::LeaveCell() {
  edit_.Visible = false;
  if (grid_.Row >= 1 && grid_.Row < grid_.Rows()) {
    grid_.rows[static_cast<std::size_t>(grid_.Row)].height = BaseRow;
  }
}

void Chronology::EnterCell() {
  const int row = grid_.Row;
  Npos = row;
  const int nenRow = NenRow(row);
  // Folded as well: opening at another era starts from its first event.
  Nkey = Field(nenRow, nen::kNumber);
  if (Fold == 1) {
    Command4Enabled = Command5Enabled = Command9Enabled = Command10Enabled = false;
    return;
  }
  ChronologyRow& r = grid_.rows[static_cast<std::size_t>(row)];
  if (MeasureLab) {
    const std::array<double, 3> heights = {MeasureLab(r.text[kDayCol], kDayCol),
                                           MeasureLab(r.text[kLinkCol], kLinkCol),
                                           MeasureLab(r.text[kEventCol], kEventCol)};
    r.height = FitRowHeight(r.height, heights);
  }
  edit_ = EditBox{true, row, r.text[kEventCol], grid_.CellForeColor(row, kEventCol), 0, r.height};

  const bool live = r.text[kLinkCol] != kBlank;
  const bool hasSysNo = !Field(nenRow, nen::kSysNo).empty();
  Command4Enabled = live && hasSysNo;
  Command5Enabled = live && hasSysNo && text::Contains(Field(nenRow, nen::kLink), u"番号");
  Command9Enabled = live && !Field(nenRow, nen::kSourceNo).empty();
  Command10Enabled = live && !Field(nenRow, nen::kMandalaNo).empty();
}

void Chronology::ShowEdit() {
  if (Fold == 1 || !OnList(grid_.Row)) return;
  ChronologyRow& r = grid_.rows[static_cast<std::size_t>(grid_.Row)];
  const double lab = MeasureLab ? MeasureLab(r.text[kEventCol], kEventCol) : r.height;
  if (lab > r.height) r.height *= 2;
  edit_.Visible = true;
  edit_.row = grid_.Row;
  edit_.Text = r.text[kEventCol];
  edit_.ForeColor = grid_.CellForeColor(grid_.Row, kEventCol);
  edit_.Top = (r.height - lab) / 2;
  edit_.Height = lab;
}

void Chronology::RestoreCellHeight() {
  if (grid_.Row >= 1 && grid_.Row < grid_.Rows()) {
    grid_.rows[static_cast<std::size_t>(grid_.Row)].height = BaseRow;
  }
}

void Chronology::DisableEdit() {
  edit_.Visible = false;
  RestoreCellHeight();
}

// --- search ---

void Chronology::ClearHitList() {
  sr_.assign(1, {0, 0});
  srf_.assign(static_cast<std::size_t>(NesMaxY()) + 1, 0);
  Srn = 0;
  SrnPos = 0;
}

void Chronology::Kensaku1() {
  ClearHitList();
  const auto query = search::WordQuery::Compile(Combo1, search::Method::And, settings_.Itaiji);
  if (!query) return;
  sw_ = query->Sw();
  for (int p = 1; p <= NesMaxY(); ++p) {
    const int row = NenRow(p);
    if (!query->Matches(Field(row, nen::kEvent))) continue;
    srf_[static_cast<std::size_t>(p)] = 1;
    sr_.emplace_back(p, row);
  }
  Srn = static_cast<int>(sr_.size()) - 1;
  if (Srn == 0) return;
  SrnPos = 1;
  Npos = sr_[1].first;
  Label3Colour = Bgr(0xFFFFC0);
}

bool Chronology::Kensaku(int mode) {
  if (mode <= 0 && text::TrimSpace(Combo1).empty()) mode = 1;
  if (mode > 0) Combo1.clear();
  if (mode == 0) search::RememberSearch(Combo, Combo1);  // not a jump's search
  Label3Colour = search::kButtonFace;
  Label3Enabled = false;
  bool toast = false;
  if (mode > 0) {
    ClearHitList();
  } else {
    Kensaku1();
    if (Srn == 0) {
      toast = mode == 0 && HitQuiet == 0;
      ClearHits();
    } else {
      ShowRefine();
    }
    Label3Enabled = true;
  }
  Hyouji2();
  ShowEdit();
  return toast;
}

void Chronology::SrnBack() {
  if (Srn == 0) return;
  SrnPos = std::max(1, SrnPos - 1);
  Npos = sr_[static_cast<std::size_t>(SrnPos)].first;
  Hyouji2();
  ShowEdit();
}

void Chronology::SrnNext() {
  if (Srn == 0) return;
  SrnPos = std::min(Srn, SrnPos + 1);
  Npos = sr_[static_cast<std::size_t>(SrnPos)].first;
  Hyouji2();
  ShowEdit();
}

// --- refinement: the display mark of `Nen`, which `NenSort` reads ---

void Chronology::UpdateGauge() {
  std::u16string bar(static_cast<std::size_t>(std::min(RefineCount, kRefineWidth)), kRefineMark);
  bar += kRefineEmpty;
  controls.RefineLevel = bar.substr(0, kRefineWidth);
}

void Chronology::ShowRefine() {
  controls.Command14Visible = controls.Command15Visible = controls.RefineLevelVisible = true;
  controls.Text6Visible = false;
  controls.Command14Enabled = true;
  controls.Command15Enabled = RefineCount > 0;
}

void Chronology::ClearHits() {
  if (RefineCount > 0) {
    controls.Command14Enabled = false;
    return;
  }
  controls.Command14Visible = controls.Command15Visible = controls.RefineLevelVisible = false;
  controls.Text6Visible = true;
}

void Chronology::FindByNkey() {
  Npos = corpus::FindChronologyPlace(corpus_.Nen(), order_, NesMaxY(), Val(Nkey));
}

void Chronology::ClearSearch() {
  ClearHitList();
  Label3Colour = search::kButtonFace;
  Label3Enabled = false;
}

void Chronology::Reorder() {
  NenSort();
  Hyouji();
  ClearSearch();  // the hits named places in the old list
  FindByNkey();
  Hyouji2();
}

bool Chronology::Command14() {
  if (Srn == 0 || RefineCount >= search::kRefineLevels) return false;
  refineWord_.resize(static_cast<std::size_t>(RefineCount) + 1);
  refineWord_.back() = Combo1;
  corpus::Table& nen = corpus_.Nen();
  for (int r = 1; r <= nen.rows(); ++r) {
    nen.Set(r, nen::kShown, IntText(ValWhole(nen.Get(r, nen::kShown)) - 1));
  }
  for (int i = 1; i <= Srn; ++i) {
    const int r = sr_[static_cast<std::size_t>(i)].second;
    nen.Set(r, nen::kShown, IntText(ValWhole(nen.Get(r, nen::kShown)) + 1));
  }
  ++RefineCount;
  UpdateGauge();
  Reorder();
  Kensaku(1);
  controls.Command14Enabled = false;
  return true;
}

void Chronology::Command15() {
  if (RefineCount <= 0) return;
  corpus::Table& nen = corpus_.Nen();
  for (int r = 1; r <= nen.rows(); ++r) {
    const auto mark = ValWhole(nen.Get(r, nen::kShown));
    if (mark < 0) nen.Set(r, nen::kShown, IntText(mark + 1));
  }
  --RefineCount;
  refineWord_.resize(static_cast<std::size_t>(RefineCount));
  UpdateGauge();
  if (RefineCount == 0) ClearHits();
  Reorder();
}

void Chronology::RefineClear() {
  corpus::Table& nen = corpus_.Nen();
  for (int r = 1; r <= nen.rows(); ++r) nen.Set(r, nen::kShown, u"0");
  RefineCount = 0;
  UpdateGauge();
  Reorder();
}

void Chronology::GetBack() {
  const std::u16string box = Combo1;
  const std::vector<std::u16string> words = refineWord_;
  HitQuiet = 1;
  RefineClear();
  refineWord_.clear();
  for (const std::u16string& word : words) {
    Combo1 = word;
    Kensaku(0);
    Command14();
  }
  Combo1 = box;
  HitQuiet = 0;
}

void Chronology::Label3Click() {
  if (RefineCount < 1) {
    ClearHits();
    Kensaku(1);
  } else {
    GetBack();
    Combo1.clear();
  }
}

// --- folding ---

void Chronology::Command13() {
  Label3Click();
  const std::u16string era(OnList(grid_.Row) ? grid_.TextMatrix(grid_.Row, kEraCol)
                                             : std::u16string_view());
  if (Fold == 0) {
    FoldKey = Nkey;
    FoldEra = era;
    Fold = 1;
  } else {
    if (Left(era, kSameEraChars) == Left(FoldEra, kSameEraChars)) Nkey = FoldKey;
    Fold = 0;
    NenSort();
  }
  Hyouji();
  FindByNkey();
  Hyouji2();
}

void Chronology::DblClick(int col, double mouseY) {
  if (Fold == 1 && col == kEraCol && mouseY > grid_.RowHeight(0)) Command13();
}

// --- links ---

std::vector<ChronologyJump> Chronology::LinkToWritings(int kind) const {
  if (Fold == 1 || !Listed()) return {};
  const int row = NenRow(Npos);
  const double s = Val(Field(row, nen::kSysNo));
  if (s <= 0 || !selection_.Shows(ValInt(Field(row, nen::kClass)))) return {};
  const double t = Val(Field(row, kKind));
  if (t == 3 || (t == 5 && text::Contains(Field(row, nen::kLink), u"番号"))) {
    for (int m = 1; m <= corpus_.MosMaxY; ++m) {
      if (Val(corpus_.Mok().Get(corpus_.MokOrder[static_cast<std::size_t>(m)],
                                corpus::mok::kSysNo)) == s) {
        return {
            {kind == 1 ? ChronologyJump::Target::Reader : ChronologyJump::Target::Record, m, 0}};
      }
    }
    return {};
  }
  for (int l = 1; l <= corpus_.DasMaxY; ++l) {
    if (Val(corpus_.Dat().Get(corpus_.DatOrder[static_cast<std::size_t>(l)],
                              corpus::dat::kSysNo)) == s) {
      return {{ChronologyJump::Target::Reader, 0, l}};
    }
  }
  return {};
}

std::vector<ChronologyJump> Chronology::LinkToSources() const {
  if (Fold == 1 || !Listed()) return {};
  const double number = Val(Field(NenRow(Npos), nen::kSourceNo));
  if (number == 0) return {};
  for (int m = 1; m <= corpus_.SMosMaxY; ++m) {
    if (Val(corpus_.SMok().Get(corpus_.SMokOrder[static_cast<std::size_t>(m)],
                               corpus::smok::kNumber)) == number) {
      return {{ChronologyJump::Target::Sources, m, 0}};
    }
  }
  return {};
}

std::vector<ChronologyJump> Chronology::GoLink(int kind) const {
  std::vector<ChronologyJump> jumps = LinkToWritings(kind);
  for (const ChronologyJump& j : LinkToSources()) jumps.push_back(j);
  return jumps;
}

std::vector<ChronologyJump> Chronology::Command4() const {
  return Command4Enabled ? LinkToWritings(1) : std::vector<ChronologyJump>{};
}

std::vector<ChronologyJump> Chronology::Command5() const {
  return Command5Enabled ? LinkToWritings(0) : std::vector<ChronologyJump>{};
}

std::vector<ChronologyJump> Chronology::Command9() const {
  return Command9Enabled ? LinkToSources() : std::vector<ChronologyJump>{};
}

std::vector<ChronologyJump> Chronology::KeyDown(int keyCode) {
  switch (keyCode) {
    case kKeySpace:
      Command13();
      break;
    case kKeyEnter:
      if (Fold == 1) {
        Command13();
        break;
      }
      return GoLink(1);
    case kKeyLeft:
      SrnBack();
      break;
    case kKeyRight:
      SrnNext();
      break;
    default:
      break;
  }
  return {};
}

int Chronology::WorkPlace(bool sources) const {
  if (Fold == 1 || !Listed()) return 0;
  const int row = NenRow(Npos);
  if (sources) {
    const std::u16string_view number = Field(row, nen::kSourceNo);
    if (!text::IsNumeric(number) || Val(number) <= 0) return 0;
    for (int m = 1; m <= corpus_.SMosMaxY; ++m) {
      if (Val(corpus_.SMok().Get(corpus_.SMokOrder[static_cast<std::size_t>(m)],
                                 corpus::smok::kNumber)) == Val(number)) {
        return m;
      }
    }
    return 0;
  }
  const double s = Val(Field(row, nen::kSysNo));
  if (s <= 0 || s >= kFirstLinkless) return 0;
  for (int m = 1; m <= corpus_.MosMaxY; ++m) {
    if (Val(corpus_.Mok().Get(corpus_.MokOrder[static_cast<std::size_t>(m)],
                              corpus::mok::kSysNo)) == s) {
      return m;
    }
  }
  return 0;
}

bool Chronology::HandCursor(int row, int col) const {
  return col == kLinkCol && OnList(row) && grid_.rows[static_cast<std::size_t>(row)].RowLink;
}

std::vector<ChronologyJump> Chronology::Click(int row, int col) {
  RowChange(row);
  if (!HandCursor(row, col)) return {};
  return GoLink(1);
}

// --- changes from outside ---

bool Chronology::FollowSelection() {
  NenSort();
  Hyouji();
  ClearSearch();
  ClevWrite();
  FindByNkey();
  if (text::TrimSpace(Combo1).empty()) {
    Hyouji2();
    ShowEdit();
    return false;
  }
  return Kensaku(0);
}

// --- the window in the registry ---

ChronologyWindow::ChronologyWindow(corpus::Corpus& corpus, const corpus::Selection& selection,
                                   const corpus::Settings& settings)
    : Hooked(reader::FormKind::Form12), model_(corpus, selection, settings) {}

void ChronologyWindow::Hyouji() {
  model_.Hyouji();
  model_.Hyouji2();
  if (onView) onView();
}

void ChronologyWindow::Kensaku(int mode) {
  toastDue = model_.Kensaku(mode);
  if (onView) onView();
}

void ChronologyWindow::Hyouji2() {
  model_.Hyouji2();
  if (onView) onView();
}

void ChronologyWindow::ShowEdit() {
  model_.ShowEdit();
  if (onView) onView();
}

void ChronologyWindow::FollowSelection() {
  toastDue = model_.FollowSelection();
  if (onView) onView();
}

bool ChronologyWindow::FromSources() const {
  return ParentForm.substr(0, reader::kSourcesFamily.size()) == reader::kSourcesFamily;
}

ChronologyAction ChronologyWindow::Command(int number, std::u16string_view selection,
                                           reader::Navigator& navigator) {
  ChronologyAction out{.handled = true};
  switch (number) {
    case 1:
      out.toast = model_.Kensaku(0);
      break;
    case 2:
      out.contents = true;
      out.contentsKind = FromSources() ? reader::FormKind::Form15 : reader::FormKind::Form9;
      out.contentsMpos = model_.WorkPlace(FromSources());
      return out;
    case 4:
      Follow(navigator, model_.Command4());
      break;
    case 5:
      Follow(navigator, model_.Command5());
      break;
    case 6:
      // A reader not open yet starts at the first chapter.
      navigator.GoKyou(u"", 0, ParentForm);
      break;
    case 7:
      out.openFilter = true;
      return out;
    case 8:
      navigator.GoJisho(selection, ParentForm);
      break;
    case 9:
      Follow(navigator, model_.Command9());
      break;
    case 13:
      model_.Command13();
      break;
    case 14:
      model_.Command14();
      break;
    case 15:
      model_.Command15();
      break;
    default:  // 注経 and 本尊 keep their places for views still to come
      out.handled = false;
      return out;
  }
  if (onView) onView();
  return out;
}

ChronologyAction ChronologyWindow::KeyDownAll(int keyCode, int shift,
                                              reader::Navigator& navigator) {
  namespace key = reader::key;
  ChronologyAction out{.handled = true};
  switch (keyCode) {
    case key::kF1:
      out.openSettings = true;
      return out;
    case key::kF:
      if ((shift & key::kCtrl) == 0) return {};
      out.focusBox = true;
      return out;
    case key::kEnter:
    case key::kSpace:
    case key::kLeft:
    case key::kRight:
      Follow(navigator, model_.KeyDown(keyCode));
      break;
    default:
      return {};  // the grid walks its rows itself
  }
  if (onView) onView();
  return out;
}

void ChronologyWindow::Click(int row, int col, reader::Navigator& navigator) {
  const std::vector<ChronologyJump> jumps = model_.Click(row, col);
  if (onView) onView();
  Follow(navigator, jumps);
}

void ChronologyWindow::Follow(reader::Navigator& navigator,
                              const std::vector<ChronologyJump>& jumps) {
  for (const ChronologyJump& j : jumps) {
    switch (j.target) {
      case ChronologyJump::Target::Reader:
        navigator.GoHonbun(u"", j.Mpos, j.Lpos, search::Method::And, 0, ParentForm);
        break;
      case ChronologyJump::Target::Record:
        navigator.GoMok(u"", j.Mpos, ParentForm);
        break;
      case ChronologyJump::Target::Sources:
        navigator.GoShiryou(u"", j.Mpos, 0, search::Method::And, 0, ParentForm);
        break;
    }
  }
}

}  // namespace suizo::views
