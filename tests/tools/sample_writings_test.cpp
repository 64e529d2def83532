// The bundled sample must keep every feature the program shows; these checks
// read its .dat files as the import does, before any conversion.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "generated_corpus.h"

namespace suizo::testing {
namespace {

using corpus::TableId;

bool Has(std::u16string_view text, std::u16string_view part) {
  return text.find(part) != text.npos;
}

// Document numbers of the rows in a collection's page order, one entry per run
// of consecutive rows of one document.
std::vector<std::u16string> DocumentRuns(GeneratedCorpus& c, int field) {
  const corpus::Table& dat = c.table(TableId::Dat);
  std::vector<std::pair<double, int>> placed;
  for (int row = 1; row <= dat.rows(); ++row) {
    if (!dat.Get(row, field).empty() && !dat.Get(row, 8).empty()) {
      placed.push_back({text::Val(dat.Get(row, field)), row});
    }
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::u16string> runs;
  for (const auto& [value, row] : placed) {
    const std::u16string bangou(dat.Get(row, 4));
    if (runs.empty() || runs.back() != bangou) runs.push_back(bangou);
  }
  return runs;
}

TEST(SampleWritings, HasEnoughDocumentsInEveryClass) {
  GeneratedCorpus& c = Sample();
  EXPECT_GE(c.table(TableId::Mok).rows(), 30);
  EXPECT_GE(c.table(TableId::Dat).rows(), 600);
  for (int klass = 0; klass <= 9; ++klass) {
    EXPECT_GT(c.Count(TableId::Mok, 9, [&](auto v) { return text::Val(v) == klass; }), 0) << klass;
  }
  EXPECT_GT(c.CountContaining(TableId::Dat, 4, u"付録"), 0);
}

TEST(SampleWritings, EveryCollectionHasItsOwnOrder) {
  GeneratedCorpus& c = Sample();
  std::set<std::vector<std::u16string>> orders;
  for (const int field : {22, 23, 24, 25, 26, 27, 28, 29, 31, 35}) {
    const auto runs = DocumentRuns(c, field);
    EXPECT_GE(runs.size(), 4u) << field;
    orders.insert(runs);
    // Each collection leaves out some documents.
    EXPECT_LT(std::set<std::u16string>(runs.begin(), runs.end()).size(),
              static_cast<std::size_t>(c.table(TableId::Mok).rows()))
        << field;
  }
  EXPECT_EQ(orders.size(), 10u);
}

TEST(SampleWritings, TwoRowsShareAPageAndLine) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& dat = c.table(TableId::Dat);
  std::set<std::u16string> seen;
  int ties = 0;
  for (int row = 1; row <= dat.rows(); ++row) {
    const auto v = dat.Get(row, 22);
    if (!v.empty() && !seen.insert(std::u16string(v)).second) ++ties;
  }
  EXPECT_GT(ties, 0);
}

TEST(SampleWritings, ADocumentStandsTwiceInTheTwoConcordances) {
  GeneratedCorpus& c = Sample();
  for (const int field : {31, 35}) {
    const auto runs = DocumentRuns(c, field);
    std::map<std::u16string, int> count;
    for (const auto& b : runs) ++count[b];
    EXPECT_TRUE(std::any_of(count.begin(), count.end(), [](const auto& e) { return e.second > 1; }))
        << field;
    // Every number there has a record, or the placement cannot find it.
    for (const auto& entry : count) {
      const std::u16string& bangou = entry.first;
      EXPECT_GT(c.Count(TableId::Mok, 4, [&](auto v) { return v == bangou; }), 0) << field;
    }
  }
}

TEST(SampleWritings, HeadsWithoutRecordsAndTheSystemOnlyHeads) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& dat = c.table(TableId::Dat);
  const corpus::Table& mok = c.table(TableId::Mok);
  std::set<std::u16string> recorded;
  for (int row = 1; row <= mok.rows(); ++row) recorded.insert(std::u16string(mok.Get(row, 3)));
  int crossReferences = 0;
  for (int row = 1; row <= dat.rows(); ++row) {
    if (dat.Get(row, 9).starts_with(u"◆") && !recorded.count(std::u16string(dat.Get(row, 2))) &&
        Has(dat.Get(row, 8), u"に移動") && !dat.Get(row, 22).empty()) {
      ++crossReferences;
    }
  }
  EXPECT_GT(crossReferences, 0);
  for (const auto key : {u"14611", u"17450"}) {
    EXPECT_TRUE(recorded.count(key)) << "a record for " << text::ToUtf8(key);
    const int row = c.Count(TableId::Dat, 2, [&](auto v) { return v < key; }) + 1;
    ASSERT_EQ(dat.Get(row, 2), key);
    EXPECT_EQ(dat.Get(row, 4), dat.Get(row - 1, 4)) << "inside a document";
  }
  EXPECT_GT(c.Count(TableId::Dat, 9, [](auto v) { return v == u"◆御義口伝　下"; }), 0);
  EXPECT_GT(c.CountContaining(TableId::Dat, 8, u"聖愚問答抄　下"), 0);
}

TEST(SampleWritings, StubsEmptyRowsAndTheEndNotice) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& dat = c.table(TableId::Dat);
  // A stub: "に移動", then from the first "／" on a five-digit row key.
  EXPECT_GT(c.Count(TableId::Dat, 8,
                    [](auto v) {
                      const auto slash = v.find(u'／');
                      return Has(v, u"に移動") && slash != v.npos && v.size() >= slash + 6 &&
                             text::ToInt(v.substr(slash + 1, 5)).value_or(0) >= 10000;
                    }),
            1);
  EXPECT_GT(c.Count(TableId::Dat, 8, [](auto v) { return v.empty(); }), 1);
  EXPECT_TRUE(Has(dat.Get(dat.rows(), 8), u"収録しておりません"));
}

