#include <array>
#include <unordered_map>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/import_support.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using import::ReadRows;
using import::Step;
using import::WriteStore;
using text::Contains;
using text::Val;

// Each office: its holder and accession day in 年表関連, its column in 年表.
struct Office {
  int holder;
  int since;
  int column;
};
constexpr std::array<Office, 5> kOffices = {
    {{7, 9, 9}, {10, 12, 12}, {13, 15, 16}, {16, 18, 18}, {19, 21, 21}}};
constexpr std::size_t kRegency = 2;

// First (or last) row of a table whose field has a value, by that value.
class RowIndex {
 public:
  RowIndex(const Table& table, int field, bool numeric, bool keepLast = false) {
    for (int row = 1; row <= table.rows(); ++row) {
      const std::u16string key = numeric ? text::NumberText(Val(table.Get(row, field)))
                                         : std::u16string(table.Get(row, field));
      if (keepLast) {
        rows_[key] = row;
      } else {
        rows_.emplace(key, row);
      }
    }
  }
  // The row, or 0.
  int Find(const std::u16string& key) const {
    const auto it = rows_.find(key);
    return it == rows_.end() ? 0 : it->second;
  }
  int FindNumber(double value) const { return Find(text::NumberText(value)); }

 private:
  std::unordered_map<std::u16string, int> rows_;
};

// The holder written down the grid's column: one character to a line.
std::u16string Downwards(std::u16string_view name) {
  std::u16string out;
  for (const char16_t c : name) {
    if (!out.empty()) out += u'@';
    out += c;
  }
  return out;
}

std::u16string OfficeValue(std::size_t office, std::u16string name) {
  if (name.empty()) return u" ";
  if (office != kRegency) return Downwards(name);
  if (name.starts_with(u"摂政:")) return u"摂)@" + Downwards(name.substr(3));
  return u"関)@" + Downwards(text::ReplaceAll(name, u"関白:", u""));
}

// Links the corrections end with: the class of a linked document, the source
// number as a link word, the mandala a row names.
void LinkPass(Corpus& corpus) {
  Table& nen = corpus.Nen();
  const Table& hon = corpus.table(TableId::Hon);
  const RowIndex datLast(corpus.Dat(), dat::kSysNo, true, true);
  std::unordered_multimap<std::u16string, int> honRows;
  for (int row = 1; row <= hon.rows(); ++row)
    honRows.emplace(text::NumberText(Val(hon.Get(row, 1))), row);
  const std::string file = DisplayPath(corpus.FilePath(TableId::Nen, ".dat"));
  for (int row = 1; row <= nen.rows(); ++row) {
    const double sysNo = Val(nen.Get(row, nen::kSysNo));
    if (sysNo > 0) {
      if (const int d = datLast.FindNumber(sysNo))
        nen.Set(row, nen::kClass, corpus.Dat().Get(d, dat::kClass));
    }
    const std::u16string source(nen.Get(row, nen::kSourceNo));
    if (!source.empty() && sysNo == 0) {
      const std::u16string_view link = nen.Get(row, nen::kLink);
      nen.Set(row, nen::kLink,
              link.empty() ? u"史料" + source : std::u16string(link) + u"／史料" + source);
    }
    const double mandala = Val(nen.Get(row, nen::kRowLink));
    if (mandala > 0) {
      if (hon.rows() == 0) {
        throw CorpusError({file, 0, row, nen::kRowLink, "尊基礎No"},
                          "the chronology names a mandala, but the mandala table is empty");
      }
      const auto [first, last] = honRows.equal_range(text::NumberText(mandala));
      for (auto it = first; it != last; ++it) {
        const std::u16string number(hon.Get(it->second, 2));
        nen.Set(row, nen::kMandalaNo, number);
        nen.Set(row, nen::kLink, u"本尊" + number);
      }
    }
  }
}

