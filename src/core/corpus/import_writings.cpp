#include "core/corpus/import_support.h"
#include "core/text/numbers.h"
#include "core/text/sorting.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using import::ReadRows;
using import::Step;
using import::WriteStore;
using text::Contains;

// Sorts row numbers by their keys with the program's own quick sort, whose
// order the stored orders depend on.
std::vector<int> SortedRows(std::vector<int> rows, std::vector<std::u16string> keys) {
  const int n = static_cast<int>(rows.size());
  rows.insert(rows.begin(), 0);
  keys.insert(keys.begin(), std::u16string());
  if (n > 1) text::QuickSort(rows, keys, 1, n);
  rows.erase(rows.begin());
  return rows;
}

// An order goes into its column: the count in row `countRow`, the m-th element
// in row m.
void StoreOrder(Table& table, int countRow, int column, const std::vector<int>& order) {
  table.Set(countRow, column, text::IntText(static_cast<long>(order.size())));
  for (std::size_t m = 0; m < order.size(); ++m) {
    table.Set(static_cast<int>(m) + 1, column, text::IntText(order[m]));
  }
}

}  // namespace

std::u16string ClassRecipient(std::u16string_view recipient, const RecipientNames& names) {
  std::u16string x = text::ReplaceAll(recipient, u".", u"★");
  const bool woman = Contains(x, u"女") || Contains(x, u"尼");
  if (!Contains(x, u"★") && woman) x += u"★";
  if (Contains(x, u"夫妻")) x += u"☆";
  if ((Contains(x, u"及") || Contains(x, u"並")) && woman) {
    bool exempt = false;
    for (const auto& name : names.exempt) exempt = exempt || (!name.empty() && Contains(x, name));
    if (!exempt) x += u"☆";
  }
  if (Contains(x, u"女") && Contains(x, u"兄弟")) x += u"☆";
  for (const auto& couple : names.couples) {
    if (!couple.empty() && Contains(x, couple)) x += u"☆";
  }
  return text::ReplaceAll(x, u"★", u"/女人女性");
}

void ConvDat(Corpus& corpus, const Collection& collection) {
  Table& dat = corpus.Dat();
  const int c = collection.datField;
  std::vector<int> rows;
  std::vector<std::u16string> keys;
  for (int i = 1; i <= dat.rows(); ++i) {
    if (text::TrimSpace(dat.Get(i, dat::kMain2)).empty())
      dat.Set(i, dat::kMain2, dat.Get(i, dat::kMain));
    if (dat.Get(i, c).empty() || dat.Get(i, dat::kMain).empty()) continue;
    rows.push_back(i);
    keys.push_back(text::Format(dat.Get(i, c), text::kPageLineFormat) +
                   text::Format(static_cast<double>(i), text::kRowNumberFormat));
  }
  StoreOrder(dat, dat::kOrderRow, collection.datOrderColumn, SortedRows(rows, keys));
}

void ConvSDat(Corpus& corpus) {
  Table& sdat = corpus.SDat();
  std::vector<int> rows;
  std::vector<std::u16string> keys;
  for (int i = 1; i <= sdat.rows(); ++i) {
    if (sdat.Get(i, sdat::kShaped).empty() || sdat.Get(i, 0).empty()) continue;
    rows.push_back(i);
    keys.push_back(text::Format(sdat.Get(i, 0), text::kPageLineFormat) +
                   text::Format(static_cast<double>(i), text::kRowNumberFormat));
  }
  StoreOrder(sdat, sdat::kOrderRow, sdat::kOrderColumn, SortedRows(rows, keys));
}

void ImportWritings(Corpus& corpus, const ImportOptions& options) {
  Table& dat = corpus.Dat();
  ReadRows(corpus, TableId::Dat, [&](int row) {
    if (Contains(dat.Get(row, dat::kBangou), u"付録")) dat.Set(row, dat::kClass, u"6");
    return true;
  });
  if (dat.rows() > 0 && Contains(dat.Get(dat.rows(), dat::kMain), u"収録しておりません")) {
    dat.Set(dat.rows(), dat::kMain, u"");  // the end notice joins no order
  }
  ApplyCorrections(corpus, TableId::Dat, options.corrections, options.message);
  dat.ClearRow(dat::kOrderRow);
  Step(options, TableId::Dat);
  for (const Collection& collection : kCollections) {
    ConvDat(corpus, collection);
    Step(options, TableId::Dat);
  }
  WriteStore(corpus, options, TableId::Dat);

  Table& mok = corpus.Mok();
  const RecipientNames names = RecipientNamesOf(options.corrections);
  ReadRows(corpus, TableId::Mok, [&](int row) {
    mok.Set(row, mok::kRecipient, ClassRecipient(mok.Get(row, mok::kRecipient), names));
    return true;
  });
  ApplyCorrections(corpus, TableId::Mok, options.corrections, options.message);
  corpus.MokBaseRows = mok.rows();
  WriteStore(corpus, options, TableId::Mok);
  Step(options, TableId::Mok);
}

void ImportSources(Corpus& corpus, const ImportOptions& options) {
  Table& sdat = corpus.SDat();
  ReadRows(corpus, TableId::SDat);
  sdat.ClearRow(sdat::kOrderRow);
  ConvSDat(corpus);
  WriteStore(corpus, options, TableId::SDat);
  Step(options, TableId::SDat);

  Table& smok = corpus.SMok();
  ReadRows(corpus, TableId::SMok, [&](int row) {
    smok.Set(row, smok::kMark, u"0");
    return true;
  });
  WriteStore(corpus, options, TableId::SMok);
  Step(options, TableId::SMok);
}

}  // namespace suizo::corpus
