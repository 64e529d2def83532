#include "core/corpus/orders.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "core/corpus/errors.h"
#include "core/corpus/import.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

// The sample converted once; each test loads a fresh copy of its store.
class Orders : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = new std::filesystem::path(std::filesystem::temp_directory_path() /
                                        ("suizo-orders-" + std::to_string(::getpid())));
    std::filesystem::remove_all(*folder_);
    std::filesystem::copy(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample", *folder_,
                          std::filesystem::copy_options::recursive);
    Corpus imported(*folder_);
    ReadDataFirst(imported, ImportOptionsFor(*folder_));
  }
  static void TearDownTestSuite() {
    std::filesystem::remove_all(*folder_);
    delete folder_;
  }
  Orders() : corpus(*folder_) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    InitialOrders(corpus, selection);
  }
  void Choose(int gk, int kn = 0) {
    selection.MokRedo = gk != selection.Gk ? 1 : 0;
    selection.Gk = gk;
    selection.Kn = kn;
    ApplySelection(corpus, selection);
  }
  std::u16string_view MokAt(int m, int field) const {
    return corpus.Mok().Get(corpus.MokOrder[static_cast<std::size_t>(m)], field);
  }
  int StartField() const { return FindCollection(selection.Gk)->mokStartField; }

  static std::filesystem::path* folder_;
  Corpus corpus;
  Selection selection;
};
std::filesystem::path* Orders::folder_ = nullptr;

TEST_F(Orders, EveryCollectionListsItsDocumentsInItsOwnOrder) {
  for (const Collection& c : kCollections) {
    Choose(c.gk);
    ASSERT_GT(corpus.MosMaxY, 4) << c.gk;
    const Table& dat = corpus.Dat();
    for (int p = 2; p <= corpus.DasMaxY; ++p) {  // the reading order rises page by page
      const auto field = c.datField;
      const double before =
          field == 0 ? corpus.DatOrder[p - 1] : text::Val(dat.Get(corpus.DatOrder[p - 1], field));
      const double here =
          field == 0 ? corpus.DatOrder[p] : text::Val(dat.Get(corpus.DatOrder[p], field));
      ASSERT_LE(before, here) << c.gk << " at " << p;
    }
    for (int m = 1; m <= corpus.MosMaxY; ++m) {
      ASSERT_FALSE(MokAt(m, StartField()).empty()) << c.gk;
      if (m > 1) {
        ASSERT_LE(text::Val(MokAt(m - 1, StartField())), text::Val(MokAt(m, StartField()))) << c.gk;
        ASSERT_NE(MokAt(m - 1, mok::kSysNo), MokAt(m, mok::kSysNo)) << c.gk << ": twice in a row";
      }
      // A listed document starts at a head row of this collection.
      const int p = static_cast<int>(text::Val(MokAt(m, mok::kPosition)));
      ASSERT_TRUE(dat.Get(corpus.DatOrder[p], dat::kMain2).starts_with(u"◆"))
          << c.gk << " document " << m;
    }
  }
}

TEST_F(Orders, DocumentsAbsentFromACollectionAreNotListed) {
  Choose(26);  // 録内 prints about half of them
  std::set<std::u16string> listed;
  for (int m = 1; m <= corpus.MosMaxY; ++m) listed.insert(std::u16string(MokAt(m, mok::kSysNo)));
  int absent = 0;
  for (int row = 1; row <= corpus.MokBaseRows; ++row) {
    const int head = SysNo(corpus, corpus.Mok().Get(row, mok::kSysNo));
    if (corpus.Dat().Get(head, 26).empty()) {
      ++absent;
      EXPECT_FALSE(listed.count(std::u16string(corpus.Mok().Get(row, mok::kSysNo))));
    }
  }
  EXPECT_GT(absent, 5);
}

TEST_F(Orders, TheConcordancesListADocumentPrintedTwiceAtBothPlaces) {
  for (const int gk : {31, 35}) {
    Choose(gk);
    std::map<std::u16string, std::set<double>> places;
    for (int m = 1; m <= corpus.MosMaxY; ++m) {
      places[std::u16string(MokAt(m, mok::kBangou))].insert(text::Val(MokAt(m, mok::kPosition)));
    }
    EXPECT_TRUE(std::any_of(places.begin(), places.end(), [](const auto& e) {
      return e.second.size() == 2;
    })) << gk;
    EXPECT_GT(corpus.Mok().rows(), corpus.MokBaseRows) << gk;  // the copy
  }
}

