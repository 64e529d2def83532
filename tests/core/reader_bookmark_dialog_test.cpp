#include "core/reader/bookmark_dialog.h"

#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::reader {
namespace {

using corpus::BookmarkKind;

class BookmarkDialogTest : public ::testing::Test {
 protected:
  BookmarkDialogTest() : corpus(testing::SampleStore()), file(dir / "suiten.ini") {
    for (const int group : {0, 2, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }

  void Choose(int gk) {
    selection.MokRedo = gk != selection.Gk ? 1 : 0;
    selection.Gk = gk;
    corpus::ApplySelection(corpus, selection);
  }
  BookmarkDialog Dialog(BookmarkKind kind) { return BookmarkDialog(kind, file, corpus, selection); }
  int FirstLine(int mpos) const { return LineOrder::Writings(corpus).FirstLineOf(mpos); }
  std::u16string_view DatAt(int lpos, int field) const {
    return corpus.Dat().Get(corpus.DatOrder[static_cast<std::size_t>(lpos)], field);
  }
  std::string Bytes() const { return testing::ReadBytes(dir / "suiten.ini"); }

  // Answers yes and keeps what was asked.
  Confirm Yes() {
    return [this](std::u16string_view q) {
      asked.emplace_back(q);
      return true;
    };
  }
  Confirm No() {
    return [this](std::u16string_view q) {
      asked.emplace_back(q);
      return false;
    };
  }

  testing::TempDir dir;
  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::ProfileFile file;
  std::vector<std::u16string> asked;
};

TEST(BookmarkDialogQuestions, NameTheBookmarkByItsCircledDigit) {
  EXPECT_EQ(ReadQuestion(1), u"≪しおり①≫を読込み移動してもよろしいですか？");
  EXPECT_EQ(WriteQuestion(10), u"≪しおり⑩≫に保存してもよろしいですか？");
}

TEST_F(BookmarkDialogTest, UnsetRowsShowDashesAndTheChoiceIsColoured) {
  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  EXPECT_EQ(d.Parent, u"@しおり");
  EXPECT_EQ(d.row(1).Text1, u"---");
  EXPECT_EQ(d.row(10).Text2, u"---");
  EXPECT_EQ(d.chosen(), 0);
  d.Bm_Click(3);
  d.Bm_Click(7);
  EXPECT_EQ(d.row(7).Text1BackColor, 10079487u);
  EXPECT_EQ(d.row(7).Text2BackColor, 14349299u);
  EXPECT_EQ(d.row(3).Text1BackColor, 0xD0D0D0u);
  EXPECT_EQ(d.row(3).Text2BackColor, 0xE0E0E0u);
}

TEST_F(BookmarkDialogTest, WithoutAChoiceNothingIsAsked) {
  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  EXPECT_FALSE(d.Command1(Yes()));
  EXPECT_FALSE(d.Command3(Yes(), {1, 1, {}}));
  EXPECT_TRUE(asked.empty());
}

TEST_F(BookmarkDialogTest, WritingsKeepTheCollectionAndTheLineTexts) {
  Choose(22);
  const Position owner{2, FirstLine(2) + 1, {}};
  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  d.Bm_Click(4);
  ASSERT_TRUE(d.Command3(Yes(), owner));
  EXPECT_EQ(asked, (std::vector<std::u16string>{WriteQuestion(4)}));
  EXPECT_EQ(file.Read(u"BMark04", u"Gk", u""), u"22");
  EXPECT_EQ(file.Read(u"BMark04", u"Kn", u""), u"0");
  EXPECT_EQ(file.Read(u"BMark04", u"CSel", u""), u"11111111110");
  EXPECT_EQ(file.Read(u"BMark04", u"Mpos", u""), u"2");
  EXPECT_EQ(file.Read(u"BMark04", u"Lpos", u""), text::IntText(owner.Lpos));
  EXPECT_EQ(file.Read(u"BMark04", u"T1", u""), DatAt(owner.Lpos, 6));
  EXPECT_EQ(file.Read(u"BMark04", u"T2", u""), DatAt(owner.Lpos, corpus::dat::kMain));
  EXPECT_EQ(Dialog(BookmarkKind::Writings).row(4).Text2, DatAt(owner.Lpos, corpus::dat::kMain));
}

TEST_F(BookmarkDialogTest, ReadingABookmarkOfAnotherCollectionSwitchesToIt) {
  Choose(22);
  const int lines22 = corpus.DasMaxY;
  const Position owner{3, FirstLine(3), {}};
  const std::u16string sysNo(DatAt(owner.Lpos, corpus::dat::kSysNo));
  {
    BookmarkDialog d = Dialog(BookmarkKind::Writings);
    d.Bm_Click(2);
    ASSERT_TRUE(d.Command3(Yes(), owner));
  }
  selection.CSel[4] = 0;
  Choose(0);
  ASSERT_NE(corpus.DasMaxY, lines22);

  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  d.Bm_Click(2);
  const std::optional<BookmarkMove> move = d.Command1(Yes());
  ASSERT_TRUE(move);
  EXPECT_EQ(asked.back(), ReadQuestion(2));
  EXPECT_TRUE(move->selectionChanged);
  EXPECT_EQ(selection.Gk, 22);
  EXPECT_EQ(selection.CSel[4], 1);
  EXPECT_EQ(selection.MokRedo, 0);  // the placement ran
  EXPECT_EQ(corpus.DasMaxY, lines22);
  EXPECT_EQ(move->place.Mpos, 3);
  EXPECT_EQ(move->place.Lpos, owner.Lpos);
  EXPECT_EQ(DatAt(move->place.Lpos, corpus::dat::kSysNo), sysNo);  // the same line again
}

TEST_F(BookmarkDialogTest, AnsweringNoChangesNothing) {
  BookmarkDialog first = Dialog(BookmarkKind::Writings);
  first.Bm_Click(1);
  ASSERT_TRUE(first.Command3(Yes(), {2, FirstLine(2), {}}));
  const std::string before = Bytes();
  Choose(23);
  const corpus::Selection kept = selection;
  const int lines = corpus.DasMaxY;

  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  d.Bm_Click(1);
  EXPECT_FALSE(d.Command1(No()));
  EXPECT_FALSE(d.Command3(No(), {4, FirstLine(4), {}}));
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(selection.Gk, kept.Gk);
  EXPECT_EQ(selection.CSel, kept.CSel);
  EXPECT_EQ(corpus.DasMaxY, lines);
  EXPECT_EQ(d.row(1).Text1, first.row(1).Text1);
}

TEST_F(BookmarkDialogTest, AnUnsetBookmarkLeadsToTheFirstDocument) {
  Choose(25);
  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  d.Bm_Click(9);
  const std::optional<BookmarkMove> move = d.Command1(Yes());
  ASSERT_TRUE(move);
  EXPECT_EQ(selection.Gk, 25);  // the current collection stands
  EXPECT_EQ(move->place.Mpos, 1);
  EXPECT_EQ(move->place.Lpos, FirstLine(1));
}

TEST_F(BookmarkDialogTest, LineMarksAreStoredAsTheyStand) {
  int marked = 0;
  for (int l = 1; l <= corpus.DasMaxY && marked == 0; ++l) {
    if (text::Contains(DatAt(l, corpus::dat::kMain), u"／")) marked = l;
  }
  ASSERT_GT(marked, 0);
  BookmarkDialog d = Dialog(BookmarkKind::Writings);
  d.Bm_Click(5);
  ASSERT_TRUE(d.Command3(Yes(), {corpus::LineToWork(corpus, marked), marked, {}}));
  EXPECT_EQ(Dialog(BookmarkKind::Writings).row(5).Text2, DatAt(marked, corpus::dat::kMain));
}

TEST_F(BookmarkDialogTest, SutraKeepsItsChapterAndLeavesTheCollection) {
  const corpus::Table& hok = corpus.table(corpus::TableId::Hok);
  const int row = 40;
  const Position owner{0, row, std::u16string(hok.Get(row, corpus::hok::kChapter))};
  BookmarkDialog d = Dialog(BookmarkKind::Sutra);
  d.Bm_Click(6);
  ASSERT_TRUE(d.Command3(Yes(), owner));
  EXPECT_EQ(file.Read(u"HMark06", u"Mpos", u""), owner.chapter);
  EXPECT_EQ(file.Read(u"HMark06", u"Lpos", u""), u"40");
  EXPECT_EQ(d.row(6).Text1, u" " + std::u16string(hok.Get(row, corpus::hok::kSutraName)));
  EXPECT_EQ(d.row(6).Text2, hok.Get(row, 15));
  EXPECT_EQ(file.Read(u"HMark06", u"Gk", u"none"), u"none");

  Choose(22);
  const std::optional<BookmarkMove> move = d.Command1(Yes());
  ASSERT_TRUE(move);
  EXPECT_FALSE(move->selectionChanged);
  EXPECT_EQ(selection.Gk, 22);
  EXPECT_EQ(move->place.chapter, owner.chapter);
  EXPECT_EQ(move->place.Lpos, row);
}

TEST_F(BookmarkDialogTest, SourcesKeepTitleAndReading) {
  const LineOrder sources = LineOrder::Sources(corpus);
  const Position owner{2, sources.FirstLineOf(2) + 1, {}};
  const int sdatRow = corpus.SDatOrder[static_cast<std::size_t>(owner.Lpos)];
  BookmarkDialog d = Dialog(BookmarkKind::Sources);
  d.Bm_Click(10);
  ASSERT_TRUE(d.Command3(Yes(), owner));
  EXPECT_EQ(file.Read(u"SMark10", u"T1", u""), corpus.SDat().Get(sdatRow, 6));
  EXPECT_EQ(file.Read(u"SMark10", u"T2", u""), corpus.SDat().Get(sdatRow, corpus::sdat::kReading));
  BookmarkDialog again = Dialog(BookmarkKind::Sources);
  again.Bm_Click(10);
  const std::optional<BookmarkMove> read = again.Command1(Yes());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->place.Mpos, 2);
  EXPECT_EQ(read->place.Lpos, owner.Lpos);
}

}  // namespace
}  // namespace suizo::reader
