#include "core/scripture/outline.h"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::scripture {
namespace {

constexpr int kNumberCol = 2;  // 法華No.: the column that makes the groups
constexpr int kKeySpace = 32, kKeyEnter = 13;

// A number taken as a row index: rounded half to even.
int RowOf(std::u16string_view number) {
  const double value = std::nearbyint(text::Val(number));
  return value >= 0 && value <= 1e6 ? static_cast<int>(value) : 0;
}

}  // namespace

OutlineKey OutlineKeyAction(int keyCode) {
  if (keyCode == kKeySpace) return OutlineKey::Switch;
  if (keyCode == kKeyEnter) return OutlineKey::Go;
  return OutlineKey::None;
}

Outline::Outline(const corpus::Corpus& corpus) : corpus_(corpus) {
  Fill(kSoukaGrid, table(kSoukaGrid), outline_field::kSokPages);
  Fill(kKamonGrid, table(kKamonGrid), outline_field::kKamPages);
}

const corpus::Table& Outline::table(int grid) const {
  return corpus_.table(grid == kKamonGrid ? corpus::TableId::Kam : corpus::TableId::Sok);
}

void Outline::Fill(int index, const corpus::Table& t, const std::array<int, 3>& pages) {
  OutlineGrid& g = grid(index);
  const int rows = t.rows();
  g.Rows = rows + 1;
  g.column0Back = index == kKamonGrid ? kKamonColumn0Back : kOutlineBack;
  const auto cells = static_cast<std::size_t>(g.Rows) * kOutlineCols;
  g.texts.assign(cells, {});
  g.backs.assign(cells, kOutlineBack);

  const auto titles = text::Split(kOutlineFormat, u"|");
  for (int c = 0; c < kOutlineCols; ++c) {
    g.texts[g.Cell(0, c)] = titles[static_cast<std::size_t>(c)];
    g.backs[g.Cell(0, c)] = kFixedBack;
  }
  for (int r = 1; r <= rows; ++r) {
    g.texts[g.Cell(r, 0)] = u" " + std::u16string(t.Get(r, outline_field::kHeading));
    g.backs[g.Cell(r, 0)] = g.column0Back;
    for (int c = 1; c < kOutlineCols; c += 2) g.backs[g.Cell(r, c)] = kRuleBack;
    g.texts[g.Cell(r, 2)] = t.Get(r, outline_field::kNumber);
    g.texts[g.Cell(r, 4)] = t.Get(r, pages[0]);
    g.texts[g.Cell(r, 6)] = text::Format(t.Get(r, pages[1]), text::kShortPageFormat);
    g.texts[g.Cell(r, 8)] = text::Format(t.Get(r, pages[2]), text::kShortPageFormat);
  }
  g.Row = rows > 0 ? 1 : 0;
  g.TopRow = g.Row;
}

void Outline::Clear(int index) {
  OutlineGrid& g = grid(index);
  for (int r = g.groupFirst; r <= g.groupLast; ++r) {
    for (int c = 2; c < kOutlineCols; ++c) g.backs[g.Cell(r, c)] = kOutlineBack;
    g.backs[g.Cell(r, 0)] = g.column0Back;
  }
  g.groupFirst = 0;
  g.groupLast = -1;
}

void Outline::Paint(int index) {
  OutlineGrid& g = grid(index);
  const std::u16string_view number = g.TextMatrix(g.Row, kNumberCol);
  int first = g.Row, last = g.Row;
  for (int i = 0; i < kGroupReach; ++i) {
    if (first > 1 && g.TextMatrix(first - 1, kNumberCol) == number) --first;
    if (last < g.Rows - 1 && g.TextMatrix(last + 1, kNumberCol) == number) ++last;
  }
  for (int r = first; r <= last; ++r) {
    for (int c = 2; c < kOutlineCols; ++c) g.backs[g.Cell(r, c)] = kGroupBack;
    g.backs[g.Cell(r, 0)] = kGroupBack;
  }
  g.groupFirst = first;
  g.groupLast = last;
}

void Outline::WriteHeader(int index) {
  OutlineGrid& g = grid(index);
  const corpus::Table& t = table(index);
  const corpus::Table& hok = corpus_.table(corpus::TableId::Hok);
  const int hokRow = RowOf(t.Get(g.Row, outline_field::kNumber));
  // A number past the sutra names an empty row, as a lookup that misses does.
  const std::u16string_view scroll =
      hokRow >= 1 && hokRow <= hok.rows() ? hok.Get(hokRow, corpus::hok::kFascicle) : u"";
  std::u16string header = u" ";
  header += t.Get(g.Row, outline_field::kSutraName);
  header += scroll;
  header += u"  ";
  header += t.Get(g.Row, outline_field::kChapter);
  g.texts[0] = std::move(header);
}

