#include "core/corpus/dat_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "core/corpus/errors.h"
#include "core/corpus/export_check.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;
using testing::WriteDat;
using testing::WriteExport;

ErrorPlace FaultOf(const std::filesystem::path& path, TableId id) {
  return testing::FaultOf(ReadDatTable, path, id);
}

TEST(Dat, ColumnsGoToTheirFieldsByNameInAnyOrder) {
  TempDir dir;
  WriteExport(dir / "m.dat", TableId::Mok,
              {u"\"書名\",番号,\"作業用\",ｼｽﾃﾑNo.", u"\"春雨書\",\"1\",\"捨てる\",\"14601\"",
               u"\"竹林抄\",\"新加-3\",\"捨てる\",\"14605\""});
  Table mok(SchemaOf(TableId::Mok));
  ReadDatTable(dir / "m.dat", mok);
  EXPECT_EQ(mok.rows(), 2);
  EXPECT_EQ(mok.cols(), 52);
  EXPECT_EQ(mok.Get(2, 10), u"竹林抄");
  EXPECT_EQ(mok.Get(2, 4), u"新加-3");
  EXPECT_EQ(mok.Get(1, 3), u"14601");
  EXPECT_EQ(mok.Get(1, 0), u"1");  // numbered at import
  EXPECT_EQ(mok.Get(2, 0), u"2");
}

TEST(Dat, TheLastOfEqualFieldNamesWins) {
  TempDir dir;
  WriteExport(dir / "n.dat", TableId::Nen, {u"尊基礎No,事項", u"\"12\",\"試みの事\""});
  Table nen(SchemaOf(TableId::Nen));
  ReadDatTable(dir / "n.dat", nen);
  EXPECT_EQ(nen.Get(1, 27), u"12");
  EXPECT_EQ(nen.Get(1, 24), u"");
  EXPECT_EQ(nen.Get(1, 26), u"");
}

TEST(Dat, NeitherFieldZeroNorAnUnknownColumnIsFilled) {
  TempDir dir;
  WriteExport(dir / "d.dat", TableId::Dat, {u"通番,ｼｽﾃﾑNo.", u"\"999\",\"14601\""});
  Table dat(SchemaOf(TableId::Dat));
  ReadDatTable(dir / "d.dat", dat);
  EXPECT_EQ(dat.Get(1, 0), u"1");
  EXPECT_EQ(dat.Get(1, 2), u"14601");
}

TEST(Dat, QuotedTextMayHoldCommasAndUnquotedNumbersLoseTheirZeros) {
  TempDir dir;
  WriteDat(dir / "k.dat", {u"科文,蔵経頁行,開結頁行,法華No.,品名",
                           u"\"序分, 通序\",0012.50,\"0012.50\", 7 ,序品第一"});
  Table kam(SchemaOf(TableId::Kam));
  ReadDatTable(dir / "k.dat", kam);
  EXPECT_EQ(kam.Get(1, 4), u"序分, 通序");
  EXPECT_EQ(kam.Get(1, 7), u"12.5");
  EXPECT_EQ(kam.Get(1, 8), u"0012.50");
  EXPECT_EQ(kam.Get(1, 5), u"7");
  EXPECT_EQ(kam.Get(1, 2), u"序品第一");  // unquoted text stays text
}

TEST(Dat, EmptyValuesAndAnEmptyLastValue) {
  TempDir dir;
  WriteExport(dir / "k.dat", TableId::Kam,
              {u"經名,品名,科文", u"\"妙法蓮華経\",,", u",\"\",\"別序\""});
  Table kam(SchemaOf(TableId::Kam));
  ReadDatTable(dir / "k.dat", kam);
  EXPECT_EQ(kam.rows(), 2);
  EXPECT_EQ(kam.Get(1, 1), u"妙法蓮華経");
  EXPECT_EQ(kam.Get(1, 4), u"");
  EXPECT_EQ(kam.Get(2, 4), u"別序");
}

