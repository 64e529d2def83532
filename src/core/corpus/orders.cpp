#include "core/corpus/orders.h"

#include "core/text/numbers.h"
#include "core/text/sorting.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

// An order column read back: its count, then the elements.
int ReadOrder(const Table& table, int countRow, int column, std::vector<int>& order) {
  const int count = text::ToInt(table.Get(countRow, column)).value_or(0);
  order.assign(static_cast<std::size_t>(count) + 1, 0);
  for (int m = 1; m <= count; ++m)
    order[static_cast<std::size_t>(m)] = text::ToInt(table.Get(m, column)).value_or(0);
  return count;
}

// Sorts positions 1..count of `order` by keys made from each element.
template <typename Key>
void SortOrder(std::vector<int>& order, int count, Key key) {
  if (count < 2) return;
  std::vector<std::u16string> keys(static_cast<std::size_t>(count) + 1);
  for (int m = 1; m <= count; ++m)
    keys[static_cast<std::size_t>(m)] = key(order[static_cast<std::size_t>(m)]);
  text::QuickSort(order, keys, 1, count);
}

std::u16string Padded(std::u16string_view text, std::size_t width) {
  std::u16string out(text);
  if (out.size() < width) out.append(width - out.size(), u' ');
  return out;
}

std::u16string RowKey(int row) {
  return text::Format(static_cast<double>(row), text::kRowNumberFormat);
}

int StartField(int gk) {
  const Collection* c = FindCollection(gk);
  return c == nullptr ? 0 : c->mokStartField;
}

}  // namespace

void ConvDat2(Corpus& corpus, int gk) {
  const Collection* c = FindCollection(gk);
  corpus.DasMaxY =
      ReadOrder(corpus.Dat(), dat::kOrderRow,
                c == nullptr ? kCollections[0].datOrderColumn : c->datOrderColumn, corpus.DatOrder);
}

void ConvSDat2(Corpus& corpus) {
  corpus.SDasMaxY = ReadOrder(corpus.SDat(), sdat::kOrderRow, sdat::kOrderColumn, corpus.SDatOrder);
}

// The element of a list is the record's row, which field 0 holds as text.
void SortMokSuiten(Corpus& corpus, int gk) {
  const Table& mok = corpus.Mok();
  const int field = StartField(gk);
  SortOrder(corpus.MokOrder, corpus.MosMaxY, [&](int row) {
    return text::Format(mok.Get(row, field), text::kStartPositionFormat) + RowKey(row);
  });
}

void SortMokKeinen(Corpus& corpus) {
  const Table& mok = corpus.Mok();
  SortOrder(corpus.MokOrder, corpus.MosMaxY,
            [&](int row) { return Padded(mok.Get(row, mok::kDate), 15) + RowKey(row); });
}

void SortMokSiryo(Corpus& corpus) {
  const Table& smok = corpus.SMok();
  SortOrder(corpus.SMokOrder, corpus.SMosMaxY, [&](int row) {
    return text::Format(smok.Get(row, 0), text::kStartPositionFormat) + RowKey(row);
  });
}

void SortMokKeinenS(Corpus& corpus) {
  const Table& smok = corpus.SMok();
  SortOrder(corpus.SMokOrder, corpus.SMosMaxY, [&](int row) {
    return Padded(smok.Get(row, smok::kDate), 15) +
           text::Format(smok.Get(row, 0), text::kRowNumberFormat);
  });
}

int LineToWork(const Corpus& corpus, int lpos) {
  const Table& dat = corpus.Dat();
  int p = std::min(lpos, corpus.DasMaxY);
  while (p > 0 &&
         !dat.Get(corpus.DatOrder[static_cast<std::size_t>(p)], dat::kMain2).starts_with(u"◆"))
    --p;
  int found = 0;
  for (int m = 1; m <= corpus.MosMaxY; ++m) {
    if (text::Val(corpus.Mok().Get(corpus.MokOrder[static_cast<std::size_t>(m)], mok::kPosition)) ==
        p)
      found = m;
  }
  return p == 0 ? 0 : found;
}

