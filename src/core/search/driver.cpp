#include "core/search/driver.h"

#include <algorithm>
#include <cmath>

#include "core/corpus/schema.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::search {

namespace {
constexpr int kAhead = 6;
}  // namespace

SearchEngine::SearchEngine(TextTable table, corpus::Settings& settings)
    : table_(std::move(table)), settings_(&settings), Sr(1) {}

// --- hits ---

int SearchEngine::getSr(int i, int j) const {
  if (i < 1 || i > Srn) return 0;
  const Position& p = Sr[static_cast<std::size_t>(i)];
  return j == 0 ? p.Mpos : p.Lpos;
}

namespace {
int FlagAt(const std::vector<std::uint8_t>& flags, int lpos) {
  return lpos >= 0 && static_cast<std::size_t>(lpos) < flags.size()
             ? flags[static_cast<std::size_t>(lpos)]
             : 0;
}
}  // namespace

int SearchEngine::getSrf(int lpos) const {
  return FlagAt(Srf, lpos);
}
int SearchEngine::getRefineFlag(int lpos) const {
  return FlagAt(refineFlag_, lpos);
}

void SearchEngine::ClearHitList() {
  Sr.resize(1);
  Srf.assign(static_cast<std::size_t>(std::max(table_.LastLine(), table_.HitCapacity())) + 2, 0);
  Srn = 0;
  SrnPos = 0;
}

void SearchEngine::Record(const Position& p) {
  ++Srn;
  Sr.push_back(p);
  const auto at = static_cast<std::size_t>(std::max(p.Lpos, 0));
  if (at >= Srf.size()) Srf.resize(at + 1, 0);
  Srf[at] = 1;
}

// The split search's bar rose: the rows recorded so far fall short of it.
void SearchEngine::DropHits() {
  for (int i = 1; i <= Srn; ++i)
    Srf[static_cast<std::size_t>(std::max(Sr[static_cast<std::size_t>(i)].Lpos, 0))] = 0;
  Sr.resize(1);
  Srn = 0;
}

void SearchEngine::Finish(const Position& remembered) {
  if (Srn == 0) {
    pos = remembered;
    return;
  }
  SrnPos = 1;
  pos = Sr[1];
  HitListPage = 1;
}

template <typename Test>
void SearchEngine::Scan(Test&& test, int secondColumn) {
  table_.ScanStart(pos, Limit);
  const bool confined = RefineCount > 0;
  const int column = table_.PaneColumn(Srk);
  for (;;) {
    // Lines are read in order; a few ahead, their fields are asked for now,
    // and their cells further ahead still.
    table_.PrefetchCell(pos.Lpos + 2 * kAhead, column);
    table_.Prefetch(pos.Lpos + kAhead, column);
    if (secondColumn >= 0) {
      table_.PrefetchCell(pos.Lpos + 2 * kAhead, secondColumn);
      table_.Prefetch(pos.Lpos + kAhead, secondColumn);
    }
    if (!confined || getRefineFlag(pos.Lpos) == 1) test(pos);
    const int before = pos.Lpos;
    table_.Down(pos, Limit);
    if (pos.Lpos == before) break;
  }
}

void SearchEngine::KensakuWord() {
  ClearHitList();
  const Position remembered = pos;
  kind_ = SearchKind::Word;
  auto query = WordQuery::Compile(Combo1, SrMethod, settings_->Itaiji);
  Sw = query ? query->Sw() : std::vector<std::u16string>{};
  Swn = static_cast<int>(Sw.size());
  if (!query || table_.Empty()) return;
  pattern_ = query->pattern();
  Label3Colour = kWordColour;

  const int column = table_.PaneColumn(Srk);
  const bool bothMains = table_.kind() == TextKind::Writings && Srk == 0;
  Scan(
      [&](const Position& p) {
        const bool hit =
            query->Matches(table_.Text(p.Lpos, column)) ||
            (bothMains && query->Matches(table_.Text(p.Lpos, TextTable::kSecondMainColumn)));
        if (hit && table_.InScope(p.Lpos)) Record(p);
      },
      bothMains ? TextTable::kSecondMainColumn : -1);
  Finish(remembered);
}

void SearchEngine::KensakuDiv() {
  ClearHitList();
  const Position remembered = pos;
  kind_ = DivMode == 2 ? SearchKind::Split2 : SearchKind::Split1;
  auto query = SplitQuery::Compile(Combo1, DivMode, table_.searchWindow(), settings_->Itaiji);
  if (!query) return;
  Sw = query->Sw();
  Swn = static_cast<int>(Sw.size()) - 1;
  if (table_.Empty()) return;
  Label3Colour = DivMode == 2 ? kSplit2Colour : kSplit1Colour;

  double bar = query->Required();
  const int column = table_.PaneColumn(Srk);
  Scan([&](const Position& p) {
    const int count = query->Score(table_.Text(p.Lpos, column), bar);
    if (count < bar || !table_.InScope(p.Lpos)) return;
    if (count > bar) {
      bar = count;
      DropHits();
    }
    Record(p);
  });
  Finish(remembered);
  if (Srn > 0) ++Swn;
}