TEST(Dat, EachTableTakesItsOwnNormalFormOnItsOwnFields) {
  TempDir dir;
  WriteExport(dir / "h.dat", TableId::Hok,
              {u"開結真読,経名", u"\"如是・我聞（一）\",\"妙法・蓮華経\""});
  Table hok(SchemaOf(TableId::Hok));
  ReadDatTable(dir / "h.dat", hok);
  EXPECT_EQ(hok.Get(1, 13), u"如是・我聞(一)");  // NormB keeps the full-width dot
  EXPECT_EQ(hok.Get(1, 8), u"妙法・蓮華経");     // field 8 is taken as it stands
  EXPECT_EQ(hok.Get(1, 0), u"1");

  WriteExport(dir / "d.dat", TableId::Dat, {u"ｼｽﾃﾑ版翠典,番号", u"如是・我聞｡,\"付録・一\""});
  Table dat(SchemaOf(TableId::Dat));
  ReadDatTable(dir / "d.dat", dat);
  EXPECT_EQ(dat.Get(1, 8), u"如是･我聞。");
  EXPECT_EQ(dat.Get(1, 4), u"付録・一");

  WriteExport(dir / "s.dat", TableId::Sok, {u"科文", u"\"（序）\""});
  Table sok(SchemaOf(TableId::Sok));
  ReadDatTable(dir / "s.dat", sok);
  EXPECT_EQ(sok.Get(1, 4), u"（序）");
}

TEST(Dat, PrivateUseCharactersComeThrough) {
  TempDir dir;
  WriteExport(dir / "d.dat", TableId::Dat, {u"ｼｽﾃﾑ版翠典", u"\"法\uE000華\uE757\""});
  Table dat(SchemaOf(TableId::Dat));
  ReadDatTable(dir / "d.dat", dat);
  EXPECT_EQ(dat.Get(1, 8), u"法\uE000華\uE757");
}

TEST(Dat, ARecordWithTooFewOrTooManyValuesNamesLineAndColumn) {
  TempDir dir;
  WriteDat(dir / "few.dat", {u"經名,品名,科文,法華No.", u"\"a\",\"b\",\"c\",1", u"\"a\",\"b\""});
  ErrorPlace place = FaultOf(dir / "few.dat", TableId::Kam);
  EXPECT_EQ(place.line, 3);
  EXPECT_EQ(place.row, 2);
  EXPECT_EQ(place.field, 4);
  EXPECT_EQ(place.fieldName, "科文");
  WriteDat(dir / "many.dat", {u"科文,法華No.", u"\"a\",1,\"c\""});
  EXPECT_EQ(FaultOf(dir / "many.dat", TableId::Kam).line, 2);
}

TEST(Dat, BrokenQuotesAreFaults) {
  TempDir dir;
  WriteDat(dir / "open.dat", {u"經名,科文,法華No.", u"\"a,b"});
  EXPECT_EQ(FaultOf(dir / "open.dat", TableId::Kam).fieldName, "經名");
  WriteDat(dir / "after.dat", {u"經名,科文,法華No.", u"\"a\"x,\"b\",1"});
  EXPECT_EQ(FaultOf(dir / "after.dat", TableId::Kam).line, 2);
}

TEST(Dat, ABadShiftJisByteNamesItsLine) {
  TempDir dir;
  testing::WriteBytes(dir / "b.dat", "\x8C\x6F\x96\xBC\r\n\"a\"\r\n\"\x80\"\r\n");
  const ErrorPlace place = FaultOf(dir / "b.dat", TableId::Kam);
  EXPECT_EQ(place.line, 3);
}

TEST(Dat, TooManyColumnsOrNoHeaderAreFaults) {
  TempDir dir;
  std::u16string header = u"c0";
  for (int c = 1; c <= kMaxDatColumns; ++c) header += u",c" + std::u16string(1, u'a' + c % 26);
  WriteDat(dir / "wide.dat", {header});
  EXPECT_EQ(FaultOf(dir / "wide.dat", TableId::Dat).line, 1);
  testing::WriteBytes(dir / "empty.dat", "");
  FaultOf(dir / "empty.dat", TableId::Dat);
  FaultOf(dir / "missing.dat", TableId::Dat);
}

TEST(Dat, MoreRecordsThanTheTableHoldsIsAFault) {
  TempDir dir;
  std::u16string text = u"科文,法華No.\r\n";
  for (int row = 1; row <= 81; ++row) text += u"\"序\",1\r\n";
  testing::WriteBytes(dir / "s.dat", text::EncodeSjis(text));
  EXPECT_EQ(FaultOf(dir / "s.dat", TableId::Sok).row, 81);
}

