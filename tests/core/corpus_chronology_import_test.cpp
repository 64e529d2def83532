#include <gtest/gtest.h>

#include "core/corpus/errors.h"
#include "core/corpus/import.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;
using testing::WriteDat;

// The writings, records, sources and mandalas the events link to, set in
// memory as an earlier step of the import leaves them.
class ChronologyImport : public ::testing::Test {
 protected:
  ChronologyImport() {
    Table& dat = corpus.Dat();
    dat.Set(1, 2, u"10001");
    dat.Set(1, 4, u"1-101");
    dat.Set(1, 7, u"3");
    dat.set_rows(1);
    Table& mok = corpus.Mok();
    mok.Set(1, 3, u"10001");
    mok.Set(1, 4, u"1-101");
    mok.set_rows(1);
    Table& smok = corpus.SMok();
    smok.Set(1, 2, u"7");
    smok.set_rows(1);
    Table& hon = corpus.table(TableId::Hon);
    hon.Set(1, 1, u"26");
    hon.Set(1, 2, u"4");
    hon.set_rows(1);
    options.message = [this](const std::u16string& m) { messages.push_back(m); };
    WriteDat(corpus.FilePath(TableId::Nek, ".dat"),
             {u"西暦,天皇,天皇即位,院政,摂関,将軍,執権,執権就任",
              u"1258,\"後深草\",,\"後嵯峨\",\"摂政:鷹司兼平\",\"宗尊親王\",\"北条長時\",",
              u"1259,\"亀山\",\"11/26\",\"後嵯峨\",\"関白:二条良実\",\"宗尊親王\",\"某\",\"03/01\"",
              u",,,,,,,"});
  }

  void Events(std::initializer_list<std::u16string_view> rows) {
    std::vector<std::u16string_view> lines = {
        u"年基礎No,年表No,年月日,月日2,事項,関連ﾃﾞｰﾀ,ｼｽﾃﾑNo.,史料番号"};
    lines.insert(lines.end(), rows.begin(), rows.end());
    std::u16string text;
    for (auto l : lines) text += std::u16string(l) + u"\r\n";
    testing::WriteBytes(corpus.FilePath(TableId::Nen, ".dat"), text::EncodeSjis(text));
  }

  TempDir dir;
  Corpus corpus{dir.path()};
  ImportOptions options;
  std::vector<std::u16string> messages;
};

TEST_F(ChronologyImport, OfficesAroundAnAccessionAndTheirWrittenForm) {
  Events({u"1,1,\"1258.05.01\",\"05/01\",\"出来事\",,,",
          u"2,2,\"1259.05.01\",\"05/01\",\"即位の前と伝う\",,,",
          u"3,3,\"1259.12.01\",\"12/01\",\"即位の後\",,,", u"4,4,\"★\",,\"年次不詳\",,,"});
  ImportChronology(corpus, options);
  const Table& nen = corpus.Nen();
  EXPECT_EQ(nen.Get(1, 9), u"後@深@草");
  EXPECT_EQ(nen.Get(2, 9), u"後@深@草");  // before the year's accession: the holder before
  EXPECT_EQ(nen.Get(3, 9), u"亀@山");
  EXPECT_EQ(nen.Get(1, 21), u"北@条@長@時");
  EXPECT_EQ(nen.Get(2, 21), u"某");  // after that office's accession; one character, no mark
  EXPECT_EQ(nen.Get(1, 16), u"摂)@鷹@司@兼@平");
  EXPECT_EQ(nen.Get(3, 16), u"関)@二@条@良@実");
  EXPECT_EQ(nen.Get(1, 12), u"後@嵯@峨");
  for (const int office : {9, 12, 16, 18, 21}) EXPECT_EQ(nen.Get(4, office), u"") << office;
  EXPECT_EQ(nen.Get(2, 22), u"1");
  EXPECT_EQ(nen.Get(3, 22), u"0");
  EXPECT_EQ(nen.Get(3, 26), u"0");
  EXPECT_TRUE(messages.empty());
}

TEST_F(ChronologyImport, EventsLinkToWritingsRecordsSourcesAndMandalas) {
  Events({u"1,1,\"1258.01.01\",\"01/01\",\"書を記す\",\"雨夜抄\",10001,",
          u"2,2,\"1258.02.01\",\"02/01\",\"書を記す\",\"番号1-101\",10001,",
          u"3,3,\"1258.03.01\",\"03/01\",\"古記に見ゆ\",\"古記\",,7",
          u"4,4,\"1258.04.01\",\"04/01\",\"本尊を図顕\",,,",
          u"5,5,\"1258.05.01\",\"05/01\",\"補遺\",\"新加-36\",20002,"});
  options.corrections = {{TableId::Nen, u"4", 24, CorrectionKind::Set, u"", u"26", 1}};
  ImportChronology(corpus, options);
  const Table& nen = corpus.Nen();
  EXPECT_EQ(nen.Get(1, 17), u"3");  // the class of the linked row
  EXPECT_EQ(nen.Get(1, 24), u"1");  // the Dat row
  EXPECT_EQ(nen.Get(1, 27), u"1");  // the record found by the row's 番号
  EXPECT_EQ(nen.Get(2, 27), u"1");  // the record found by its key
  EXPECT_EQ(nen.Get(3, 19), u"古記／史料7");
  EXPECT_EQ(nen.Get(3, 24), u"1");  // the SMok row
  EXPECT_EQ(nen.Get(4, 19), u"本尊4");
  EXPECT_EQ(nen.Get(4, 25), u"4");
  EXPECT_EQ(nen.Get(4, 24), u"0");  // the mandala's key gives way to the row links
  EXPECT_EQ(nen.Get(5, 19), u"番号新加-36");
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0], u"20002Dat見つからない ");
  EXPECT_EQ(messages[1], u"20002Mok見つからない");
}

TEST_F(ChronologyImport, AYearWithoutItsRowIsAFaultNamingTheEvent) {
  Events(
      {u"1,1,\"1259.01.01\",\"01/01\",\"後\",,,", u"2,2,\"1258.01.01\",\"01/01\",\"前に戻る\",,,"});
  try {
    ImportChronology(corpus, options);
    FAIL() << "walked back over the years";
  } catch (const CorpusError& e) {
    EXPECT_EQ(e.place().row, 2);
    EXPECT_EQ(e.place().field, 7);
  }
}

}  // namespace
}  // namespace suizo::corpus