// The holders of the five offices at each event, from the year's row of
// 年表関連, or the year's earlier holder for an event before the accession.
void OfficeColumns(Corpus& corpus) {
  Table& nen = corpus.Nen();
  const Table& nek = corpus.table(TableId::Nek);
  const std::string file = DisplayPath(corpus.FilePath(TableId::Nen, ".dat"));
  int j = 1;
  for (int row = 1; row <= nen.rows(); ++row) {
    nen.Set(row, nen::kToldFlag, Contains(nen.Get(row, nen::kEvent), u"と伝う") ? u"1" : u"0");
    // Copies: writing the office columns may move the table's text.
    const std::u16string date(nen.Get(row, nen::kDate));
    const double year = Val(std::u16string_view(date).substr(0, 4));
    while (j <= nek.rows() && Val(nek.Get(j, 1)) != year) ++j;
    if (j > nek.rows()) {
      throw CorpusError({file, 0, row, nen::kDate, "年月日"},
                        "no row of 年表関連 for the year of \"" + text::ToUtf8(date) +
                            "\" at or after the previous event's");
    }
    const std::u16string day(nen.Get(row, nen::kMonthDay2));
    for (std::size_t o = 0; o < kOffices.size(); ++o) {
      std::u16string name(nek.Get(j, kOffices[o].holder));
      const std::u16string_view since = nek.Get(j, kOffices[o].since);
      if (!since.empty() && day < since) name = nek.Get(j - 1, kOffices[o].holder);
      nen.Set(row, kOffices[o].column, OfficeValue(o, std::move(name)));
    }
    if (date == u"★") {
      for (const Office& office : kOffices) nen.Set(row, office.column, u"");
    }
  }
}

void Links(Corpus& corpus, const ImportOptions& options) {
  Table& nen = corpus.Nen();
  const Table& dat = corpus.Dat();
  const Table& mok = corpus.Mok();
  const Table& smok = corpus.SMok();
  const RowIndex datFirst(dat, dat::kSysNo, true);
  const RowIndex mokByBangou(mok, mok::kBangou, false);
  const RowIndex mokBySysNo(mok, mok::kSysNo, true);
  const RowIndex smokByNumber(smok, smok::kNumber, true);
  const auto say = [&](const std::u16string& m) {
    if (options.message) options.message(m);
  };
  for (int row = 1; row <= nen.rows(); ++row) {
    const std::u16string_view link = nen.Get(row, nen::kLink);
    if (link.starts_with(u"新加"))
      nen.Set(row, nen::kLink, text::ReplaceAll(link, u"新加", u"番号新加"));
    nen.Set(row, nen::kRowLink, u"0");
    nen.Set(row, nen::kMokRow, u"0");
    const std::u16string sysNoText(nen.Get(row, nen::kSysNo));
    const double sysNo = Val(sysNoText);
    if (sysNo > 0 && sysNo < 50000) {
      int d = datFirst.FindNumber(sysNo);
      if (d == 0) {
        say(sysNoText + u"Dat見つからない ");
        d = dat.rows() + 1;
      }
      nen.Set(row, nen::kRowLink, text::IntText(d));
      if (!nen.Get(row, nen::kLink).starts_with(u"番号")) {
        const int m = mokByBangou.Find(std::u16string(dat.Get(d, dat::kBangou)));
        nen.Set(row, nen::kMokRow, text::IntText(m == 0 ? mok.rows() + 1 : m));
      } else {
        int m = mokBySysNo.FindNumber(sysNo);
        if (m == 0) {
          say(sysNoText + u"Mok見つからない");
          m = mok.rows() + 1;
        }
        nen.Set(row, nen::kMokRow, text::IntText(m));
      }
    }
    const std::u16string sourceText(nen.Get(row, nen::kSourceNo));
    if (Val(sourceText) > 0) {
      int s = smokByNumber.FindNumber(Val(sourceText));
      if (s == 0) {
        say(sourceText + u"SMok見つからない ");
        s = smok.rows() + 1;
      }
      nen.Set(row, nen::kRowLink, text::IntText(s));
    }
    if (row % 2000 == 0) Step(options, TableId::Nen);
  }
  for (int row = 1; row <= nen.rows(); ++row) nen.Set(row, nen::kShown, u"0");
}

}  // namespace

void ImportChronology(Corpus& corpus, const ImportOptions& options) {
  ReadRows(corpus, TableId::Nek);
  WriteStore(corpus, options, TableId::Nek);
  Step(options, TableId::Nek);

  ReadRows(corpus, TableId::Nen);
  ApplyCorrections(corpus, TableId::Nen, options.corrections, options.message);
  LinkPass(corpus);
  OfficeColumns(corpus);
  Links(corpus, options);
  WriteStore(corpus, options, TableId::Nen);
  Step(options, TableId::Nen);
}

}  // namespace suizo::corpus