int Outline::StepTo(int index, int oldRow, int row) const {
  const OutlineGrid& g = Grid(index);
  const auto same = [&](int a, int b) {
    return g.TextMatrix(a, kNumberCol) == g.TextMatrix(b, kNumberCol);
  };
  const int last = g.Rows - 1;
  if (row == oldRow + 1) {
    while (row < last && same(row + 1, row)) ++row;
    if (same(row, oldRow) && row < last) {
      ++row;
      while (row < last && same(row + 1, row)) ++row;
    }
  } else if (row == oldRow - 1) {
    while (row > 1 && same(row - 1, row)) --row;
    if (same(row, oldRow) && row > 1) {
      --row;
      while (row > 1 && same(row - 1, row)) --row;
    }
  }
  return row;
}

std::optional<int> Outline::PlaceOf(int index, double number) const {
  const OutlineGrid& g = Grid(index);
  int r = g.Rows - 1;
  while (r >= 1 && text::Val(g.TextMatrix(r, kNumberCol)) > number) --r;
  if (r < 1) return std::nullopt;
  while (r > 1 && g.TextMatrix(r - 1, kNumberCol) == g.TextMatrix(r, kNumberCol)) --r;
  return r;
}

int Outline::TopRowFor(int row) const {
  const double h = metrics.rowHeight > 0 ? metrics.height / metrics.rowHeight / 2.3 : 0;
  return std::max(1, static_cast<int>(std::nearbyint(row - h)));
}

void Outline::SelectRow(int index, int row) {
  OutlineGrid& g = grid(index);
  if (row < 1 || row >= g.Rows) return;
  Clear(index);
  g.Row = row;
  Paint(index);
  WriteHeader(index);
  g.TopRow = TopRowFor(row);
}

void Outline::RowChange(int index, int row) {
  OutlineGrid& g = grid(index);
  if (row < 1 || row >= g.Rows || row == g.Row) return;
  Clear(index);
  g.Row = StepTo(index, g.Row, row);
  Paint(index);
  WriteHeader(index);
}

void Outline::Scroll(int index, int topRow) {
  OutlineGrid& g = grid(index);
  if (g.Rows > 1) g.TopRow = std::clamp(topRow, 1, g.Rows - 1);
}

void Outline::Layout() {
  OutlineGrid& g = grid(ShownGrid());
  if (g.Row < 1 || metrics.rowHeight <= 0) return;
  const int visible = std::max(
      1, static_cast<int>(std::floor((metrics.height - metrics.headerHeight) / metrics.rowHeight)));
  if (g.Row < g.TopRow || g.Row >= g.TopRow + visible) g.TopRow = TopRowFor(g.Row);
}

void Outline::Show(int index, std::u16string_view caption) {
  SKflag = index;
  Label1 = index == kKamonGrid ? kKamonTitle : kSoukaTitle;
  Label1Colour = index == kKamonGrid ? kTitleBlue : kTitleBlack;
  Caption = caption;
}

void Outline::InitSub() {
  const int shown = ShownGrid();
  Show(shown, shown == kKamonGrid ? kKamonCaption : kSoukaCaption);
  // Both grids, so that a switch finds the other at the same place.
  for (const int index : {kKamonGrid, kSoukaGrid}) {
    if (const auto row = PlaceOf(index, HKno)) SelectRow(index, *row);
  }
  Layout();
}

void Outline::Command1() {
  const int from = ShownGrid();
  const int to = 1 - from;
  Show(to, to == kKamonGrid ? kKamonCaption : kSoukaSwitchCaption);
  Layout();
  const OutlineGrid& source = Grid(from);
  const OutlineGrid& target = Grid(to);
  if (source.Row < 1 || target.Row < 1) return;

  // The target's group spans the numbers from its own up to the next group's.
  const std::u16string_view number = target.TextMatrix(target.Row, kNumberCol);
  const double a = text::Val(number);
  std::optional<double> b;
  for (int r = target.Row + 1; r < target.Rows; ++r) {
    if (target.TextMatrix(r, kNumberCol) != number) {
      b = text::Val(target.TextMatrix(r, kNumberCol));
      break;
    }
  }
  const double n = text::Val(source.TextMatrix(source.Row, kNumberCol));
  if (a <= n && (!b || n < *b)) return;
  if (const auto row = PlaceOf(to, n)) SelectRow(to, *row);
}

std::optional<search::Position> Outline::SutraGo() const {
  const OutlineGrid& g = Grid(ShownGrid());
  if (g.Row < 1) return std::nullopt;
  const corpus::Table& hok = corpus_.table(corpus::TableId::Hok);
  const int lpos = RowOf(g.TextMatrix(g.Row, kNumberCol));
  if (lpos < 1 || lpos > hok.rows()) return std::nullopt;
  return search::Position{0, lpos, std::u16string(hok.Get(lpos, corpus::hok::kChapter))};
}

}  // namespace suizo::scripture