// --- the driver ---

Outcome SearchEngine::Kensaku(int mode) {
  if (text::TrimSpace(Combo1).empty()) mode = RefineCount > 0 ? 2 : 1;
  if (mode > 0) Combo1.clear();
  RememberSearch(Combo, Combo1);
  Label3Colour = kButtonFace;
  Label3Enabled = false;
  if (mode == 2) return {.redraw = true};

  Srk = Tab;
  HitListPage = 0;

  bool paged = false;
  if (table_.HasPageCheck()) {
    const std::size_t p = Combo1.find(u'P');
    if (p != std::u16string::npos && p > 0) {
      const std::u16string_view prefix = std::u16string_view(Combo1).substr(0, p);
      for (int i = 0; i <= 36 && !paged; ++i) {
        const corpus::Collection* collection = corpus::FindCollection(i);
        if (collection == nullptr || collection->label != prefix) continue;
        SrMethod = Method::And;
        KensakuPage(i, std::u16string_view(Combo1).substr(p + 1));
        paged = true;
      }
    }
  }
  if (!paged) {
    if (DivMode == 0) {
      KensakuWord();
      if (Srn == 0 && settings_->AutoDiv == 1 && mode == 0 && SrMethod == Method::And) {
        DivMode = table_.AutoDivMode(Srk);
        KensakuDiv();
      }
    } else {
      KensakuDiv();
    }
  }

  lastDivMode_ = DivMode;
  lastBox_ = Combo1;
  lastMethod_ = SrMethod;
  DivMode = 0;

  Outcome out{.redraw = true};
  if (mode == 0 && Srn == 0) {
    out.toast = HitQuiet == 0;
    ClearHits();
    Label3Enabled = true;
  } else if (mode == 0) {
    ShowRefine();
    Label3Enabled = true;
  }
  return out;
}

Outcome SearchEngine::KensakuPage(int column, std::u16string_view page) {
  SrGk = column;
  ClearHitList();
  const Position remembered = pos;
  kind_ = SearchKind::Page;
  if (column == 0) column = corpus::dat::kSysNo;

  const double p = text::Val(page);
  const std::u16string shown = text::NumberText(p);
  Sw.clear();
  for (const std::u16string_view part : text::Split(shown, u" ")) Sw.emplace_back(part);
  Swn = static_cast<int>(Sw.size());
  if (p == 0 || Swn == 0) return {.redraw = true, .toast = HitQuiet == 0};
  const bool decimal = shown.find(u'.') != std::u16string::npos;

  Label3Colour = kWordColour;
  Srk = 11;
  table_.PageStart(pos);
  const auto& csel = table_.selection().CSel;
  const bool confined = RefineCount > 0;
  for (;;) {
    if (!confined || getRefineFlag(pos.Lpos) == 1) {
      const double x = text::Val(table_.PageText(pos.Lpos, column));
      const double klass = text::Val(table_.PageClass(pos.Lpos));
      const bool listed = klass >= 0 && klass < static_cast<double>(csel.size()) &&
                          csel[static_cast<std::size_t>(klass)] == 1;
      if (listed && (decimal ? x == p : std::floor(x) == p)) Record(pos);
    }
    const int before = pos.Lpos;
    table_.Down(pos, Limit);
    if (pos.Lpos == before) break;
  }
  Finish(remembered);
  return {.redraw = true, .toast = Srn == 0 && HitQuiet == 0};
}

Outcome SearchEngine::PageBoxEnter(int index, std::u16string_view text) {
  if (!table_.HasPageCheck()) {
    // Such a search has no box text to run again, so it cannot be kept.
    Combo1.clear();
    const Outcome out = KensakuPage(index, text);
    ClearHits();
    Label3Enabled = true;
    return out;
  }
  static constexpr std::array<int, 6> kSearchable = {0, 22, 23, 25, 28, 29};
  if (std::find(kSearchable.begin(), kSearchable.end(), index) == kSearchable.end()) return {};
  Combo1 = std::u16string(corpus::FindCollection(index)->label) + u"P" + std::u16string(text);
  return Kensaku(0);
}

