#include "core/corpus/corrections.h"

#include <gtest/gtest.h>

#include "core/corpus/errors.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

class Corrections : public ::testing::Test {
 protected:
  Corrections() {
    Table& dat = corpus.Dat();
    for (int row = 1; row <= 3; ++row) {
      dat.Set(row, 2, text::IntText(10000 + row));
      dat.Set(row, 8, u"本文" + text::IntText(row));
      dat.Set(row, 9, u"本文" + text::IntText(row));
    }
    dat.set_rows(3);
    Table& mok = corpus.Mok();
    for (int row = 1; row <= 4; ++row)
      mok.Set(row, 14, row == 1 || row == 2 ? u"前半。次頁" : u"後半" + text::IntText(row));
    mok.set_rows(4);
  }
  void Apply(TableId table, std::vector<Correction> list) {
    ApplyCorrections(corpus, table, list,
                     [this](const std::u16string& m) { messages.push_back(m); });
  }
  TempDir dir;
  Corpus corpus{dir.path()};
  std::vector<std::u16string> messages;
};

TEST_F(Corrections, KeyedEntriesSetReplaceAndMakeHeads) {
  Apply(TableId::Dat, {{TableId::Dat, u"10002", 20, CorrectionKind::Set, u"", u"系年未詳"},
                       {TableId::Dat, u"10002", 8, CorrectionKind::Replace, u"本文", u"正文"},
                       {TableId::Dat, u"10003", 8, CorrectionKind::Replace, u"無い語", u"x"},
                       {TableId::Dat, u"10001", 9, CorrectionKind::Head, u"", u"◆別題　下"},
                       {TableId::Dat, u"10003", 9, CorrectionKind::Head, u"", u""}});
  const Table& dat = corpus.Dat();
  EXPECT_EQ(dat.Get(2, 20), u"系年未詳");
  EXPECT_EQ(dat.Get(2, 8), u"正文2");
  EXPECT_EQ(dat.Get(3, 8), u"◆本文3");  // a replacement that finds nothing changed nothing
  EXPECT_EQ(dat.Get(3, 9), u"◆本文3");
  EXPECT_EQ(dat.Get(1, 9), u"◆別題　下");
}

TEST_F(Corrections, AnAbsentKeyWritesToTheRowAfterTheLastUnseen) {
  Apply(TableId::Dat, {{TableId::Dat, u"99999", 20, CorrectionKind::Set, u"", u"迷子"}});
  EXPECT_EQ(corpus.Dat().Get(4, 20), u"迷子");
  EXPECT_EQ(corpus.Dat().rows(), 3);
  EXPECT_TRUE(messages.empty());
}

TEST_F(Corrections, PassesOverEveryRowAndAppendsFollowingRows) {
  Apply(TableId::Mok, {{TableId::Mok, u"", 14, CorrectionKind::Append, u"次頁", u""},
                       {TableId::Mok, u"", 41, CorrectionKind::Set, u"", u"0"},
                       {TableId::Mok, u"", 14, CorrectionKind::Pass, u"後半", u"後段"}});
  const Table& mok = corpus.Mok();
  const std::u16string rule(kMergeRule);
  // Row 2 also says "次頁", so row 3 follows it into row 1 as well.
  EXPECT_EQ(mok.Get(1, 14), u"前半。次頁" + rule + u"前半。次頁" + rule + u"後段3");
  EXPECT_EQ(mok.Get(2, 14), u"前半。次頁" + rule + u"後段3");
  EXPECT_EQ(mok.Get(4, 41), u"0");
}

TEST_F(Corrections, TheDictionaryAndTheChronologySayWhatTheyCannotFind) {
  Table& dic = corpus.Dic();
  dic.Set(1, 1, u"5");
  dic.Set(1, 7, u"〔10234〕を見よ。10234年");
  dic.set_rows(1);
  corpus.DisMaxY = 1;
  Apply(TableId::Dic, {{TableId::Dic, u"5", 7, CorrectionKind::Link, u"10234", u"10235"},
                       {TableId::Dic, u"6", 7, CorrectionKind::Set, u"", u"x"}});
  EXPECT_EQ(dic.Get(1, 7), u"〔10235〕を見よ。10234年");  // only the bracketed reference
  Apply(TableId::Nen, {{TableId::Nen, u"77", 14, CorrectionKind::Set, u"", u"x"}});
  EXPECT_EQ(messages, (std::vector<std::u16string>{u"not found", u"77年表№見つからない"}));
}

TEST(CorrectionsFile, ReadsEntriesAndNamesTheLineOfABadOne) {
  TempDir dir;
  testing::WriteBytes(dir / "c.tsv",
                      "# "
                      "comment\n\nDat\t10001\t9\thead\t\t\xE2\x97\x86\xE4\xB8\x8B\r\nMok\t\t13\texe"
                      "mpt\t\t\xE9\x98\xBF\n");
  const auto list = ReadCorrections(dir / "c.tsv");
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[0].kind, CorrectionKind::Head);
  EXPECT_EQ(list[0].newText, u"◆下");
  EXPECT_EQ(list[0].line, 3);
  EXPECT_EQ(RecipientNamesOf(list).exempt, std::vector<std::u16string>{u"阿"});
  for (const std::string bad :
       {"Xyz\t1\t2\tset\t\tx\n", "Dat\t1\t99\tset\t\tx\n", "Dat\t1\t2\tguess\t\tx\n",
        "Dat\t1\t2\tset\n", "Dat\t\t9\treplace\ta\tb\n", "Mok\t1\t2\tlink\ta\tb\n"}) {
    testing::WriteBytes(dir / "bad.tsv", "# first\n" + bad);
    try {
      ReadCorrections(dir / "bad.tsv");
      ADD_FAILURE() << "accepted " << bad;
    } catch (const CorpusError& e) {
      EXPECT_EQ(e.place().line, 2) << bad;
    }
  }
}

}  // namespace
}  // namespace suizo::corpus