TEST(SampleWritings, TextShowsWhatTheSearchMustBridge) {
  GeneratedCorpus& c = Sample();
  for (const auto part :
       {u"學", u"学", u"佛", u"仏", u"經", u"経", u"ゐ", u"ゑ", u"１", u"1", u"々"}) {
    EXPECT_GT(c.CountContaining(TableId::Dat, 8, part), 0) << text::ToUtf8(part);
  }
  EXPECT_GT(c.Count(TableId::Dat, 8,
                    [](auto v) {
                      return std::any_of(v.begin(), v.end(),
                                         [](char16_t ch) { return ch >= 0xE000 && ch <= 0xF8FF; });
                    }),
            0);
  EXPECT_GT(c.Count(TableId::Dat, 8, [](auto v) { return v.starts_with(u"  "); }), 0);
  EXPECT_GT(c.Count(TableId::Dat, 8, [](auto v) { return v.size() > 255; }), 0);
  EXPECT_GT(c.CountContaining(TableId::Dat, 8, u"┬"), 0);
  EXPECT_GT(c.Count(TableId::Dat, 9, [](auto v) { return !v.empty() && !v.starts_with(u"◆"); }), 0);
}

TEST(SampleWritings, ColumnsBesideTheMainText) {
  GeneratedCorpus& c = Sample();
  const int rows = c.table(TableId::Dat).rows();
  const int autograph = c.Count(TableId::Dat, 10, [](auto v) { return !v.empty(); });
  // Rows with and without an autograph, both plenty, for the 真蹟 filter.
  EXPECT_GT(autograph, rows / 10);
  EXPECT_LT(autograph, rows * 9 / 10);
  EXPECT_GT(c.Count(TableId::Dat, 12, [](auto v) { return !v.empty(); }), 0);
  EXPECT_GT(c.CountContaining(TableId::Dat, 15, u"＜"), 0);
  EXPECT_GT(
      c.Count(TableId::Dat, 15, [](auto v) { return std::count(v.begin(), v.end(), u'＜') >= 3; }),
      0);
  EXPECT_GT(c.Count(TableId::Dat, 48, [](auto v) { return !v.empty(); }), 0);
  EXPECT_GT(c.Count(TableId::Dat, 52, [](auto v) { return Has(v, u"大12.3a") && Has(v, u"成仏"); }),
            0);
  EXPECT_GT(c.CountContaining(TableId::Dat, 2, u"."), 0);  // keys added between two others
  EXPECT_GT(c.CountContaining(TableId::Dat, 32, u"ﾅｼ"), 0);
  EXPECT_GT(
      c.Count(TableId::Dat, 36, [](auto v) { return std::count(v.begin(), v.end(), u'-') == 2; }),
      0);
}

