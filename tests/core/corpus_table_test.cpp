#include "core/corpus/table.h"

#include <gtest/gtest.h>

#include "core/corpus/errors.h"

namespace suizo::corpus {
namespace {

TEST(Table, UnwrittenCellsReadEmpty) {
  Table dat(SchemaOf(TableId::Dat));
  EXPECT_EQ(dat.Get(0, 1), u"");
  EXPECT_EQ(dat.Get(35000, 53), u"");
  dat.Set(3, 8, u"法");
  EXPECT_EQ(dat.Get(4, 8), u"");
  EXPECT_EQ(dat.Get(3, 7), u"");
}

TEST(Table, CapacityIsEnforcedWithAMessageNamingThePlace) {
  Table sok(SchemaOf(TableId::Sok));
  sok.Set(80, 10, u"対訳");
  EXPECT_EQ(sok.Get(80, 10), u"対訳");
  try {
    sok.Set(81, 4, u"序分");
    FAIL() << "wrote beyond the capacity";
  } catch (const CorpusError& e) {
    EXPECT_EQ(e.place().row, 81);
    EXPECT_EQ(e.place().field, 4);
    EXPECT_EQ(e.place().fieldName, "科文");
    EXPECT_NE(std::string(e.what()).find("法華経総科"), std::string::npos) << e.what();
  }
  EXPECT_THROW(sok.Get(1, 11), CorpusError);
  EXPECT_THROW(sok.Get(-1, 1), CorpusError);
}

TEST(Table, OverwritingAndCopyingWithinTheTable) {
  Table dat(SchemaOf(TableId::Dat));
  dat.Set(1, 8, u"春の雨");
  dat.Set(1, 8, u"秋の風");
  EXPECT_EQ(dat.Get(1, 8), u"秋の風");
  // Copying a field to another, and to many rows, must survive the arena growing.
  for (int row = 1; row <= 2000; ++row) dat.Set(row, 9, dat.Get(1, 8));
  dat.Set(2, 10, dat.Get(1, 8).substr(1));
  EXPECT_EQ(dat.Get(2000, 9), u"秋の風");
  EXPECT_EQ(dat.Get(2, 10), u"の風");
}

TEST(Table, HoldsFollowsEveryChangeOfTheCells) {
  Table dat(SchemaOf(TableId::Dat));
  dat.Set(1, 9, u"◆序");
  dat.Set(2, 9, u"本文");
  dat.Set(3, 9, u"末に◆");
  dat.set_rows(3);
  EXPECT_TRUE(dat.Holds(1, 9, u'◆'));
  EXPECT_FALSE(dat.Holds(2, 9, u'◆'));
  EXPECT_TRUE(dat.Holds(3, 9, u'◆'));  // anywhere in the cell
  dat.Set(2, 9, u"◆本文");             // a head mark moved here
  EXPECT_TRUE(dat.Holds(2, 9, u'◆'));
  EXPECT_FALSE(dat.Holds(2, 8, u'◆'));  // another field is asked anew
  EXPECT_TRUE(dat.Holds(2, 9, u'◆'));
  dat.Set(5, 9, u"◆");  // beyond the rows counted
  EXPECT_TRUE(dat.Holds(5, 9, u'◆'));
  dat.set_rows(5);
  EXPECT_TRUE(dat.Holds(5, 9, u'◆'));
  dat.ClearRow(1);
  EXPECT_FALSE(dat.Holds(1, 9, u'◆'));
}

TEST(Table, ClearRowAndClear) {
  Table mok(SchemaOf(TableId::Mok));
  mok.Set(1, 10, u"春雨書");
  mok.Set(2, 10, u"竹林抄");
  mok.set_rows(2);
  mok.ClearRow(1);
  EXPECT_EQ(mok.Get(1, 10), u"");
  EXPECT_EQ(mok.Get(2, 10), u"竹林抄");
  mok.ClearRow(900);  // never written: nothing to do
  mok.Clear();
  EXPECT_EQ(mok.rows(), 0);
  EXPECT_EQ(mok.Get(2, 10), u"");
}

}  // namespace
}  // namespace suizo::corpus