TEST_F(Orders, TitleLinesWithoutARecordGetOneThatPointsOnward) {
  Choose(22);
  int pointers = 0;
  for (int row = corpus.MokBaseRows + 1; row <= corpus.Mok().rows(); ++row) {
    pointers += text::Contains(corpus.Mok().Get(row, mok::kNote), u" を参照") ? 1 : 0;
  }
  EXPECT_GT(pointers, 0);
  Choose(23);
  EXPECT_GT(corpus.Mok().rows(), corpus.MokBaseRows);  // rebuilt for this collection
}

TEST_F(Orders, TheSystemOrderHasItsOwnHeadsAndLeavesTheLastRecordOut) {
  const auto listed = [&] {
    std::set<std::u16string> keys;
    for (int m = 1; m <= corpus.MosMaxY; ++m) keys.insert(std::u16string(MokAt(m, mok::kSysNo)));
    return keys;
  };
  EXPECT_TRUE(listed().count(u"14611"));
  EXPECT_TRUE(listed().count(u"17450"));
  EXPECT_FALSE(listed().count(std::u16string(corpus.Mok().Get(corpus.MokBaseRows, mok::kSysNo))));
  Choose(22);
  EXPECT_FALSE(listed().count(u"14611"));
  EXPECT_FALSE(listed().count(u"17450"));
}

TEST_F(Orders, TheClassFilterNarrowsTheListButNotTheCount) {
  Choose(22);
  const int all = corpus.MosMaxY;
  const int placed = corpus.MokAllY;
  int third = 0;
  for (int m = 1; m <= all; ++m) third += text::Val(MokAt(m, mok::kClass)) == 3 ? 1 : 0;
  selection.CSel[3] = 0;
  Choose(22);
  EXPECT_EQ(corpus.MosMaxY, all - third);
  EXPECT_EQ(corpus.MokAllY, placed);
  selection.CSel.fill(0);
  Choose(22);
  EXPECT_EQ(corpus.MosMaxY, 0);
  EXPECT_EQ(FindReaderPlace(corpus, u"10001").Lpos, 0);
}

TEST_F(Orders, TheDateOrderSortsByTheDocumentsDates) {
  Choose(0, 1);
  for (int m = 2; m <= corpus.MosMaxY; ++m)
    EXPECT_LE(MokAt(m - 1, mok::kDate), MokAt(m, mok::kDate));
  EXPECT_FALSE(MokAt(1, mok::kDating).empty());  // undated records took their text's dating
}

TEST_F(Orders, SwitchingTo29LeavesTheHeadMarksAsImported) {
  std::vector<std::u16string> imported;
  for (int row = 1; row <= corpus.Dat().rows(); ++row)
    imported.emplace_back(corpus.Dat().Get(row, dat::kMain2));
  Corpus fresh(*folder_);
  fresh.ReadData(0);
  for (int row = 1; row <= fresh.Dat().rows(); ++row)
    imported[row - 1] = fresh.Dat().Get(row, dat::kMain2);
  for (const int gk : {31, 0, 35, 22, 0, 31, 24, 29}) Choose(gk);
  for (int row = 1; row <= corpus.Dat().rows(); ++row) {
    ASSERT_EQ(corpus.Dat().Get(row, dat::kMain2), imported[row - 1]) << "row " << row;
  }
}

TEST_F(Orders, WindowsFindTheirPlaceAgainByWhatTheyRemembered) {
  Choose(0);
  // A document of the system order that 録外 does not print.
  std::u16string gone;
  int goneRow = 0;
  for (int m = 1; m <= corpus.MosMaxY && gone.empty(); ++m) {
    const int head = SysNo(corpus, MokAt(m, mok::kSysNo));
    if (corpus.Dat().Get(head, 27).empty()) {
      gone = MokAt(m, mok::kSysNo);
      goneRow = head;
    }
  }
  ASSERT_FALSE(gone.empty());
  const std::u16string staying(MokAt(3, mok::kSysNo));
  const std::u16string line(corpus.Dat().Get(goneRow + 1, dat::kSysNo));
  Choose(27);
  EXPECT_EQ(FindContentsPlace(corpus, gone).Mpos, 1);
  EXPECT_EQ(FindContentsPlace(corpus, gone).OldMsys, MokAt(1, mok::kSysNo));
  const ReaderPlace moved = FindReaderPlace(corpus, line);
  EXPECT_EQ(moved.Mpos, 1);
  EXPECT_EQ(moved.Lpos, static_cast<int>(text::Val(MokAt(1, mok::kPosition))));
  // A line of a document that stays keeps its document.
  Choose(0);
  const ReaderPlace here = FindReaderPlace(corpus, staying);
  EXPECT_EQ(MokAt(here.Mpos, mok::kSysNo), staying);
  EXPECT_EQ(LineToWork(corpus, here.Lpos + 1), here.Mpos);
}