TEST(SampleWritings, RecordsOfferWhatTheRecordViewReads) {
  GeneratedCorpus& c = Sample();
  for (const auto mark : {u"女", u"尼", u"夫妻", u"兄弟", u"及", u"並", u"."}) {
    EXPECT_GT(c.CountContaining(TableId::Mok, 13, mark), 0) << text::ToUtf8(mark);
  }
  for (const auto form : {u"番号４－追Ⅳ", u"№", u"番号新加-36", u"次頁"}) {
    EXPECT_GT(c.CountContaining(TableId::Mok, 14, form), 0) << text::ToUtf8(form);
  }
  EXPECT_GT(c.CountContaining(TableId::Mok, 10, u"＜"), 0);
  EXPECT_GT(c.Count(TableId::Mok, 12, [](auto v) { return v.empty(); }), 0);
  EXPECT_GT(c.Count(TableId::Mok, 26, [](auto v) { return v == u"??"; }), 0);
  EXPECT_GT(c.CountContaining(TableId::Mok, 4, u"  "), 0);
}

TEST(SampleSources, DocumentsWithHeadsAndRowsOutOfOrder) {
  GeneratedCorpus& c = Sample();
  EXPECT_GE(c.table(TableId::SMok).rows(), 10);
  EXPECT_GE(c.table(TableId::SDat).rows(), 200);
  EXPECT_EQ(c.Count(TableId::SDat, 9, [](auto v) { return v.starts_with(u"◆"); }),
            c.table(TableId::SMok).rows());
  EXPECT_GT(c.Count(TableId::SDat, 11, [](auto v) { return v.empty(); }), 0);
  EXPECT_EQ(c.Count(TableId::SDat, 2, [](auto v) { return text::Val(v) < 50000; }), 0);
}

TEST(SampleSutra, ChaptersAndFasciclesAsTheReaderExpects) {
  GeneratedCorpus& c = Sample();
  const corpus::Table& hok = c.table(TableId::Hok);
  ASSERT_GE(hok.rows(), 2600);
  EXPECT_EQ(hok.Get(1, 9), u"徳行品第一");
  EXPECT_EQ(hok.Get(hok.rows(), 9), u"仏説観普賢菩薩行法経");
  std::set<std::u16string> lotusChapters;
  double lastPage = 0;
  for (int row = 1; row <= hok.rows(); ++row) {
    EXPECT_EQ(text::Val(hok.Get(row, 1)), row);
    if (Has(hok.Get(row, 8), u"妙法")) lotusChapters.insert(std::u16string(hok.Get(row, 9)));
    const double page = text::Val(hok.Get(row, 11));
    EXPECT_GE(page, lastPage) << row;
    lastPage = page;
  }
  EXPECT_EQ(lotusChapters.size(), 28u);
  for (const int start : {212, 577, 989, 1350, 1640, 1961, 2289, 2514}) {
    EXPECT_TRUE(Has(hok.Get(start, 8), u"妙法"));
    EXPECT_NE(hok.Get(start, 9), hok.Get(start - 1, 9)) << "a chapter begins at " << start;
  }
  EXPECT_GT(text::Val(hok.Get(1, 11)), 65);
  EXPECT_LT(text::Val(hok.Get(hok.rows(), 11)), 722);
}

TEST(SampleSutra, OutlinesDropEmptyHeadingsAndGroupByPhrase) {
  GeneratedCorpus& c = Sample();
  EXPECT_GT(c.Count(TableId::Sok, 4, [](auto v) { return v.empty(); }), 0);
  EXPECT_GT(c.Count(TableId::Kam, 4, [](auto v) { return v.empty(); }), 0);
  const corpus::Table& kam = c.table(TableId::Kam);
  int longest = 0;
  for (int row = 1, run = 0; row <= kam.rows(); ++row) {
    run = row > 1 && kam.Get(row, 5) == kam.Get(row - 1, 5) ? run + 1 : 1;
    longest = std::max(longest, run);
  }
  EXPECT_GT(longest, 13);
  EXPECT_GT(c.table(TableId::Tyu).rows(), 0);
}

}  // namespace
}  // namespace suizo::testing
