// The sample's chronology must keep what the chronology view and the import
// of its offices and links rely on; these checks read the .dat files as the
// import does, before any conversion, and the corrections beside them.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <set>
#include <sstream>

#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "generated_corpus.h"

namespace suizo::testing {
namespace {

using corpus::TableId;

// 年表 fields, by the names of the export.
constexpr int kNo = 2, kDate = 7, kDay = 10, kYear = 13, kEvent = 14, kKind = 15, kClass = 17;
constexpr int kLink = 19, kSysNo = 20, kSource = 23, kMandala = 27;
// 年表関連: the holder columns; the accession day stands two further on.
constexpr std::array<int, 5> kHolders = {7, 10, 13, 16, 19};

bool Has(std::u16string_view text, std::u16string_view part) {
  return text.find(part) != text.npos;
}

// The year the import reads from 年表 field 7: its first four characters.
int YearOf(std::u16string_view date) {
  return static_cast<int>(text::Val(date.substr(0, 4)));
}

bool IsDayKey(std::u16string_view v) {
  if (v.size() != 5 || v[2] != u'/') return false;
  for (const std::size_t i : {0u, 1u, 3u, 4u}) {
    if (v[i] < u'0' || v[i] > u'9') return false;
  }
  return true;
}

struct Correction {
  std::u16string key;
  int field;
  std::u16string kind, oldText, newText;
};

std::vector<Correction> NenCorrections() {
  std::istringstream in(corpus::ReadFileBytes(Sample().folder() / "corrections.tsv"));
  std::vector<Correction> out;
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string> part;
    std::istringstream cells(line);
    for (std::string cell; std::getline(cells, cell, '\t');) part.push_back(cell);
    if (line.starts_with("#") || part.size() < 6 || part[0] != "Nen") continue;
    out.push_back({text::FromUtf8(part[1]), std::stoi(part[2]), text::FromUtf8(part[3]),
                   text::FromUtf8(part[4]), text::FromUtf8(part[5])});
  }
  return out;
}

int NenRowOf(std::u16string_view key) {
  const corpus::Table& nen = Sample().table(TableId::Nen);
  for (int row = 1; row <= nen.rows(); ++row) {
    if (nen.Get(row, 1) == key) return row;
  }
  return 0;
}

std::set<std::u16string> Column(TableId id, int field) {
  const corpus::Table& t = Sample().table(id);
  std::set<std::u16string> values;
  for (int row = 1; row <= t.rows(); ++row) values.insert(std::u16string(t.Get(row, field)));
  return values;
}

TEST(SampleChronology, AYearsRowForEachYearAndOneToEndTheWalk) {
  const corpus::Table& nek = Sample().table(TableId::Nek);
  ASSERT_EQ(nek.rows(), 102);
  for (int row = 1; row <= 101; ++row) {
    EXPECT_EQ(text::Val(nek.Get(row, 1)), 1199 + row);
    EXPECT_FALSE(nek.Get(row, 2).empty()) << row;  // era
    EXPECT_EQ(nek.Get(row, 5).size(), 2u) << row;  // cyclical sign
    for (int f = 22; f <= 35; ++f) EXPECT_TRUE(nek.Get(row, f).empty()) << row << " " << f;
  }
  EXPECT_TRUE(nek.Get(102, 1).empty());
  EXPECT_GT(Sample().Count(TableId::Nek, 6, IsDayKey), 20);  // days the era changed
  EXPECT_GT(Sample().CountContaining(TableId::Nek, 36, u"聖寿"), 50);
  EXPECT_GT(Sample().CountContaining(TableId::Nek, 36, u"滅後"), 10);
}

TEST(SampleChronology, FiveOfficesWithHoldersAndAccessionDays) {
  GeneratedCorpus& c = Sample();
  for (const int holder : kHolders) {
    EXPECT_GT(c.Count(TableId::Nek, holder, [](auto v) { return !v.empty(); }), 50) << holder;
    EXPECT_GE(c.Count(TableId::Nek, holder + 2, IsDayKey), 4) << holder;
    EXPECT_EQ(c.Count(TableId::Nek, holder + 2, [](auto v) { return !v.empty() && !IsDayKey(v); }),
              0);
  }
  // Some years have no holder (a vacancy), and the regent's title leads his name.
  EXPECT_GT(c.Count(TableId::Nek, 10, [](auto v) { return v.empty(); }), 1);
  EXPECT_GT(c.Count(TableId::Nek, 13, [](auto v) { return v.starts_with(u"摂政:"); }), 0);
  EXPECT_GT(c.Count(TableId::Nek, 13, [](auto v) { return v.starts_with(u"関白:"); }), 0);
  EXPECT_EQ(c.Count(TableId::Nek, 13,
                    [](auto v) {
                      return !v.empty() && !v.starts_with(u"摂政:") && !v.starts_with(u"関白:");
                    }),
            0);
}

TEST(SampleChronology, EventsOfEveryKindNumberedAroundTheSaintsLife) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& nen = c.table(TableId::Nen);
  ASSERT_GE(nen.rows(), 300);
  for (int kind = 0; kind <= 5; ++kind) {
    EXPECT_GE(c.Count(TableId::Nen, kKind, [&](auto v) { return text::Val(v) == kind; }), 10)
        << kind;
  }
  const int told = c.CountContaining(TableId::Nen, kEvent, u"と伝う");
  EXPECT_GT(told, 3);
  EXPECT_LT(told, nen.rows() / 5);
  double last = 0;
  for (int row = 1; row <= nen.rows(); ++row) {
    const double no = text::Val(nen.Get(row, kNo));
    EXPECT_GT(no, last) << row;
    last = no;
    const int year = static_cast<int>(text::Val(nen.Get(row, kYear)));
    if (year == 0) continue;
    EXPECT_EQ(year < 1222, no < 175) << row;
    EXPECT_EQ(year > 1282, no > 1590) << row;
  }
  // Undated events come last; the import reads "★" as year 0.
  EXPECT_EQ(nen.Get(nen.rows(), kDate), u"★");
  EXPECT_EQ(c.Count(TableId::Nen, kDate, [](auto v) { return v == u"★"; }),
            c.Count(TableId::Nen, kYear, [](auto v) { return v.empty(); }));
}

