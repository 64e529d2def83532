#include "core/corpus/errors.h"
#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using text::Contains;

constexpr std::u16string_view kHead = u"◆";
// Rows that start a document only in the system order.
constexpr std::u16string_view kSystemOnlyHeads[] = {u"14611", u"17450"};
constexpr std::size_t kMaxHeadMarks = 1000;

int StartField(int gk) {
  const Collection* c = FindCollection(gk);
  return c == nullptr ? 0 : c->mokStartField;
}

void Remember(std::vector<int>& rows, int row) {
  if (rows.size() >= kMaxHeadMarks) {
    throw CorpusError({"翠典本文"}, "more than 1000 head marks to keep track of");
  }
  rows.push_back(row);
}

void TakeHeadAway(Table& dat, int row) {
  const std::u16string_view text = dat.Get(row, dat::kMain2);
  if (text.starts_with(kHead)) dat.Set(row, dat::kMain2, text.substr(kHead.size()));
}

void PutHeadOn(Table& dat, int row) {
  dat.Set(row, dat::kMain2, std::u16string(kHead) + std::u16string(dat.Get(row, dat::kMain2)));
}

// A new `Mok` row at the end, numbered in field 0.
int AddRecord(Table& mok) {
  const int row = mok.rows() + 1;
  mok.ClearRow(row);  // throws beyond the table's capacity
  mok.set_rows(row);
  mok.Set(row, 0, text::IntText(row));
  return row;
}

int FindRecord(const Table& mok, int field, std::u16string_view key) {
  for (int row = 1; row <= mok.rows(); ++row) {
    if (mok.Get(row, field) == key) return row;
  }
  return 0;
}

// 対録 and 集成 place documents by their 番号, walking the order backwards a
// run of rows at a time; a document found twice gets a copy of its record,
// which keeps the later placement.
void PlaceByNumber(Corpus& corpus, int gk, int start) {
  Table& dat = corpus.Dat();
  Table& mok = corpus.Mok();
  const auto rowAt = [&](int p) { return corpus.DatOrder[static_cast<std::size_t>(p)]; };
  for (int p = corpus.DasMaxY; p >= 1; --p) {
    std::u16string s(dat.Get(rowAt(p), dat::kBangou));
    if (const auto blank = s.find(u' '); blank != std::u16string::npos) s = s.substr(blank + 1);
    while (p > 1 && Contains(dat.Get(rowAt(p - 1), dat::kBangou), s)) --p;
    int k = FindRecord(mok, mok::kBangou, s);
    if (k == 0) {
      throw CorpusError(
          {"翠典資料", 0, rowAt(p), dat::kBangou, "番号"},
          "the document number \"" + text::ToUtf8(s) + "\" has no record to place it by");
    }
    if (!mok.Get(k, start).empty()) {
      const int copy = AddRecord(mok);
      for (int f = 1; f <= mok.cols(); ++f) mok.Set(copy, f, mok.Get(k, f));
    }
    mok.Set(k, mok::kPosition, text::IntText(p));
    mok.Set(k, start, dat.Get(rowAt(p), gk));
  }
}

// The other collections place documents by their head rows; a head without a
// record of its own is a title line that points to a document printed
// elsewhere, and gets a record that says so.
void PlaceByHeads(Corpus& corpus, int gk, int start) {
  Table& dat = corpus.Dat();
  Table& mok = corpus.Mok();
  if (gk == 0) {
    mok.Set(mok.rows(), 0, u"");  // the last record is not listed in the system order
    for (const auto key : kSystemOnlyHeads) {
      const int row = SysNo(corpus, key);
      if (row <= dat.rows()) PutHeadOn(dat, row);
    }
  }
  corpus.HeadOff.clear();
  for (int p = 1; p <= corpus.DasMaxY; ++p) {
    const int row = corpus.DatOrder[static_cast<std::size_t>(p)];
    if (!dat.Get(row, dat::kMain2).starts_with(kHead)) continue;
    const std::u16string sysNo(dat.Get(row, dat::kSysNo));
    if (const int k = FindRecord(mok, mok::kSysNo, sysNo)) {
      mok.Set(k, mok::kPosition, text::IntText(p));
      if (gk > 0) mok.Set(k, start, dat.Get(row, gk));
    } else if (gk > 0) {
      const int next = p < corpus.DasMaxY ? corpus.DatOrder[static_cast<std::size_t>(p) + 1] : 0;
      const int added = AddRecord(mok);
      mok.Set(added, mok::kPosition, text::IntText(p));
      mok.Set(added, mok::kSysNo, sysNo);
      mok.Set(added, mok::kClass, dat.Get(next, dat::kClass));
      mok.Set(added, mok::kTitle,
              text::ReplaceAll(text::TrimSpace(dat.Get(row, dat::kMain2)), kHead, u""));
      mok.Set(added, start, dat.Get(row, gk));
      mok.Set(added, mok::kNote,
              u"／／　　　　　　　　　　番号" + std::u16string(dat.Get(next, dat::kBangou)) +
                  u" を参照");
    } else {
      const std::u16string_view text = dat.Get(row, dat::kMain2);
      if (Contains(text, u"聖愚問答抄") || Contains(text, u"御義口伝")) {
        dat.Set(row, dat::kMain2, text::ReplaceAll(text, kHead, u""));
        Remember(corpus.HeadOff, row);
      }
    }
  }
}