Outcome SearchEngine::SrnBack() {
  if (Srn == 0) return {};
  SrnPos = std::max(SrnPos - 1, 1);
  pos = Sr[static_cast<std::size_t>(SrnPos)];
  return {.redraw = true};
}

Outcome SearchEngine::SrnNext() {
  if (Srn == 0) return {};
  SrnPos = std::min(SrnPos + 1, Srn);
  pos = Sr[static_cast<std::size_t>(SrnPos)];
  return {.redraw = true};
}

Outcome SearchEngine::TabClick(int tab) {
  Tab = tab;
  if (Combo1.empty()) return {.redraw = true};
  return Kensaku(0);
}

void SearchEngine::StepMethod() {
  SrMethod = static_cast<Method>((static_cast<int>(SrMethod) + 1) % 3);
}

std::u16string SearchEngine::Command1Caption() const {
  switch (SrMethod) {
    case Method::And:
      return u"検索";
    case Method::Or:
      return u"OR\n検索";
    case Method::Not:
      return u"NOT\n検索";
  }
  return u"検索";
}

std::u16string SearchEngine::Label3Text() const {
  return text::IntText(SrnPos) + u"/" + text::IntText(Srn);
}

// --- the refinement stack ---

void SearchEngine::UpdateGauge() {
  std::u16string gauge;
  for (int i = 0; i < RefineCount && gauge.size() < 6; ++i) gauge += u'■';
  gauge += u"－－－－－－";
  controls.RefineLevel = gauge.substr(0, 6);
}

void SearchEngine::ShowRefine() {
  controls.Command14Visible = true;
  controls.Command15Visible = true;
  controls.RefineLevelVisible = true;
  controls.Text6Visible = false;
  controls.Command14Enabled = true;
  controls.Command15Enabled = RefineCount > 0;
}

void SearchEngine::ClearHits() {
  if (RefineCount > 0) {
    controls.Command14Enabled = false;
    return;
  }
  refineFlag_.clear();
  controls.Command14Visible = false;
  controls.Label5Visible = false;
  controls.RefineLevelVisible = false;
  controls.Command15Visible = false;
  controls.Text6Visible = true;
}

bool SearchEngine::Command14() {
  if (Srn == 0 || Label3Colour == kButtonFace) return false;
  // The stack's room ends at level 20; a further level is refused whole.
  if (RefineCount >= kRefineLevels) return false;
  RefineLevel& level = stack_[static_cast<std::size_t>(RefineCount)];
  level.Sw.assign(Sw.begin(),
                  Sw.begin() + std::min<std::ptrdiff_t>(std::ssize(Sw), kKeptSwEntries));
  level.Swn = Swn;
  level.Box = lastBox_;
  level.Srk = Srk;
  level.DivMode = lastDivMode_;
  level.SrMethod = lastMethod_;
  ++RefineCount;
  refineFlag_ = Srf;
  UpdateGauge();
  ShowRefine();
  Kensaku(2);
  controls.Command14Enabled = false;
  return true;
}

Outcome SearchEngine::Command15() {
  if (RefineCount == 0) return {};
  GetBack(-1);
  if (RefineCount == 0) ClearHits();
  return Kensaku(0);
}

void SearchEngine::GetBack(int n) {
  const int tab = Tab;
  const std::u16string box = Combo1;
  const Method method = SrMethod;
  const int autoDiv = settings_->AutoDiv;
  settings_->AutoDiv = -1;
  HitQuiet = 1;

  const int target = RefineCount + n;
  RefineCount = 0;
  refineFlag_.clear();
  for (int i = 0; i < target; ++i) {
    // A copy: the store step below overwrites this level.
    const RefineLevel level = stack_[static_cast<std::size_t>(i)];
    Combo1 = level.Box;
    if (level.Srk < 11) Tab = level.Srk;
    DivMode = level.DivMode;
    SrMethod = level.SrMethod;
    Kensaku(0);
    if (Srn == 0) break;
    Command14();
  }
  RefineCount = target;
  UpdateGauge();
  Tab = tab;
  Combo1 = box;
  SrMethod = method;
  settings_->AutoDiv = autoDiv;
  HitQuiet = 0;
  UpdateGauge();
}

Outcome SearchEngine::Label3Click() {
  if (!Label3Enabled) return {};
  const Position noted = pos;
  if (RefineCount == 0) {
    ClearHits();
    Outcome out = Kensaku(1);
    out.closeHitList = true;
    return out;
  }
  GetBack(0);
  Combo1.clear();
  pos = noted;
  return {.redraw = true};
}

Outcome SearchEngine::LimitClick() {
  Limit = !Limit;
  GetBack(0);
  return Kensaku(0);
}

}  // namespace suizo::search