TEST(SampleChronology, DatesAsTheImportAndTheFoldingReadThem) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& nen = c.table(TableId::Nen);
  const corpus::Table& nek = c.table(TableId::Nek);
  int walk = 1;
  int eraRuns = 0;
  for (int row = 1; row <= nen.rows(); ++row) {
    const int year = YearOf(nen.Get(row, kDate));
    while (walk <= nek.rows() && text::Val(nek.Get(walk, 1)) != year) ++walk;
    ASSERT_LE(walk, nek.rows()) << "no 年表関連 row ahead for 年表 row " << row;
    if (year == 0) continue;
    EXPECT_EQ(text::Val(nen.Get(row, kYear)), year);
    const auto day = nen.Get(row, kDay);
    if (!day.empty()) {
      ASSERT_TRUE(IsDayKey(day)) << row;
      EXPECT_EQ(nen.Get(row, kDate).substr(5, 2), day.substr(0, 2)) << row;
    }
    if (row > 1 && nen.Get(row, 3) != nen.Get(row - 1, 3)) ++eraRuns;
    if (row > 1 && nen.Get(row, kYear) == nen.Get(row - 1, kYear)) {
      EXPECT_EQ(nen.Get(row, 3), nen.Get(row - 1, 3)) << "one year, one era label: " << row;
    }
  }
  EXPECT_GT(eraRuns, 90);
  EXPECT_GT(c.Count(TableId::Nen, 4, [](auto v) { return !v.empty(); }),
            0);  // the era before a change
  EXPECT_GT(c.Count(TableId::Nen, kDay, [](auto v) { return v.empty(); }), 0);
  EXPECT_GT(c.Count(TableId::Nen, kDay, [](auto v) { return v.ends_with(u"/00"); }), 0);
}

TEST(SampleChronology, EventsOnBothSidesOfAnAccession) {
  const corpus::Table& nen = Sample().table(TableId::Nen);
  const corpus::Table& nek = Sample().table(TableId::Nek);
  int before = 0, after = 0;
  for (int row = 1, walk = 1; row <= nen.rows(); ++row) {
    const int year = YearOf(nen.Get(row, kDate));
    while (text::Val(nek.Get(walk, 1)) != year) ++walk;
    const auto day = nen.Get(row, kDay);
    for (const int holder : kHolders) {
      const auto since = nek.Get(walk, holder + 2);
      if (since.empty() || day.empty()) continue;
      ++(day < since ? before : after);
    }
  }
  EXPECT_GT(before, 20);
  EXPECT_GT(after, 20);
}