// The list: documents placed in the collection, each once even when its copy
// stands right behind it, through the class filter (and, for the narrowed
// list, the mark).
int List(Corpus& corpus, const Selection& selection, bool narrowed) {
  const Table& mok = corpus.Mok();
  const int start = StartField(selection.Gk);
  corpus.MokOrder.assign(1, 0);
  int placed = 0;
  for (int row = 1; row <= mok.rows(); ++row) {
    if (mok.Get(row, start).empty() || mok.Get(row - 1, mok::kSysNo) == mok.Get(row, mok::kSysNo))
      continue;
    ++placed;
    if (!selection.Shows(text::ValInt(mok.Get(row, mok::kClass)))) continue;
    if (narrowed && text::Val(mok.Get(row, mok::kMark)) != 0) continue;
    corpus.MokOrder.push_back(row);
  }
  corpus.MosMaxY = static_cast<int>(corpus.MokOrder.size()) - 1;
  return placed;
}

void Sort(Corpus& corpus, const Selection& selection) {
  if (selection.Kn == 1) {
    SortMokKeinen(corpus);
  } else {
    SortMokSuiten(corpus, selection.Gk);
  }
}

}  // namespace

void ConvMok(Corpus& corpus, Selection& selection) {
  Table& dat = corpus.Dat();
  Table& mok = corpus.Mok();
  for (const int row : corpus.HeadOn) TakeHeadAway(dat, row);
  corpus.HeadOn.clear();
  const int gk = selection.Gk;
  const int start = StartField(gk);
  if (selection.MokRedo == 1) {
    for (int row = corpus.MokBaseRows + 1; row <= mok.rows() + 1; ++row) mok.ClearRow(row);
    mok.set_rows(corpus.MokBaseRows);
    for (const auto key : kSystemOnlyHeads) {
      const int row = SysNo(corpus, key);
      if (row <= dat.rows())
        dat.Set(row, dat::kMain2, text::ReplaceAll(dat.Get(row, dat::kMain2), kHead, u""));
    }
    for (const int row : corpus.HeadOff) {
      if (!dat.Get(row, dat::kMain2).starts_with(kHead)) PutHeadOn(dat, row);
    }
    corpus.HeadOff.clear();
    if (gk > 0) {
      for (int row = 1; row <= mok.rows(); ++row) mok.Set(row, start, u"");
    }
    if (gk >= 31) {
      PlaceByNumber(corpus, gk, start);
    } else {
      PlaceByHeads(corpus, gk, start);
    }
  }
  corpus.MokAllY = List(corpus, selection, false);
  // Undated records take the dating of their first line of text.
  for (int m = 1; m <= corpus.MosMaxY; ++m) {
    const int row = corpus.MokOrder[static_cast<std::size_t>(m)];
    if (!mok.Get(row, mok::kDating).empty()) continue;
    const int p = text::ValInt(mok.Get(row, mok::kPosition)) + 1;
    if (p < 1 || p > corpus.DasMaxY) continue;
    const int text = corpus.DatOrder[static_cast<std::size_t>(p)];
    mok.Set(row, mok::kDating, dat.Get(text, dat::kDating));
    mok.Set(row, mok::kDate, dat.Get(text, dat::kDate));
  }
  Sort(corpus, selection);
  if (gk == 31 || gk == 35) {
    // Every listed document must start with a head mark for the reader.
    for (int m = 1; m <= corpus.MosMaxY; ++m) {
      const int p = static_cast<int>(
          text::Val(mok.Get(corpus.MokOrder[static_cast<std::size_t>(m)], mok::kPosition)));
      if (p < 1 || p > corpus.DasMaxY) continue;
      const int row = corpus.DatOrder[static_cast<std::size_t>(p)];
      if (dat.Get(row, dat::kMain2).starts_with(kHead)) continue;
      PutHeadOn(dat, row);
      Remember(corpus.HeadOn, row);
    }
  }
  selection.MokRedo = 0;
}

void ConvMok2(Corpus& corpus, const Selection& selection) {
  List(corpus, selection, true);
  Sort(corpus, selection);
}

void ConvSMok(Corpus& corpus, const Selection& selection) {
  const Table& sdat = corpus.SDat();
  Table& smok = corpus.SMok();
  for (int p = 1; p <= corpus.SDasMaxY; ++p) {
    const int row = corpus.SDatOrder[static_cast<std::size_t>(p)];
    if (!sdat.Get(row, sdat::kReading).starts_with(kHead)) continue;
    if (const int k = FindRecord(smok, smok::kSysNo, sdat.Get(row, sdat::kSysNo))) {
      smok.Set(k, smok::kPosition, text::IntText(p));
    }
  }
  corpus.SMokOrder.assign(1, 0);
  for (int row = 1; row <= smok.rows(); ++row) {
    if (text::Val(smok.Get(row, smok::kMark)) == 0) corpus.SMokOrder.push_back(row);
  }
  corpus.SMosMaxY = static_cast<int>(corpus.SMokOrder.size()) - 1;
  if (selection.SKn == 1) {
    SortMokKeinenS(corpus);
  } else {
    SortMokSiryo(corpus);
  }
}

void ApplySelection(Corpus& corpus, Selection& selection) {
  if (selection.MokRedo == 1) {
    ConvDat2(corpus, selection.Gk);
    ConvMok(corpus, selection);
  } else {
    ConvMok2(corpus, selection);
  }
}

void InitialOrders(Corpus& corpus, Selection& selection) {
  selection.Gk = 0;
  selection.Kn = 0;
  ConvDat2(corpus, selection.Gk);
  selection.MokRedo = 1;
  ConvMok(corpus, selection);
  selection.SKn = 0;
  ConvSDat2(corpus);
  ConvSMok(corpus, selection);
}

void ApplySourceSelection(Corpus& corpus, const Selection& selection) {
  ConvSMok(corpus, selection);
}

}  // namespace suizo::corpus
