#include "core/corpus/dax_file.h"

#include <gtest/gtest.h>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::DaxBytes;
using testing::ReadBytes;
using testing::TempDir;
using testing::WriteBytes;

ErrorPlace FaultOf(const std::filesystem::path& path, TableId id) {
  return testing::FaultOf(ReadDax, path, id);
}

TEST(Dax, EveryFixtureFileWritesBackByteForByte) {
  TempDir out;
  for (const TableSchema& schema : Schemas()) {
    const auto name = std::string(schema.stem) + ".dax";
    Table table(schema);
    ReadDax(testing::FixtureStore() / name, table);
    WriteDax(out / name, table);
    EXPECT_EQ(ReadBytes(out / name), ReadBytes(testing::FixtureStore() / name)) << name;
  }
}

TEST(Dax, RowsCountFromZeroForDatAndFromOneOtherwise) {
  TempDir dir;
  WriteBytes(dir / "dat.dax", DaxBytes({u"2", u"5", u"", u"1", u"14601", u"2", u"14602"}));
  Table dat(SchemaOf(TableId::Dat));
  ReadDax(dir / "dat.dax", dat);
  EXPECT_EQ(dat.cols(), 2);
  EXPECT_EQ(dat.rows(), 2);
  EXPECT_EQ(dat.Get(0, 1), u"5");
  EXPECT_EQ(dat.Get(0, 0), u"0");  // field 0 comes from counting, not from the file
  EXPECT_EQ(dat.Get(2, 0), u"2");
  EXPECT_EQ(dat.Get(2, 2), u"14602");

  WriteBytes(dir / "hok.dax", DaxBytes({u"1", u"1", u"2"}));
  Table hok(SchemaOf(TableId::Hok));
  ReadDax(dir / "hok.dax", hok);
  EXPECT_EQ(hok.rows(), 2);
  EXPECT_EQ(hok.Get(1, 1), u"1");
  EXPECT_EQ(hok.Get(1, 0), u"");  // Hok is not numbered at load
}

TEST(Dax, KeepsEveryCharacterOfAFieldButItsLineEnd) {
  TempDir dir;
  const std::u16string odd = u" 法\uE000<BR>\r華 ";  // a lone CR is no line end
  const std::string bytes = DaxBytes({u"3", odd, u"", u"last"});
  WriteBytes(dir / "t.dax", bytes);
  Table tyu(SchemaOf(TableId::Tyu));
  ReadDax(dir / "t.dax", tyu);
  EXPECT_EQ(tyu.Get(1, 1), odd);
  EXPECT_EQ(tyu.Get(1, 2), u"");
  EXPECT_EQ(EncodeDax(tyu), bytes);
}

// Stores whose last line is cut, or that are in another encoding: each is
// refused with what is wrong and where.
TEST(Dax, AStoreCutShortOrInAnotherEncodingIsRefused) {
  struct Case {
    const char* what;
    std::string bytes;
    long line;
    int field;
    const char* said;
  };
  const auto kam = [](std::u16string_view text) { return testing::Utf16le(text); };
  const Case cases[] = {
      {"a lone CR after the last field", kam(u"2\r\na\r\nb\r"), 3, 2,
       "the last line ends in a lone CR; a store's lines end in CR LF"},
      {"no line end after the last field", kam(u"2\r\na\r\nb"), 3, 2,
       "the last line has no line end"},
      {"a lone LF after the last field", kam(u"2\r\na\r\nb\n"), 3, 2,
       "the last line ends in a lone LF"},
      {"a field count without its line end", kam(u"2"), 1, -1, "the last line has no line end"},
      {"a field count ending in a lone CR", kam(u"2\r"), 1, -1, "the last line ends in a lone CR"},
      {"a row cut inside a line", kam(u"3\r\na\r\nb\r\nc\r\nd\r\ne"), 6, 2,
       "the file ends inside the row: 2 of its 3 fields are missing"},
      {"a UTF-8 mark",
       "\xEF\xBB\xBF"
       "2\r\na\r\nb\r\n",
       1, -1,
       "the store is UTF-8 (it begins with EF BB BF); a store is UTF-16LE beginning with FF FE"},
      {"a big-endian mark", "\xFE\xFF" + kam(u"2\r\n").substr(2), 1, -1, "UTF-16 big-endian"},
      {"an odd number of bytes", kam(u"2\r\na\r\nb\r\n") + "x", 0, -1,
       "the file ends inside a UTF-16 character: its 21 bytes are an odd number"},
  };
  TempDir dir;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WriteBytes(dir / "t.dax", c.bytes);
    Table table(SchemaOf(TableId::Kam));
    try {
      ReadDax(dir / "t.dax", table);
      ADD_FAILURE() << "read";
    } catch (const CorpusError& e) {
      EXPECT_NE(std::string(e.what()).find(c.said), std::string::npos) << e.what();
      EXPECT_EQ(e.place().line, c.line);
      EXPECT_EQ(e.place().field, c.field);
    }
  }
}

