#include <gtest/gtest.h>

#include <map>

#include "core/corpus/dax_file.h"
#include "core/corpus/import.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;
using testing::WriteDat;

std::filesystem::path SampleCorpus() {
  return std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample";
}

std::map<std::string, std::string> StoreBytes(const std::filesystem::path& folder) {
  std::map<std::string, std::string> bytes;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".dax")
      bytes[entry.path().filename().string()] = testing::ReadBytes(entry.path());
  }
  return bytes;
}

TEST(Import, ConvertingTheSampleTwiceWritesTheSameStore) {
  TempDir first("a"), second("b");
  for (const TempDir* dir : {&first, &second}) {
    std::filesystem::copy(SampleCorpus(), dir->path(), std::filesystem::copy_options::recursive);
    Corpus corpus(dir->path());
    ReadDataFirst(corpus, ImportOptionsFor(dir->path()));
  }
  const auto a = StoreBytes(first.path());
  EXPECT_EQ(a.size(), 12u);
  EXPECT_TRUE(a == StoreBytes(second.path()));
}

TEST(Import, LoadingTheStoreGivesTheTablesTheImportLeftInMemory) {
  TempDir dir;
  std::filesystem::copy(SampleCorpus(), dir.path(), std::filesystem::copy_options::recursive);
  Corpus imported(dir.path());
  ReadDataFirst(imported, ImportOptionsFor(dir.path()));
  Corpus loaded(dir.path());
  for (int group = 0; group < kLoadGroups; ++group) loaded.ReadData(group);
  for (const TableSchema& schema : Schemas()) {
    const Table& in = imported.table(schema.id);
    Table out(schema);
    ReadDax(loaded.FilePath(schema.id, ".dax"), out);  // as stored, before any group's own steps
    ASSERT_EQ(out.rows(), in.rows()) << schema.name;
    ASSERT_EQ(out.cols(), in.cols()) << schema.name;
    for (int row = schema.firstRow; row <= in.rows(); ++row) {
      for (int field = 1; field <= in.cols(); ++field) {
        ASSERT_EQ(out.Get(row, field), in.Get(row, field))
            << schema.name << " row " << row << " field " << field;
      }
    }
  }
  EXPECT_EQ(loaded.DisMaxY, imported.DisMaxY);
  EXPECT_EQ(loaded.DicOrder, imported.DicOrder);
  EXPECT_EQ(loaded.DicYomi, imported.DicYomi);
}

// A corpus folder of hand-made exports for the steps under test.
class SmallImport : public ::testing::Test {
 protected:
  void Dat(std::initializer_list<std::u16string_view> lines) {
    testing::WriteExport(corpus.FilePath(TableId::Dat, ".dat"), TableId::Dat, lines);
  }
  void Mok(std::initializer_list<std::u16string_view> lines) {
    testing::WriteExport(corpus.FilePath(TableId::Mok, ".dat"), TableId::Mok, lines);
  }
  TempDir dir;
  Corpus corpus{dir.path()};
  ImportOptions options;
};

