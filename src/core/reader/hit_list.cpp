#include "core/reader/hit_list.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/corpus/schema.h"
#include "core/reader/frame.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::reader {

namespace {

constexpr int kTitle = 6;              // 書名 of `Dat`
constexpr std::size_t kContext = 140;  // units of the hit line with its neighbours
constexpr int kPageSearch = 11;        // `Srk` of a page search
constexpr int kKeyLeft = 37;
constexpr int kKeyRight = 39;

constexpr std::u16string_view kNumberSpan =
    u"<span style='color:#0079af; font-weight: bold; background-color:white ;'>";
constexpr std::u16string_view kClassSpan =
    u"<span style='color:#555555; background-color:transparent; font-weight:normal;'>";
constexpr std::u16string_view kNeighbourSpan =
    u"<span style='color:#999999; background-color:transparent; font-weight:normal;'>";
constexpr std::u16string_view kPlaceDiv =
    u"</div><div style='float:right; padding-right:10px; color:#777777;'>";
// Box-drawing lines start on a line of their own, or they do not join up.
constexpr std::u16string_view kBoxChars = u"┘┐─┌└│┼├┤┴┬";

int PagesOf(int srn, int size) {
  return srn / size + (srn % size != 0 ? 1 : 0);
}

std::u16string_view SetLabel(int gk) {
  const corpus::Collection* collection = corpus::FindCollection(gk);
  return collection != nullptr ? collection->label : std::u16string_view{};
}

// The row of a line of the order; 0 outside it.
int RowAt(const corpus::Corpus& corpus, int lpos) {
  if (lpos < 1 || lpos > corpus.DasMaxY || static_cast<std::size_t>(lpos) >= corpus.DatOrder.size())
    return 0;
  return corpus.DatOrder[static_cast<std::size_t>(lpos)];
}

std::u16string_view LineText(const corpus::Corpus& corpus, int lpos, int column) {
  const int row = RowAt(corpus, lpos);
  return row > 0 && column >= 0 ? corpus.Dat().Get(row, column) : std::u16string_view{};
}

// Blanks removed, cut before the first "(".
std::u16string Title(std::u16string_view name) {
  std::u16string title = text::ReplaceAll(name, u" ", u"");
  if (const std::size_t p = title.find(u'('); p != std::u16string::npos) title.resize(p);
  return title;
}

// The class and date of a hit, or in a page search the page it was found on.
std::u16string ClassSpan(const corpus::Table& dat, int row, const search::SearchEngine& owner) {
  std::u16string out(kClassSpan);
  out += u"\u3000〔";
  if (owner.Srk < kPageSearch) {
    out += u"C";
    out += dat.Get(row, corpus::dat::kClass);
    out += u"・";
    out += dat.Get(row, corpus::dat::kDating);
  } else {
    const int column = owner.SrGk != 0 ? owner.SrGk : corpus::dat::kSysNo;
    std::u16string v(dat.Get(row, column));
    if (owner.SrGk > 0) {
      // Page and line with two places of line: "12.5" reads "12.50".
      const std::size_t dot = v.rfind(u'.');
      const std::u16string_view tail =
          dot == std::u16string::npos ? std::u16string_view{} : std::u16string_view(v).substr(dot);
      v = v.substr(0, dot) + text::Format(text::Val(tail), "#.00");
    }
    out += SetLabel(owner.SrGk);
    out += u" ";
    out += v;
  }
  out += u"〕</span>";
  return out;
}

// Page and line in the collection chosen, or the system number.
std::u16string Place(const corpus::Table& dat, int row, int gk) {
  if (gk <= 0) return u"ｼｽﾃﾑNo." + std::u16string(dat.Get(row, corpus::dat::kSysNo));
  const double x = text::Val(dat.Get(row, gk));
  const std::u16string digits = text::NumberText(x) + u"00";
  const std::size_t dot = digits.find(u'.');
  const std::u16string line = dot == std::u16string::npos ? u"00" : digits.substr(dot + 1, 2);
  std::u16string out(SetLabel(gk));
  out += text::IntText(static_cast<std::int64_t>(std::floor(x)));
  out += u"頁";
  out += line;
  out += u"行目";
  return out;
}

bool HasBoxChar(std::u16string_view s) {
  return s.find_first_of(kBoxChars) != std::u16string_view::npos;
}

// The hit line between grey neighbours, marked as the owner's pane marks it.
std::u16string Context(const HitListSource& source, int lpos) {
  const search::SearchEngine& owner = source.owner;
  int column = -1;
  if (owner.Srk == 0) {
    column = source.Nok == 0 ? corpus::dat::kMain : corpus::dat::kMain2;
  } else if (owner.Srk > 0 && owner.Srk < static_cast<int>(corpus::kPaneCol.size())) {
    column = corpus::kPaneCol[static_cast<std::size_t>(owner.Srk)];
  }
  std::u16string t(LineText(source.corpus, lpos, column));
  std::u16string b(LineText(source.corpus, lpos - 1, column));
  std::u16string a(LineText(source.corpus, lpos + 1, column));

  if (t.size() > kContext) {
    b.clear();
    a.clear();
  } else if (b.size() + t.size() + a.size() > kContext) {
    // Half the room left to each side; a half unit goes to the even count.
    const auto n =
        static_cast<std::size_t>(std::nearbyint(static_cast<double>(kContext - t.size()) / 2));
    if (b.size() > n) b.erase(0, b.size() - n);
    if (a.size() > n) a.resize(n);
  }
  b = std::u16string(kNeighbourSpan) + b + u"</span>";
  a = std::u16string(kNeighbourSpan) + a + u"</span>";
  if (HasBoxChar(t)) t.insert(0, u"<br>");
  if (HasBoxChar(a)) a.insert(0, u"<br>");

  if (owner.Srk >= kPageSearch) return t;
  return b + source.highlighter.HiLight(t, owner.Srk, lpos) + a;
}

std::u16string HitEntry(const HitListSource& source, int i) {
  const search::SearchEngine& owner = source.owner;
  const corpus::Table& dat = source.corpus.Dat();
  const int lpos = owner.getSr(i, 1);
  const int row = RowAt(source.corpus, lpos);
  const std::u16string number = text::IntText(i);

  std::u16string out = u"<div style='float:left;'>" + number;
  out += kNumberSpan;
  out += u"<a href='" + number + u"' style='color:#0079af; text-decoration:none;'>●";
  if (row > 0) out += Title(dat.Get(row, kTitle));
  out += u"</a></span>";
  if (row > 0) {
    out += ClassSpan(dat, row, owner);
    out += kPlaceDiv;
    out += Place(dat, row, source.selection.Gk);
  } else {
    out += kPlaceDiv;
  }
  out += u"</div><br>";
  out += Context(source, lpos);
  out += u"<br><br>";
  return out;
}

}  // namespace