TEST(Dax, AFieldCountLineAloneIsAnEmptyTable) {
  TempDir dir;
  WriteBytes(dir / "t.dax", DaxBytes({u"36"}));
  Table hok(SchemaOf(TableId::Hok));
  ReadDax(dir / "t.dax", hok);
  EXPECT_EQ(hok.cols(), 36);
  EXPECT_EQ(hok.rows(), 0);
}

TEST(Dax, AFileCutInsideARowNamesTheRowAndTheMissingField) {
  TempDir dir;
  WriteBytes(dir / "m.dax", DaxBytes({u"3", u"a", u"b", u"c", u"d"}));
  const ErrorPlace place = FaultOf(dir / "m.dax", TableId::Mok);
  EXPECT_EQ(place.row, 2);
  EXPECT_EQ(place.field, 2);
  EXPECT_EQ(place.fieldName, "ｼｽﾃﾑ番号");
  EXPECT_EQ(place.line, 6);
}

TEST(Dax, MoreRowsThanTheTableHoldsIsAFault) {
  TempDir dir;
  std::u16string text = u"1\r\n";
  for (int row = 1; row <= 81; ++row) text += u"序分\r\n";
  WriteBytes(dir / "s.dax", testing::Utf16le(text));
  const ErrorPlace place = FaultOf(dir / "s.dax", TableId::Sok);
  EXPECT_EQ(place.row, 81);
  EXPECT_EQ(place.line, 82);
}

TEST(Dax, AFileThatIsNoStoreIsAFault) {
  TempDir dir;
  WriteBytes(dir / "nobom.dax", testing::Utf16le(u"2\r\na\r\nb\r\n", false));
  EXPECT_EQ(FaultOf(dir / "nobom.dax", TableId::Kam).line, 1);
  WriteBytes(dir / "odd.dax", DaxBytes({u"2", u"a", u"b"}) + "x");
  FaultOf(dir / "odd.dax", TableId::Kam);
  WriteBytes(dir / "empty.dax", "");
  FaultOf(dir / "empty.dax", TableId::Kam);
  WriteBytes(dir / "bomonly.dax", "\xFF\xFE");
  FaultOf(dir / "bomonly.dax", TableId::Kam);
  WriteBytes(dir / "count.dax", DaxBytes({u"10", u"a"}));  // Kam has 9 fields
  EXPECT_EQ(FaultOf(dir / "count.dax", TableId::Kam).line, 1);
  WriteBytes(dir / "word.dax", DaxBytes({u"九", u"a"}));
  FaultOf(dir / "word.dax", TableId::Kam);
  FaultOf(dir / "missing.dax", TableId::Kam);
}

TEST(Dax, AFailedReadLeavesTheTableEmpty) {
  TempDir dir;
  WriteBytes(dir / "cut.dax", DaxBytes({u"2", u"a", u"b", u"c"}));
  Table kam(SchemaOf(TableId::Kam));
  kam.Set(1, 1, u"old");
  kam.set_rows(1);
  EXPECT_THROW(ReadDax(dir / "cut.dax", kam), CorpusError);
  EXPECT_EQ(kam.rows(), 0);
  EXPECT_EQ(kam.Get(1, 1), u"");
}

TEST(Dax, WritingReplacesTheFileWholeAndLeavesNoTemporary) {
  TempDir dir;
  Table hon(SchemaOf(TableId::Hon));
  hon.Set(1, 3, u"試作");
  hon.set_cols(31);
  hon.set_rows(1);
  WriteBytes(dir / "本尊資料.dax", "old");
  WriteDax(dir / "本尊資料.dax", hon);
  Table back(SchemaOf(TableId::Hon));
  ReadDax(dir / "本尊資料.dax", back);
  EXPECT_EQ(back.Get(1, 3), u"試作");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(Dax, ATableWithoutAFieldCountIsNotWritten) {
  TempDir dir;
  Table hon(SchemaOf(TableId::Hon));
  EXPECT_THROW(WriteDax(dir / "h.dax", hon), CorpusError);
  EXPECT_FALSE(std::filesystem::exists(dir / "h.dax"));
}

}  // namespace
}  // namespace suizo::corpus