TEST_F(SmallImport, OrdersKeepTiesInRowOrderAndLeaveOutRowsWithoutAPlaceOrText) {
  Dat({u"ｼｽﾃﾑNo.,番号,ｼｽﾃﾑ版翠典,ｼｽﾃﾑ版翠典2,定頁行", u"10001,\"1-101\",\"甲\",\"◆甲\",12.05",
       u"10002,\"1-101\",\"乙\",,3.01", u"10003,\"1-101\",\"丙\",\"  \",12.05",
       u"10004,\"付録-1\",,,1.01", u"10005,\"1-102\",\"丁\",,",
       u"10006,,\"以下は収録しておりません\",,"});
  Mok({u"ｼｽﾃﾑNo.,対告", u"10001,\"妙心尼\""});
  ImportWritings(corpus, options);
  const Table& dat = corpus.Dat();
  // 定本: row 2 first, then the tie at 12.05 in row order; row 4 has no text, row 5 no page.
  EXPECT_EQ(dat.Get(0, 5), u"3");
  EXPECT_EQ(dat.Get(1, 5), u"2");
  EXPECT_EQ(dat.Get(2, 5), u"1");
  EXPECT_EQ(dat.Get(3, 5), u"3");
  // The system order takes every row with text; the end notice has lost its text.
  EXPECT_EQ(dat.Get(0, 1), u"4");
  EXPECT_EQ(dat.Get(6, 8), u"");
  EXPECT_EQ(dat.Get(4, 7), u"6");   // 付録 forces the class
  EXPECT_EQ(dat.Get(3, 9), u"丙");  // a blank second form shows the first
  EXPECT_EQ(dat.Get(2, 9), u"乙");
  EXPECT_EQ(corpus.Mok().Get(1, 13), u"妙心尼/女人女性");
  EXPECT_TRUE(std::filesystem::exists(corpus.FilePath(TableId::Dat, ".dax")));
}

TEST(RecipientClassing, MarksWomenAndCouples) {
  const RecipientNames names{{u"阿仏房"}, {u"南条殿御夫婦"}};
  EXPECT_EQ(ClassRecipient(u"松野殿", names), u"松野殿");
  EXPECT_EQ(ClassRecipient(u"光明女", names), u"光明女/女人女性");
  EXPECT_EQ(ClassRecipient(u"大田殿.", names), u"大田殿/女人女性");  // the mark once, not twice
  EXPECT_EQ(ClassRecipient(u"某殿夫妻", names), u"某殿夫妻☆");
  EXPECT_EQ(ClassRecipient(u"富木殿並びに尼", names), u"富木殿並びに尼/女人女性☆");
  EXPECT_EQ(ClassRecipient(u"阿仏房及び千日尼", names), u"阿仏房及び千日尼/女人女性");
  EXPECT_EQ(ClassRecipient(u"妙法女兄弟", names), u"妙法女兄弟/女人女性☆");
  EXPECT_EQ(ClassRecipient(u"南条殿御夫婦", names), u"南条殿御夫婦☆");
  EXPECT_EQ(ClassRecipient(u"阿仏房及び千日尼", {}), u"阿仏房及び千日尼/女人女性☆");
}

TEST_F(SmallImport, OutlinesDropRowsWithoutAHeadingAndTheSutraGetsItsFascicles) {
  std::u16string hok = u"法華No.,経名\r\n";
  for (int row = 1; row <= 600; ++row) {
    hok += text::IntText(row) + (row < 212 ? u",\"無量義経\"" : u",\"妙法蓮華経\"") + u"\r\n";
  }
  testing::WriteBytes(corpus.FilePath(TableId::Hok, ".dat"),
                      text::EncodeSjis(testing::WithRequiredColumns(TableId::Hok, hok)));
  WriteDat(corpus.FilePath(TableId::Sok, ".dat"),
           {u"科文,法華No.", u"\"序分\",1", u",2", u"\"正宗分\",3", u",4"});
  WriteDat(corpus.FilePath(TableId::Kam, ".dat"), {u"科文,法華No.", u",1", u"\"通序\",2"});
  testing::WriteExport(corpus.FilePath(TableId::Hon, ".dat"), TableId::Hon, {u"本尊No", u"1"});
  WriteDat(corpus.FilePath(TableId::Tyu, ".dat"), {u"注経No.", u"1"});
  ImportSutra(corpus, options);
  const Table& sok = corpus.table(TableId::Sok);
  EXPECT_EQ(sok.rows(), 2);  // the last row, without a heading, is not counted
  EXPECT_EQ(sok.Get(2, 4), u"正宗分");
  EXPECT_EQ(sok.Get(2, 5), u"3");
  EXPECT_EQ(corpus.table(TableId::Kam).rows(), 1);
  EXPECT_EQ(corpus.table(TableId::Kam).Get(1, 4), u"通序");
  const Table& h = corpus.Hok();
  EXPECT_EQ(h.Get(211, 31), u"");
  EXPECT_EQ(h.Get(212, 31), u"巻第一");
  EXPECT_EQ(h.Get(576, 31), u"巻第一");
  EXPECT_EQ(h.Get(577, 31), u"巻第二");
}