int HitPageSize(int dispN) {
  return dispN >= 0 && dispN < static_cast<int>(kHitPageSizes.size())
             ? kHitPageSizes[static_cast<std::size_t>(dispN)]
             : kHitPageSizes.back();
}

std::u16string HitListFrame() {
  std::u16string frame(kDoctype);
  frame += kHitStyle;
  frame += kLinkStyle;
  frame += kHitListBody;
  return frame;
}

std::u16string HitListParent(std::u16string_view ownerCaption, std::u16string_view ownerId) {
  std::u16string parent = u"@結果";
  if (!ownerCaption.starts_with(u"目次")) parent += ownerId;
  return parent;
}

HitListPage RenderHitList(const HitListSource& source, int dispN, int pageNo) {
  const int srn = source.owner.Srn;
  HitListPage page;
  const int size = HitPageSize(dispN);
  page.PageCount = PagesOf(srn, size);
  page.PageNo = srn == 0 ? 1 : std::clamp(pageNo, 1, page.PageCount);
  page.Label1 = u"検索結果" + text::IntText(srn) + u"件";
  page.Label2 = text::IntText(page.PageNo) + u"/" + text::IntText(page.PageCount) + u"ページ";
  page.frame = HitListFrame();

  const int first = (page.PageNo - 1) * size + 1;
  const int last = std::min(size * page.PageNo, srn);
  for (int i = first; i <= last; ++i) page.body += HitEntry(source, i);
  return page;
}

std::optional<int> HitOfHref(std::u16string_view href) {
  const std::size_t colon = href.rfind(u':');
  const std::u16string_view digits =
      colon == std::u16string_view::npos ? href : href.substr(colon + 1);
  if (digits.empty() || digits.size() > 9) return std::nullopt;
  int n = 0;
  for (const char16_t c : digits) {
    if (c < u'0' || c > u'9') return std::nullopt;
    n = n * 10 + (c - u'0');
  }
  return n;
}

// --- the window's model ---

HitList::HitList(search::SearchEngine& owner, Highlighter& highlighter,
                 const corpus::Corpus& corpus, const corpus::Selection& selection,
                 corpus::Settings& settings, const int& Nok)
    : owner_(&owner),
      highlighter_(&highlighter),
      corpus_(&corpus),
      selection_(&selection),
      settings_(&settings),
      nok_(&Nok) {}

int HitList::PageCount() const {
  return PagesOf(owner_->Srn, HitPageSize(settings_->DispN));
}

HitListPage HitList::Hyouji() {
  const HitListSource source{*owner_, *highlighter_, *corpus_, *selection_, *nok_};
  HitListPage page = RenderHitList(source, settings_->DispN, owner_->HitListPage);
  owner_->HitListPage = page.PageNo;
  return page;
}

std::optional<HitListPage> HitList::GoTo(int page) {
  if (page < 1 || page == owner_->HitListPage) return std::nullopt;
  owner_->HitListPage = page;
  return Hyouji();
}

std::optional<HitListPage> HitList::Command2() {
  return GoTo(1);
}

std::optional<HitListPage> HitList::Command3() {
  if (PageNo() <= 1) return std::nullopt;
  return GoTo(PageNo() - 1);
}

std::optional<HitListPage> HitList::Command4() {
  if (PageNo() >= PageCount()) return std::nullopt;
  return GoTo(PageNo() + 1);
}

std::optional<HitListPage> HitList::Command5() {
  return GoTo(PageCount());
}

HitListPage HitList::Opt(int index) {
  settings_->DispN = index;
  owner_->HitListPage = 1;
  return Hyouji();
}

std::optional<HitListPage> HitList::KeyDownAll(int keyCode, int /*shift*/) {
  if (keyCode == kKeyRight) return Command4();
  if (keyCode == kKeyLeft) return Command3();
  return std::nullopt;
}

std::optional<int> HitList::LinkClick(std::u16string_view href) {
  const auto hit = HitOfHref(href);
  if (!hit || *hit < 1 || *hit > owner_->Srn) return std::nullopt;
  owner_->SrnPos = *hit;
  owner_->pos = owner_->Hit(*hit);
  return hit;
}

}  // namespace suizo::reader