TEST(Dat, BlankLinesCarryNoRecord) {
  TempDir dir;
  testing::WriteBytes(dir / "k.dat",
                      text::EncodeSjis(u"科文,法華No.\r\n\"序\",1\r\n\r\n\"別\",2\r\n\r\n"));
  Table kam(SchemaOf(TableId::Kam));
  ReadDatTable(dir / "k.dat", kam);
  EXPECT_EQ(kam.rows(), 2);
  EXPECT_EQ(kam.Get(2, 4), u"別");
}

// The message of the fault that reading `path` raises, which must be on line 1.
std::string HeaderFaultOf(const std::filesystem::path& path, TableId id) {
  Table table(SchemaOf(id));
  try {
    ReadDatTable(path, table);
  } catch (const CorpusError& e) {
    EXPECT_EQ(e.place().line, 1) << e.what();
    return e.what();
  }
  ADD_FAILURE() << "no fault reading " << path;
  return {};
}

TEST(Dat, AHeaderThatIsNoHeaderOrLacksARequiredColumnIsRefusedOnLineOne) {
  struct Case {
    const char* what;
    TableId id;
    std::u16string text;
    std::vector<std::string> said;
  };
  const Case cases[] = {
      {"an outline whose header line is lost",
       TableId::Sok,
       u"\"無量義経\",\"徳行品第一\",,\"序分\",1,,1,\"1b.02\",66.01,1.02\r\n"
       u"\"無量義経\",\"徳行品第一\",,\"正宗分\",2,,2,\"1b.09\",66.02,1.03\r\n",
       {"the header line is missing: line 1 is a record",
        "(column 5 holds the unquoted number 1)"}},
      {"a first line of quoted text only",
       TableId::Kam,
       u"\"無量義経\",\"序品第一\"\r\n",
       {"the header line is missing", "none of its 2 values names a column of Kam"}},
      {"a header without one required column",
       TableId::Hok,
       u"法華No.,経名,品名\r\n1,\"妙法蓮華経\",\"序品第一\"\r\n",
       {"the header lacks the column 開結頁行, which the import needs"}},
      {"a header without three",
       TableId::Dic,
       u"辞基本No,見出項目,印\r\n",
       {"the header lacks 3 columns that the import needs: 見出No, 見出よみ, 語義解説"}},
      {"line ends of CR alone",
       TableId::Kam,
       u"科文,法華No.\r\"序分\",1\r\"通序\",2\r",
       {"the line ends are CR only"}},
  };
  TempDir dir;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    testing::WriteBytes(dir / "t.dat", text::EncodeSjis(c.text));
    const std::string message = HeaderFaultOf(dir / "t.dat", c.id);
    for (const std::string& part : c.said)
      EXPECT_NE(message.find(part), std::string::npos) << message;
  }
}

TEST(Dat, AColumnNamedTwiceIsReadFromItsLastPlace) {
  TempDir dir;
  WriteExport(dir / "h.dat", TableId::Hok,
              {u"品名,経名,品名", u"\"序品第一\",\"妙法蓮華経\",\"方便品第二\""});
  Table hok(SchemaOf(TableId::Hok));
  ReadDatTable(dir / "h.dat", hok);
  EXPECT_EQ(hok.Get(1, hok::kChapter), u"方便品第二");
  EXPECT_EQ(hok.Get(1, hok::kSutraName), u"妙法蓮華経");
}

TEST(Dat, LineEndsOfLfAloneAreRead) {
  TempDir dir;
  testing::WriteBytes(dir / "k.dat", text::EncodeSjis(u"科文,法華No.\n\"序分\",1\n\"通序\",2\n"));
  Table kam(SchemaOf(TableId::Kam));
  ReadDatTable(dir / "k.dat", kam);
  EXPECT_EQ(kam.rows(), 2);
  EXPECT_EQ(kam.Get(2, 4), u"通序");
}

namespace fs = std::filesystem;

