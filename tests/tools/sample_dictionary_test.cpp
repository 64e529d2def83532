// The dictionary of the bundled sample: every case the import and the
// dictionary view treat is present, so that a change to the generator cannot
// drop one unnoticed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "generated_corpus.h"

namespace suizo::testing {
namespace {

using corpus::TableId;
using text::Contains;

constexpr int kKey = 1, kHomonym = 2, kHead = 3, kReading = 6, kText = 7, kLookup = 8, kNote = 9,
              kSource = 10, kClass = 11, kLabel = 12;

const corpus::Table& Dic() {
  return Sample().table(TableId::Dic);
}
std::u16string_view Field(int row, int field) {
  return Dic().Get(row, field);
}

// After the import's normal form, as the merge tests "*([つづ]づき*)*".
bool IsContinuation(std::u16string_view head) {
  return Contains(head, u"(つづき") || Contains(head, u"(づづき");
}
bool IsDropped(std::u16string_view head) {
  return !IsContinuation(head) && Contains(head, u"続き");
}
bool IsKept(int row) {
  return !IsContinuation(Field(row, kHead)) && !IsDropped(Field(row, kHead));
}

bool IsHiragana(std::u16string_view word) {
  for (char16_t c : word) {
    const int code = static_cast<std::uint16_t>(text::SjisCode(c));
    if (code < 0x829F || code > 0x82F1) return false;
  }
  return !word.empty();
}

int CountRows(auto test) {
  int n = 0;
  for (int row = 1; row <= Dic().rows(); ++row) n += test(row) ? 1 : 0;
  return n;
}

bool HasHead(std::u16string_view head) {
  return CountRows([&](int row) { return Field(row, kHead) == head; }) > 0;
}

std::u16string FileText(const char* name, bool sjis) {
  const std::string bytes = corpus::ReadFileBytes(Sample().folder() / name);
  return sjis ? text::DecodeSjis(bytes) : text::FromUtf8(bytes);
}

TEST(SampleDictionary, EntriesHaveReadingsAndHeadNumbersBreakTies) {
  EXPECT_GE(CountRows(IsKept), 300);
  EXPECT_EQ(CountRows([](int row) { return !IsHiragana(Field(row, kReading)); }), 0);
  std::map<std::u16string_view, std::set<std::u16string_view>> numbers;
  for (int row = 1; row <= Dic().rows(); ++row) {
    if (IsKept(row)) numbers[Field(row, kReading)].insert(Field(row, kHomonym));
  }
  int shared = 0;
  for (const auto& [reading, homonyms] : numbers) shared += homonyms.size() > 1 ? 1 : 0;
  EXPECT_GE(shared, 3);
}

TEST(SampleDictionary, ContinuationRowsFollowTheEntryTheyContinue) {
  std::vector<int> runs;  // continuation rows in a row, after each entry
  for (int row = 1; row <= Dic().rows(); ++row) {
    if (!IsContinuation(Field(row, kHead))) continue;
    if (row == 1 || !IsContinuation(Field(row - 1, kHead))) {
      const std::u16string_view entry = Field(row - 1, kHead);
      EXPECT_TRUE(Field(row, kHead).starts_with(entry)) << text::ToUtf8(Field(row, kHead));
      runs.push_back(0);
    }
    ++runs.back();
  }
  EXPECT_NE(std::find(runs.begin(), runs.end(), 1), runs.end());
  EXPECT_NE(std::find(runs.begin(), runs.end(), 3), runs.end());
  EXPECT_GE(CountRows([](int row) { return IsDropped(Field(row, kHead)); }), 1);
}

TEST(SampleDictionary, ClassesComeFromTheSideTableForEveryRow) {
  EXPECT_EQ(
      CountRows([](int row) { return !Field(row, kClass).empty() || !Field(row, kLabel).empty(); }),
      0);
  const std::u16string classTable = FileText("add.csv", true);
  const std::vector<std::u16string_view> lines = text::Split(classTable, u"\r\n");
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines.front(), u"辞基本No,分類");
  EXPECT_EQ(lines.back(), u"");
  std::set<std::u16string_view> keys;
  std::set<int> classes;
  for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
    const auto parts = text::Split(lines[i], u",");
    ASSERT_EQ(parts.size(), 2u);
    keys.insert(parts[0]);
    classes.insert(text::ToInt(parts[1]).value_or(-1));
  }
  EXPECT_EQ(keys.size(), static_cast<std::size_t>(Dic().rows()));
  for (int row = 1; row <= Dic().rows(); ++row) EXPECT_TRUE(keys.count(Field(row, kKey)));
  EXPECT_EQ(classes, (std::set<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(SampleDictionary, LookupKeysAndNotesArePatterns) {
  EXPECT_EQ(CountRows([](int row) { return Field(row, kLookup).empty(); }), 0);
  // A one-kanji head word keeps the key the export gives it.
  EXPECT_GE(CountRows([](int row) {
              return Field(row, kHead).size() == 1 && !IsHiragana(Field(row, kHead)) &&
                     Field(row, kLookup).starts_with(u"[");
            }),
            5);
  EXPECT_GE(CountRows([](int row) {
              const auto at = Field(row, kNote).find(u'[');
              return at != std::u16string_view::npos && at > 0;
            }),
            3);
}

TEST(SampleDictionary, HeadWordsOfEveryKind) {
  // A selection in any reader finds an entry: some head words stand in the
  // letters, the sutra and the sources alike.
  const int shared = CountRows([](int row) {
    const std::u16string_view head = Field(row, kHead);
    return IsKept(row) && head.size() > 1 && !IsHiragana(head) &&
           Sample().CountContaining(TableId::Dat, 8, head) > 0 &&
           Sample().CountContaining(TableId::Hok, 15, head) > 0 &&
           Sample().CountContaining(TableId::SDat, 9, head) > 0;
  });
  EXPECT_GE(shared, 6);
  EXPECT_GE(CountRows([](int row) { return IsKept(row) && IsHiragana(Field(row, kHead)); }), 50);
  EXPECT_GE(CountRows([](int row) { return Field(row, kHead).size() == 1; }), 10);
  EXPECT_GE(CountRows([](int row) { return Field(row, kHead).ends_with(u"･"); }), 2);
  EXPECT_GE(CountRows([](int row) { return !Field(row, kSource).empty(); }), 3);
}

// Every word the ranked lookup rejects or keeps by name has its entry.
TEST(SampleDictionary, HeadWordsCoverTheWordRulesOfTheLookup) {
  const std::u16string_view heads =
      u"かひ もや あら ばし ひら をこ がう しゐ をとど はわ きう わせ はぬ をと ひつ おひて はし "
      u"ふな "
      u"はぢ うて ほた かい ひる いと いを ゑい さえ たて ゑん いよ はと むこ ばく すす ほれ とき "
      u"あか "
      u"つと あう かう とわり しめ しう すべ さる をや とが 藍 桶 雁 雉 君 ぐし 袈裟 現 功 佐渡 "
      u"さば "
      u"しほ すえ 酸 側 鷹 筒 露 でう との 鴟 どの 針 稗 富士 ふみ へい べち まろ むぎ むま めこ "
      u"もの "
      u"やみ ゆめ よし りう 障へ すみ せき そつ 親 母 急 恥";
  const std::u16string_view readings =
      u"ひけん いけん なんと ごとく しめん むかん げしき たりき となり やしき しる しけん かんが "
      u"のうえ";
  for (std::u16string_view head : text::Split(heads, u" "))
    EXPECT_TRUE(HasHead(head)) << text::ToUtf8(head);
  for (std::u16string_view reading : text::Split(readings, u" ")) {
    EXPECT_GE(CountRows([&](int row) {
                return Field(row, kReading) == reading && !IsHiragana(Field(row, kHead));
              }),
              1)
        << text::ToUtf8(reading);
  }
  EXPECT_EQ(CountRows([](int row) {
              return Field(row, kHead) == u"\uE256那梨" && Field(row, kReading) == u"となり";
            }),
            1);
  EXPECT_EQ(CountRows([](int row) {
              return Field(row, kHead) == u"阿\uE298" && Field(row, kReading) == u"あう";
            }),
            1);
}

TEST(SampleDictionary, ExplanationsCarryMarkupAndRelatedTerms) {
  const auto having = [](std::u16string_view part) {
    return Sample().CountContaining(TableId::Dic, kText, part);
  };
  EXPECT_GE(having(u"<BR>"), 5);
  EXPECT_GE(having(u"／"), 3);
  EXPECT_GE(having(u"⇒《次参考》"), 1);
  EXPECT_GE(having(u"≪翠蔵用語≫としての解説は、次頁をご覧ください。"), 1);
  EXPECT_GE(having(u"(上部ﾎﾞﾀﾝ列の「資料」をｸﾘｯｸする)"), 1);
  EXPECT_GE(CountRows([](int row) { return Field(row, kText).starts_with(u"⇒"); }), 1);
  // Related terms as the view splits them: from "⇒" to the first break.
  std::set<std::size_t> counts;
  for (int row = 1; row <= Dic().rows(); ++row) {
    std::u16string text = text::ReplaceAll(Field(row, kText), u"／", u"<BR>");
    const auto at = text.find(u"⇒");
    if (at == std::u16string::npos || at == 0) continue;
    std::u16string_view related = std::u16string_view(text).substr(at + 1);
    related = related.substr(0, related.find(u"<BR>"));
    if (related.ends_with(u"。")) related.remove_suffix(1);
    counts.insert(text::Split(related, u"。").size());
  }
  EXPECT_TRUE(counts.count(1) && counts.count(2) && counts.count(8));
}

// The numbers of the explanations, read as the view reads them.
struct Numbers {
  std::vector<std::u16string> sources, fives, sevens;
  int sixes = 0;
  explicit Numbers(std::u16string_view text) {
    const auto digits = [&](std::size_t at, std::size_t n) {
      if (at + n > text.size()) return false;
      for (std::size_t i = at; i < at + n; ++i) {
        if (text[i] < u'0' || text[i] > u'9') return false;
      }
      return true;
    };
    for (std::size_t i = 0; i < text.size();) {
      if (text.substr(i).starts_with(u"史料番号") && digits(i + 4, 4)) {
        sources.emplace_back(text.substr(i + 4, 4));
        i += 8;
      } else if (digits(i, 5) && i + 5 < text.size() && text[i + 5] == u'.' && digits(i + 6, 1)) {
        sevens.emplace_back(text.substr(i, 7));
        i += 7;
      } else if (digits(i, 6)) {
        ++sixes;
        i += 6;
      } else if (digits(i, 5)) {
        fives.emplace_back(text.substr(i, 5));
        i += 5;
      } else {
        ++i;
      }
    }
  }
};

bool InTable(TableId id, int field, std::u16string_view value) {
  const double v = text::Val(value);
  return Sample().Count(id, field,
                        [&](std::u16string_view s) { return !s.empty() && text::Val(s) == v; }) > 0;
}

TEST(SampleDictionary, ReferencesPointIntoTheOtherTables) {
  int rows = 0, missing = 0, records = 0, sourceRows = 0, sevens = 0, sixes = 0, sources = 0;
  for (int row = 1; row <= Dic().rows(); ++row) {
    const Numbers n(Field(row, kText));
    const bool record = Contains(Field(row, kText), u"資料の解題をご覧");
    for (const auto& s : n.sources) sources += InTable(TableId::SMok, 2, s) ? 1 : 0;
    for (const auto& v : n.sevens) sevens += InTable(TableId::Dat, 2, v) ? 1 : 0;
    sixes += n.sixes;
    for (const auto& v : n.fives) {
      if (text::Val(v) >= 50000) {
        sourceRows += InTable(TableId::SDat, 2, v) ? 1 : 0;
      } else if (record) {
        records += InTable(TableId::Mok, 3, v) ? 1 : 0;
      } else if (InTable(TableId::Dat, 2, v)) {
        ++rows;
      } else {
        ++missing;
      }
    }
    if (!Field(row, kSource).empty()) {
      EXPECT_TRUE(InTable(TableId::SMok, 2, Field(row, kSource)));
    }
  }
  EXPECT_GE(rows, 5);
  EXPECT_GE(missing, 1);
  EXPECT_GE(records, 3);
  EXPECT_GE(sourceRows, 3);
  EXPECT_GE(sevens, 3);
  EXPECT_GE(sixes, 3);
  EXPECT_GE(sources, 3);

  const int hokRows = Sample().table(TableId::Hok).rows();
  const auto sutra = [&](auto test) {
    int n = 0;
    for (int row = 1; row <= Dic().rows(); ++row) {
      const std::u16string_view t = Field(row, kText);
      for (std::size_t at = 0; (at = t.find(u'h', at)) != t.npos; ++at) {
        if (at == 0 || (t[at - 1] != u'[' && t[at - 1] != u'〔')) continue;
        const std::size_t end = t.find_first_of(u"]〕", at);
        if (end != t.npos)
          n += test(static_cast<int>(text::Val(t.substr(at + 1, end - at - 1)))) ? 1 : 0;
      }
    }
    return n;
  };
  EXPECT_GE(sutra([&](int h) { return h >= 1 && h <= hokRows; }), 5);
  EXPECT_GE(sutra([&](int h) { return h > hokRows; }), 1);
}

// Each correction of the dictionary finds its row and its text in the export.
TEST(SampleDictionary, CorrectionsChangeWhatTheExportHolds) {
  const int kept = CountRows(IsKept);
  std::set<std::u16string> kinds;
  int entries = 0;
  const std::u16string list = FileText("corrections.tsv", false);
  for (std::u16string_view line : text::Split(list, u"\n")) {
    const auto f = text::Split(line, u"\t");
    if (line.starts_with(u"#") || f.size() != 6 || f[0] != u"Dic") continue;
    ++entries;
    kinds.emplace(f[3]);
    const int field = text::ToInt(f[2]).value_or(0);
    std::u16string old(f[4]);
    if (f[3] == u"link" && !old.empty() && old[0] >= u'1' && old[0] <= u'9')
      old = u"〔" + old + u"〕";
    int found = 0;
    for (int row = 1; row <= kept; ++row) {
      if (!f[1].empty() && Field(row, kKey) != f[1]) continue;
      found += f[3] == u"set" || Contains(Field(row, field), old) ? 1 : 0;
    }
    EXPECT_GE(found, 1) << text::ToUtf8(line);
  }
  EXPECT_GE(entries, 5);
  EXPECT_LE(entries, 10);
  EXPECT_EQ(kinds, (std::set<std::u16string>{u"set", u"replace", u"link", u"pass"}));
}

}  // namespace
}  // namespace suizo::testing