TEST(SampleChronology, LinksToWritingsAndSources) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& nen = c.table(TableId::Nen);
  const auto heads = Column(TableId::Mok, 3);
  const auto sources = Column(TableId::SMok, 2);
  int letters = 0, deeds = 0, added = 0, keyOnly = 0, sourceAlone = 0, sourceWithWord = 0;
  for (int row = 1; row <= nen.rows(); ++row) {
    const auto sysNo = nen.Get(row, kSysNo);
    const auto link = nen.Get(row, kLink);
    const int kind = static_cast<int>(text::Val(nen.Get(row, kKind)));
    if (!sysNo.empty()) {
      EXPECT_TRUE(heads.count(std::u16string(sysNo))) << text::ToUtf8(sysNo);
      EXPECT_LT(text::Val(sysNo), 50000);
      letters += kind == 3 && link.starts_with(u"番号");
      deeds += kind == 5 && link.starts_with(u"番号");
      added += link.starts_with(u"新加");
      keyOnly += !link.starts_with(u"番号") && !link.starts_with(u"新加");
    }
    if (!nen.Get(row, kSource).empty()) {
      EXPECT_TRUE(sysNo.empty()) << row;
      EXPECT_TRUE(sources.count(std::u16string(nen.Get(row, kSource)))) << row;
      ++(link.empty() ? sourceAlone : sourceWithWord);
    }
  }
  EXPECT_GT(letters, 20);
  EXPECT_GT(deeds, 1);
  EXPECT_GT(added, 0);
  EXPECT_GT(keyOnly, 2);
  EXPECT_GT(sourceAlone, 1);
  EXPECT_GT(sourceWithWord, 1);
  EXPECT_EQ(c.Count(TableId::Nen, kClass, [](auto v) { return !v.empty() && text::Val(v) > 9; }),
            0);
}

TEST(SampleChronology, MandalasAndTheCorrectionsThatLinkThem) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& hon = c.table(TableId::Hon);
  const corpus::Table& nen = c.table(TableId::Nen);
  ASSERT_GE(hon.rows(), 30);
  std::set<std::u16string> keys;
  for (int row = 1; row <= hon.rows(); ++row) {
    EXPECT_EQ(text::Val(hon.Get(row, 2)), row);  // 本尊No in the export's order
    EXPECT_TRUE(keys.insert(std::u16string(hon.Get(row, 1))).second) << row;
    EXPECT_EQ(text::Val(hon.Get(row, 8)), YearOf(hon.Get(row, 10))) << row;
  }
  EXPECT_GT(c.Count(TableId::Hon, 4, [](auto v) { return Has(v, u"書写"); }), 0);
  // The imported 尊基礎No lands in field 27 of mandala events only.
  EXPECT_GE(c.Count(TableId::Nen, kMandala, [](auto v) { return !v.empty(); }), 10);
  for (int row = 1; row <= nen.rows(); ++row) {
    if (nen.Get(row, kMandala).empty()) continue;
    EXPECT_EQ(text::Val(nen.Get(row, kKind)), 2);
    EXPECT_TRUE(keys.count(std::u16string(nen.Get(row, kMandala)))) << row;
  }

  const auto corrections = NenCorrections();
  EXPECT_GE(corrections.size(), 5u);
  EXPECT_LE(corrections.size(), 12u);
  int mandalaLinks = 0, linkOrClass = 0, replaced = 0;
  for (const Correction& fix : corrections) {
    const int row = NenRowOf(fix.key);
    ASSERT_GT(row, 0) << text::ToUtf8(fix.key);
    const auto now = nen.Get(row, fix.field);
    if (fix.kind == u"set" && fix.field == 24) {
      EXPECT_EQ(text::Val(nen.Get(row, kKind)), 2);
      EXPECT_TRUE(keys.count(fix.newText));
      ++mandalaLinks;
    } else if (fix.kind == u"set" && (fix.field == kClass || fix.field == kSysNo)) {
      EXPECT_NE(now, fix.newText);
      if (fix.field == kSysNo) {
        EXPECT_TRUE(Column(TableId::Mok, 3).count(fix.newText));
      }
      ++linkOrClass;
    } else if (fix.kind == u"replace" && fix.field == kEvent) {
      EXPECT_TRUE(Has(now, fix.oldText)) << text::ToUtf8(fix.oldText);
      EXPECT_FALSE(Has(now, fix.newText));
      ++replaced;
    } else {
      ADD_FAILURE() << "unexpected correction of field " << fix.field;
    }
  }
  EXPECT_GE(mandalaLinks, 3);
  EXPECT_GE(linkOrClass, 1);
  EXPECT_GE(replaced, 1);
}

}  // namespace
}  // namespace suizo::testing