TEST_F(SmallImport, DictionaryContinuationsMergeBackAndTheReadingOrderIgnoresKanaType) {
  WriteDat(
      corpus.FilePath(TableId::Dic, ".dat"),
      {u"辞基本No,見出No,見出項目,見出よみ,語義解説,印", u"1,1,\"法華\",\"ほっけ\",\"経の名\",",
       u"2,1,\"法華（つづき）\",\"ほっけ\",\"続く一\",",
       u"3,1,\"法華（つづき２）\",\"ほっけ\",\"続く二\",",
       u"4,1,\"法華（つづき３）\",\"ほっけ\",\"続く三\",",
       u"5,1,\"続き物\",\"つづきもの\",\"失はれる\",", u"6,2,\"アイ\",\"アイ\",\"片仮名\",",
       u"7,1,\"あい\",\"あい\",\"平仮名\",", u"8,1,\"庵\",\"いお\",\"草の屋\",\"[庵菴]\""});
  testing::WriteBytes(dir / "add.csv", text::EncodeSjis(u"辞基本No,分類\r\n1,4\r\n7,1\r\n"));
  options.classTable = dir / "add.csv";
  ImportDictionary(corpus, options);
  const Table& dic = corpus.Dic();
  const auto rule = std::u16string(kMergeRule);
  EXPECT_EQ(dic.Get(1, 7), u"経の名" + rule + u"続く一" + rule + u"続く二");
  EXPECT_EQ(dic.Get(2, 7), u"続く一" + rule + u"続く三");  // the third goes two rows back
  EXPECT_EQ(corpus.DisMaxY, 4);
  EXPECT_EQ(corpus.DicOrder, (std::vector<int>{0, 1, 6, 7, 8}));
  // あい and アイ read alike; 見出No breaks the tie.
  EXPECT_EQ(corpus.DicYomi, (std::vector<int>{0, 3, 2, 4, 1}));
  EXPECT_EQ(dic.Get(1, 3), u"4");  // the count takes the first head word's place
  EXPECT_EQ(dic.Get(2, 4), u"6");
  EXPECT_EQ(dic.Get(1, 11), u"4");
  EXPECT_EQ(dic.Get(1, 12), u"法華");
  EXPECT_EQ(dic.Get(7, 12), u"翠典");
}

TEST_F(SmallImport, DictionaryLookupKeysFollowTheHeadWord) {
  testing::WriteExport(
      corpus.FilePath(TableId::Dic, ".dat"), TableId::Dic,
      {u"辞基本No,見出項目,見出よみ,印,事類", u"1,\"庵\",\"いお\",\"[庵菴]\",\"翠典\"",
       u"2,\"かう\",\"かう\",\"x\",\"翠典\"", u"3,\"法華\",\"ほっけ\",\"x\",\"翠典\"",
       u"4,\"学\",\"がく\",\"source\",\"翠典\""});
  testing::WriteBytes(dir / "add.csv", text::EncodeSjis(u"辞基本No,分類\r\n"));
  options.classTable = dir / "add.csv";
  ImportDictionary(corpus, options);
  const Table& dic = corpus.Dic();
  EXPECT_EQ(dic.Get(1, 8), u"[庵菴]");  // one kanji keeps the key its source gave
  EXPECT_EQ(dic.Get(4, 8), u"source");
  EXPECT_EQ(dic.Get(2, 8), u"か[うふ]");                            // kana only: rewritten whole
  EXPECT_EQ(dic.Get(3, 8), u"法" + text::ItaijiPattern(u"華", 1));  // the first stays literal
}

}  // namespace
}  // namespace suizo::corpus
