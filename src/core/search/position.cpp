#include "core/search/position.h"

#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::search {

using corpus::Table;

LineOrder LineOrder::Writings(const corpus::Corpus& c) {
  return {&c.Dat(), corpus::dat::kMain2, &c.DatOrder, &c.DasMaxY,
          &c.Mok(), &c.MokOrder,         &c.MosMaxY,  corpus::mok::kPosition};
}

LineOrder LineOrder::Sources(const corpus::Corpus& c) {
  return {&c.SDat(), corpus::sdat::kReading, &c.SDatOrder, &c.SDasMaxY,
          &c.SMok(), &c.SMokOrder,           &c.SMosMaxY,  corpus::smok::kPosition};
}

int LineOrder::FirstLineOf(int mpos) const {
  return text::ValInt(works->Get((*workOrder)[static_cast<std::size_t>(mpos)], firstLineField));
}

// Movement tests for the mark anywhere in the field.
bool LineOrder::IsHead(int lpos) const {
  return lpos >= 1 && lpos <= lineCount() && lines->Holds(RowAt(lpos), headField, u'◆');
}

void Up(const LineOrder& order, Position& p, bool limit) {
  if (!order.IsHead(p.Lpos)) {
    if (p.Lpos >= 1) --p.Lpos;
    return;
  }
  if (limit || p.Mpos <= 1) return;
  --p.Mpos;
  p.Lpos = order.FirstLineOf(p.Mpos);
  while (p.Lpos < order.lineCount() && !order.IsHead(p.Lpos + 1)) ++p.Lpos;
}

void Down(const LineOrder& order, Position& p, bool limit) {
  if (p.Lpos > 0) ++p.Lpos;
  if (!order.IsHead(p.Lpos) && p.Lpos <= order.lineCount()) return;
  ++p.Mpos;
  if (p.Mpos > order.workCount() || limit) {
    --p.Mpos;
    --p.Lpos;
    return;
  }
  p.Lpos = order.FirstLineOf(p.Mpos);
}

void SutraUp(const Table& hok, Position& p, bool limit) {
  const std::u16string_view before = hok.Get(std::max(p.Lpos - 1, 0), corpus::hok::kChapter);
  if (before != p.chapter) {
    if (p.chapter == kFirstChapter || limit) return;
    --p.Lpos;
    p.chapter = before;
    return;
  }
  --p.Lpos;
}

void SutraDown(const Table& hok, Position& p, bool limit) {
  ++p.Lpos;
  const auto chapterOf = [&](int row) {
    return std::u16string(row <= hok.rows() ? hok.Get(row, corpus::hok::kChapter) : u"");
  };
  const std::u16string chapter = chapterOf(p.Lpos);
  if (chapter == p.chapter && p.Lpos <= hok.rows()) return;
  p.chapter = chapter;
  if (p.chapter.empty() || limit) {
    --p.Lpos;
    p.chapter = chapterOf(p.Lpos);
  }
}

}  // namespace suizo::search
