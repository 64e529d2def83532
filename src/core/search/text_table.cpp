#include "core/search/text_table.h"

#include <algorithm>

namespace suizo::search {

using corpus::Corpus;
using corpus::Selection;

namespace {
constexpr std::array<int, 4> kSutraPanes = {15, 17, 13,
                                            36};  // 開結訓読, 現代語訳, 開結真読, 文字列1
constexpr std::array<int, 4> kSourcePanes = {10, 11, 9, 8};  // 原型活用, 漢文成形, 読下本文, 備考
}  // namespace

TextTable::TextTable(TextKind kind, const Corpus& corpus, const Selection& selection)
    : kind_(kind),
      corpus_(&corpus),
      selection_(&selection),
      writings_(LineOrder::Writings(corpus)),
      order_(kind == TextKind::Sources ? LineOrder::Sources(corpus) : writings_) {}

TextTable TextTable::Writings(const Corpus& c, const Selection& s) {
  return {TextKind::Writings, c, s};
}
TextTable TextTable::Sutra(const Corpus& c, const Selection& s) {
  return {TextKind::Sutra, c, s};
}
TextTable TextTable::Sources(const Corpus& c, const Selection& s) {
  return {TextKind::Sources, c, s};
}

SearchWindow TextTable::searchWindow() const {
  switch (kind_) {
    case TextKind::Writings:
      return SearchWindow::Writings;
    case TextKind::Sutra:
      return SearchWindow::Sutra;
    case TextKind::Sources:
      return SearchWindow::Sources;
  }
  return SearchWindow::Writings;
}

int TextTable::PaneColumn(int tab) const {
  const auto at = [tab](const auto& columns) { return columns[static_cast<std::size_t>(tab)]; };
  switch (kind_) {
    case TextKind::Writings:
      return at(corpus::kPaneCol);
    case TextKind::Sutra:
      return at(kSutraPanes);
    case TextKind::Sources:
      return at(kSourcePanes);
  }
  return 0;
}

int TextTable::HitCapacity() const {
  switch (kind_) {
    case TextKind::Writings:
      return 35000;
    case TextKind::Sutra:
      return 3000;
    case TextKind::Sources:
      return 38000;
  }
  return 0;
}

int TextTable::LastLine() const {
  return kind_ == TextKind::Sutra ? corpus_->table(corpus::TableId::Hok).rows()
                                  : order_.lineCount();
}

bool TextTable::Empty() const {
  switch (kind_) {
    case TextKind::Writings:
      return corpus_->MosMaxY == 0;
    case TextKind::Sutra:
      return corpus_->table(corpus::TableId::Hok).rows() == 0;
    case TextKind::Sources:
      return corpus_->SMosMaxY == 0;
  }
  return true;
}

std::u16string_view TextTable::Text(int lpos, int column) const {
  if (lpos < 1 || lpos > LastLine()) return {};
  if (kind_ == TextKind::Sutra) return corpus_->table(corpus::TableId::Hok).Get(lpos, column);
  return order_.lines->Get(order_.RowAt(lpos), column);
}

void TextTable::PrefetchCell(int lpos, int column) const {
  if (lpos < 1 || lpos > LastLine() || column < 0) return;
  if (kind_ == TextKind::Sutra) {
    corpus_->table(corpus::TableId::Hok).PrefetchCell(lpos, column);
  } else {
    order_.lines->PrefetchCell(order_.RowAt(lpos), column);
  }
}

std::u16string_view TextTable::DatText(int lpos, int column) const {
  if (lpos < 1 || lpos > writings_.lineCount()) return {};
  return writings_.lines->Get(writings_.RowAt(lpos), column);
}

bool TextTable::InScope(int lpos) const {
  if (kind_ != TextKind::Writings) return true;
  const int scope = selection_->CSel[10];
  if (scope == 0) return true;
  return scope == 1 && !DatText(lpos, corpus::dat::kAutograph).empty();
}

void TextTable::Up(Position& p, bool limit) const {
  if (kind_ == TextKind::Sutra) {
    SutraUp(corpus_->table(corpus::TableId::Hok), p, limit);
  } else {
    search::Up(order_, p, limit);
  }
}

void TextTable::Down(Position& p, bool limit) const {
  if (kind_ == TextKind::Sutra) {
    SutraDown(corpus_->table(corpus::TableId::Hok), p, limit);
  } else {
    search::Down(order_, p, limit);
  }
}

void TextTable::ScanStart(Position& p, bool limit) const {
  if (kind_ == TextKind::Sutra) {
    if (!limit) {
      p.Lpos = 1;
      p.chapter = std::u16string(Text(1, corpus::hok::kChapter));
      return;
    }
    for (int before = -1; before != p.Lpos;) {
      before = p.Lpos;
      Up(p, true);
    }
    return;
  }
  if (!limit) p.Mpos = 1;
  p.Lpos = p.Mpos >= 1 && p.Mpos <= order_.workCount() ? order_.FirstLineOf(p.Mpos) : 0;
}

void TextTable::PageStart(Position& p) const {
  p.Mpos = 1;
  if (kind_ == TextKind::Sutra) p.chapter = u"1";  // the number the sutra reader's name field takes
  p.Lpos = writings_.workCount() >= 1 ? writings_.FirstLineOf(1) : 0;
}

std::u16string_view TextTable::PageText(int lpos, int column) const {
  return DatText(lpos, column);
}

std::u16string_view TextTable::PageClass(int lpos) const {
  return DatText(lpos, corpus::dat::kClass);
}

}  // namespace suizo::search