TEST_F(Orders, TheSourcesListInEitherOrder) {
  EXPECT_EQ(corpus.SMosMaxY, corpus.SMok().rows());
  for (int m = 2; m <= corpus.SMosMaxY; ++m)
    EXPECT_LT(corpus.SMokOrder[m - 1], corpus.SMokOrder[m]);
  selection.SKn = 1;
  ApplySourceSelection(corpus, selection);
  for (int m = 2; m <= corpus.SMosMaxY; ++m) {
    EXPECT_LE(corpus.SMok().Get(corpus.SMokOrder[m - 1], smok::kDate),
              corpus.SMok().Get(corpus.SMokOrder[m], smok::kDate));
  }
  const int lpos =
      static_cast<int>(text::Val(corpus.SMok().Get(corpus.SMokOrder[2], smok::kPosition)));
  EXPECT_EQ(SLineToWork(corpus, lpos), 2);
}

TEST_F(Orders, TheNarrowedListKeepsOnlyUnmarkedRecords) {
  Choose(22);
  const int all = corpus.MosMaxY;
  corpus.Mok().Set(corpus.MokOrder[1], mok::kMark, u"-1");
  ConvMok2(corpus, selection);
  EXPECT_EQ(corpus.MosMaxY, all - 1);
}

// 対録 places by the 番号 after a blank; a number without a record stops the
// placement with a message rather than silently.
TEST(ConcordancePlacement, ReadsTheNumberAfterABlankAndNamesAMissingOne) {
  Corpus corpus("/nowhere");
  Table& dat = corpus.Dat();
  const std::u16string_view numbers[] = {u"旧 1-5", u"旧 1-5", u"1-6"};
  for (int row = 1; row <= 3; ++row) {
    dat.Set(row, dat::kSysNo, text::IntText(10000 + row));
    dat.Set(row, dat::kBangou, numbers[row - 1]);
    dat.Set(row, dat::kMain, u"本文");
    dat.Set(row, 31, text::IntText(row));
  }
  dat.Set(0, 46, u"3");
  for (int m = 1; m <= 3; ++m) dat.Set(m, 46, text::IntText(m));
  dat.set_rows(3);
  Table& mok = corpus.Mok();
  mok.Set(1, mok::kSysNo, u"10001");
  mok.Set(1, mok::kBangou, u"1-5");
  mok.Set(2, mok::kSysNo, u"10003");
  mok.Set(2, mok::kBangou, u"1-6");
  mok.set_cols(52);
  mok.set_rows(2);
  corpus.MokBaseRows = 2;
  Selection selection;
  selection.Gk = 31;
  selection.MokRedo = 1;
  ApplySelection(corpus, selection);
  EXPECT_EQ(corpus.MosMaxY, 2);
  EXPECT_EQ(mok.Get(1, mok::kPosition), u"1");
  EXPECT_EQ(mok.Get(2, mok::kPosition), u"3");
  mok.Set(2, mok::kBangou, u"1-7");
  selection.MokRedo = 1;
  EXPECT_THROW(ApplySelection(corpus, selection), CorpusError);
}

TEST(ChronologyPlace, TheEventOrTheOneBeforeTheFirstThatPassesIt) {
  Table nen(SchemaOf(TableId::Nen));
  for (int row = 1; row <= 4; ++row) nen.Set(row, nen::kNumber, text::IntText(row * 10));
  nen.set_rows(4);
  const std::vector<int> order = {0, 1, 2, 3, 4};
  EXPECT_EQ(FindChronologyPlace(nen, order, 4, 20), 2);
  EXPECT_EQ(FindChronologyPlace(nen, order, 4, 25), 2);
  EXPECT_EQ(FindChronologyPlace(nen, order, 4, 5), 1);
  EXPECT_EQ(FindChronologyPlace(nen, order, 4, 99), 4);
}

}  // namespace
}  // namespace suizo::corpus