int SLineToWork(const Corpus& corpus, int lpos) {
  const Table& sdat = corpus.SDat();
  int p = std::min(lpos, corpus.SDasMaxY);
  while (p > 0 &&
         !sdat.Get(corpus.SDatOrder[static_cast<std::size_t>(p)], sdat::kReading).starts_with(u"◆"))
    --p;
  int found = 0;
  for (int m = 1; m <= corpus.SMosMaxY; ++m) {
    if (text::Val(
            corpus.SMok().Get(corpus.SMokOrder[static_cast<std::size_t>(m)], smok::kPosition)) == p)
      found = m;
  }
  return p == 0 ? 0 : found;
}

namespace {

ContentsPlace FindPlace(const Table& records, const std::vector<int>& order, int count,
                        int keyField, std::u16string_view oldMsys) {
  ContentsPlace place;
  for (int m = 1; m <= count; ++m) {
    if (records.Get(order[static_cast<std::size_t>(m)], keyField) == oldMsys) {
      place.Mpos = m;
      break;
    }
  }
  if (count > 0) place.OldMsys = records.Get(order[static_cast<std::size_t>(place.Mpos)], keyField);
  return place;
}

}  // namespace

ContentsPlace FindContentsPlace(const Corpus& corpus, std::u16string_view oldMsys) {
  return FindPlace(corpus.Mok(), corpus.MokOrder, corpus.MosMaxY, mok::kSysNo, oldMsys);
}

ContentsPlace FindSourceContentsPlace(const Corpus& corpus, std::u16string_view oldMsys) {
  return FindPlace(corpus.SMok(), corpus.SMokOrder, corpus.SMosMaxY, smok::kSysNo, oldMsys);
}

ReaderPlace FindReaderPlace(const Corpus& corpus, std::u16string_view oldLsys) {
  ReaderPlace place;
  if (corpus.MosMaxY == 0) return place;
  const Table& dat = corpus.Dat();
  const auto firstOf = [&](int m) {
    return static_cast<int>(
        text::Val(corpus.Mok().Get(corpus.MokOrder[static_cast<std::size_t>(m)], mok::kPosition)));
  };
  place.Mpos = 1;
  place.Lpos = firstOf(1);
  for (int p = 1; p <= corpus.DasMaxY; ++p) {
    if (dat.Get(corpus.DatOrder[static_cast<std::size_t>(p)], dat::kSysNo) != oldLsys) continue;
    place.Lpos = p;
    place.Mpos = LineToWork(corpus, p);
    if (place.Mpos == 0) {
      place.Mpos = 1;
      place.Lpos = firstOf(1);
    }
    break;
  }
  if (place.Lpos >= 1 && place.Lpos <= corpus.DasMaxY) {
    place.OldLsys = dat.Get(corpus.DatOrder[static_cast<std::size_t>(place.Lpos)], dat::kSysNo);
  }
  return place;
}

ReaderPlace FindSourceReaderPlace(const Corpus& corpus, std::u16string_view oldLsys) {
  ReaderPlace place;
  if (corpus.SMosMaxY == 0) return place;
  const Table& sdat = corpus.SDat();
  const auto firstOf = [&](int m) {
    return text::ValInt(
        corpus.SMok().Get(corpus.SMokOrder[static_cast<std::size_t>(m)], smok::kPosition));
  };
  place.Mpos = 1;
  place.Lpos = firstOf(1);
  for (int p = 1; p <= corpus.SDasMaxY; ++p) {
    if (sdat.Get(corpus.SDatOrder[static_cast<std::size_t>(p)], sdat::kSysNo) != oldLsys) continue;
    place.Lpos = p;
    place.Mpos = SLineToWork(corpus, p);
    if (place.Mpos == 0) {
      place.Mpos = 1;
      place.Lpos = firstOf(1);
    }
    break;
  }
  if (place.Lpos >= 1 && place.Lpos <= corpus.SDasMaxY) {
    place.OldLsys = sdat.Get(corpus.SDatOrder[static_cast<std::size_t>(place.Lpos)], sdat::kSysNo);
  }
  return place;
}

int FindChronologyPlace(const Table& nen, const std::vector<int>& nenOrder, int count, double nno) {
  int npos = count;
  for (int p = 1; p <= count; ++p) {
    const double number = text::Val(nen.Get(nenOrder[static_cast<std::size_t>(p)], nen::kNumber));
    if (number == nno) {
      npos = p;
      break;
    }
    if (number > nno) {
      npos = p - 1;
      break;
    }
  }
  return std::max(1, npos);
}

}  // namespace suizo::corpus