// A copy of the bundled exports, checked as a conversion checks them.
class ExportCopy {
 public:
  explicit ExportCopy(const std::string& suffix = "") : dir(suffix) {
    fs::copy(fs::path(SUIZO_SOURCE_DIR) / "data" / "sample", dir.path(),
             fs::copy_options::recursive);
  }
  fs::path File(const char* name) const { return dir.path() / fs::u8path(name); }
  // The header of an export with one name put for another.
  void Rename(const char* file, std::u16string_view from, std::u16string_view to) const {
    std::u16string text = text::DecodeSjis(testing::ReadBytes(File(file)));
    const std::size_t at = text.find(from);
    ASSERT_LT(at, text.find(u'\n'));
    text.replace(at, from.size(), to);
    testing::WriteBytes(File(file), text::EncodeSjis(text));
  }
  // The fault CheckExports throws; empty when there is none.
  std::string Check() {
    try {
      CheckExports(dir.path(),
                   [this](const std::u16string& m) { warnings.push_back(text::ToUtf8(m)); });
    } catch (const CorpusError& e) {
      return e.what();
    }
    return {};
  }
  TempDir dir;
  std::vector<std::string> warnings;
};

TEST(Exports, TheBundledSampleIsClean) {
  ExportCopy exports;
  EXPECT_EQ(exports.Check(), "");
  EXPECT_TRUE(exports.warnings.empty());
}

TEST(Exports, AColumnNamedTwiceIsToldAndLetThrough) {
  ExportCopy exports;
  exports.Rename("法華経.dat", u"\"蔵経頁行\"", u"\"品名\"");
  EXPECT_EQ(exports.Check(), "");
  const auto& warnings = exports.warnings;
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(
      warnings[0].find("法華経.dat: line 1: the header names 品名 twice; the last one is read"),
      std::string::npos)
      << warnings[0];
}

TEST(Exports, EachDamagedExportIsNamed) {
  struct Case {
    const char* file;
    std::function<void(const fs::path&)> damage;
    const char* said;
  };
  const Case cases[] = {
      {"法華経総科.dat",
       [](const fs::path& f) {
         const std::string bytes = testing::ReadBytes(f);
         testing::WriteBytes(f, bytes.substr(bytes.find('\n') + 1));
       },
       "line 1: the header line is missing"},
      {"辞書事典.dat", {}, "the header lacks the column 語義解説"},
      {"法華経科文.dat",
       [](const fs::path& f) {
         std::string bytes = testing::ReadBytes(f);
         std::erase(bytes, '\n');
         testing::WriteBytes(f, bytes);
       },
       "line 1: the line ends are CR only"},
      {"翠典資料.dat", [](const fs::path& f) { fs::remove(f); }, "the export is missing"},
      {"年表.dat",
       [](const fs::path& f) {
         fs::remove(f);
         ASSERT_EQ(::mkfifo(f.c_str(), 0644), 0);
       },
       "not a regular file: a FIFO"},
      {"注経本文.dat",
       [](const fs::path& f) {
         fs::remove(f);
         fs::create_directory(f);
       },
       "not a regular file: a folder"},
      {"史料目次.dat",
       [](const fs::path& f) { testing::WriteBytes(f, testing::ReadBytes(f) + "\"\x80\"\r\n"); },
       "not a Shift-JIS character"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    ExportCopy copy("-" + std::to_string(&c - cases));
    if (c.damage) {
      c.damage(copy.File(c.file));
    } else {
      copy.Rename(c.file, u"\"語義解説\"", u"\"語義\"");
    }
    const std::string message = copy.Check();
    EXPECT_NE(message.find(std::string(c.file) + ": "), std::string::npos) << message;
    EXPECT_NE(message.find(c.said), std::string::npos) << message;
  }
}

TEST(Exports, EveryFaultyExportIsNamedInOneError) {
  ExportCopy exports;
  fs::remove(exports.File("本尊資料.dat"));
  exports.Rename("年表関連.dat", u"\"西暦\"", u"\"年\"");
  const std::string message = exports.Check();
  EXPECT_NE(message.find("2 of the twelve exports cannot be converted"), std::string::npos)
      << message;
  EXPECT_NE(message.find("本尊資料.dat: the export is missing"), std::string::npos) << message;
  EXPECT_NE(message.find("年表関連.dat: line 1: the header lacks the column 西暦"),
            std::string::npos)
      << message;
}

}  // namespace
}  // namespace suizo::corpus
