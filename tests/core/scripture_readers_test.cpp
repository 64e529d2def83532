#include <gtest/gtest.h>

#include <cmath>

#include "core/corpus/file_io.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/orders.h"
#include "core/reader/frame.h"
#include "core/scripture/scripture_window.h"
#include "core/scripture/sources_reader.h"
#include "core/scripture/sutra_reader.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::scripture {
namespace {

using reader::key::kCtrl;
using reader::key::kDown;
using reader::key::kUp;
using text::Contains;

// Columns so tall that a row takes a small part of one: a page is bounded
// by its row limit and by the chapter or document, not by its columns.
class TallMeter : public reader::ColumnMeter {
 public:
  double Columns(std::u16string_view html, int heightPx) const override {
    return base_.Columns(html, heightPx) / 100;
  }

 private:
  reader::TextColumnMeter base_;
};

class Scripture : public ::testing::Test {
 protected:
  Scripture() : corpus(testing::SampleStore()) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }
  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
};

class Sutra : public Scripture {
 protected:
  Sutra() : reader(corpus, selection, settings) {}
  const corpus::Table& hok() const { return corpus.table(corpus::TableId::Hok); }
  int FirstRowOf(std::u16string_view chapter) const {
    for (int r = 1; r <= hok().rows(); ++r) {
      if (hok().Get(r, corpus::hok::kChapter) == chapter) return r;
    }
    return 0;
  }
  SutraReader reader;
};

TEST_F(Sutra, RowsWalkWithinAndAcrossChapters) {
  ASSERT_EQ(reader.Lpos(), 1);
  EXPECT_EQ(reader.Chapter(), kFirstChapter);
  EXPECT_FALSE(reader.KeyDownAll(kUp, 0).redraw);  // the table's first row
  const int second = FirstRowOf(u"説法品第二");
  reader.GoToRow(second);
  reader.KeyDownAll(kUp, 0);
  EXPECT_EQ(reader.Lpos(), second - 1);
  EXPECT_EQ(reader.Chapter(), kFirstChapter);
  reader.KeyDownAll(kDown, 0);
  EXPECT_EQ(reader.Chapter(), u"説法品第二");
  // Under Limit the chapter's ends hold.
  reader.engine().Limit = true;
  reader.KeyDownAll(kUp, 0);
  EXPECT_EQ(reader.Lpos(), second);
  reader.GoToRow(second - 1);
  reader.KeyDownAll(kDown, 0);
  EXPECT_EQ(reader.Lpos(), second - 1);
  // Ctrl+Down does not walk with Down: it still reaches the next chapter.
  reader.KeyDownAll(kDown, kCtrl);
  EXPECT_EQ(reader.Lpos(), second);
  EXPECT_EQ(reader.Chapter(), u"説法品第二");
  reader.engine().Limit = false;

  // Ctrl+Up: the chapter's first row, then the previous chapter's.
  reader.GoToRow(second + 5);
  reader.KeyDownAll(kUp, kCtrl);
  EXPECT_EQ(reader.Lpos(), second);
  reader.KeyDownAll(kUp, kCtrl);
  EXPECT_EQ(reader.Lpos(), 1);
  EXPECT_TRUE(reader.KeyDownAll(kUp, kCtrl).redraw);
  EXPECT_EQ(reader.Lpos(), 1);

  // The table's last row stays; in the last chapter Ctrl+Down does nothing.
  reader.GoToRow(hok().rows());
  EXPECT_EQ(reader.Chapter(), kLastChapter);
  reader.KeyDownAll(kDown, 0);
  EXPECT_EQ(reader.Lpos(), hok().rows());
  reader.GoToRow(FirstRowOf(kLastChapter));
  EXPECT_FALSE(reader.KeyDownAll(kDown, kCtrl).redraw);
  EXPECT_EQ(reader.Lpos(), FirstRowOf(kLastChapter));
}

TEST_F(Sutra, HeaderShowsTheScrollAndThePages) {
  reader.GoToRow(211);
  reader::ReaderView v = reader.Hyouji();
  const std::u16string name(hok().Get(211, corpus::hok::kSutraName));
  EXPECT_EQ(v.Text4, name);  // before the first scroll
  EXPECT_EQ(v.caption, u"経文「" + name + u" " +
                           std::u16string(hok().Get(211, corpus::hok::kChapter)) + u"」");
  reader.GoToRow(212);
  EXPECT_EQ(reader.Hyouji().Text4,
            std::u16string(hok().Get(212, corpus::hok::kSutraName)) + u"巻第一");
  reader.GoToRow(2514);
  v = reader.Hyouji();
  EXPECT_TRUE(v.Text4.ends_with(u"巻第八"));
  EXPECT_EQ(v.PageBox(1), hok().Get(2514, corpus::hok::kNumber));
  EXPECT_EQ(v.PageBox(11),
            text::Format(hok().Get(2514, corpus::hok::kKaiketsuPage), text::kShortPageFormat));
  EXPECT_TRUE(Contains(v.PageBox(11), u"."));
  EXPECT_EQ(v.tabVisible.size(), 4u);
}

TEST_F(Sutra, VerticalPagesHoldTwentyRowsOfOneChapter) {
  reader.SetColumnMeter(std::make_shared<TallMeter>());
  reader.TateInit();
  const int first = FirstRowOf(u"序品第一");
  reader.GoToRow(first);
  reader::ReaderView v = reader.Hyouji();
  EXPECT_EQ(v.BlockLines, 20);
  EXPECT_EQ(reader.Lpos(), first);  // the walk leaves no trace
  EXPECT_EQ(v.panes[1].scrollRight, 10000);
  EXPECT_TRUE(v.panes[2].written);
  EXPECT_EQ(v.panes[2].scrollRight, 100000);
  EXPECT_TRUE(v.panes[1].body.starts_with(u"<DIV style='height:256px; writing-mode:tb-rl;'>"));
  // Three rows before the chapter's end: the page ends with the chapter.
  const int next = FirstRowOf(u"方便品第二");
  reader.GoToRow(next - 3);
  EXPECT_EQ(reader.Hyouji().BlockLines, 3);
  // Backwards from a chapter's first row: the previous chapter's rows only.
  reader.GoToRow(next);
  reader.KeyDownAll(kUp, 0);
  v = reader.Hyouji();
  EXPECT_EQ(reader.Chapter(), u"序品第一");
  EXPECT_EQ(reader.Lpos() + v.BlockLines, next);
}

TEST_F(Sutra, ReadingBesideTheChineseText) {
  reader.TateInit();
  reader.GoToRow(300);
  reader::ReaderView v = reader.Hyouji();
  EXPECT_TRUE(v.Check1Visible);
  EXPECT_TRUE(v.panes[2].frame.has_value());
  reader.KeyDownAll(reader::key::kS, 0);  // S toggles 真訓 in the vertical layout
  EXPECT_EQ(reader.Check1, 1);
  v = reader.Hyouji();
  EXPECT_TRUE(v.panes[3].written);
  EXPECT_FALSE(v.panes[2].written);
  EXPECT_EQ(*v.panes[3].frame, reader::VerticalFrame(25));
  // The Chinese text's pane takes the main pane's height and the other way round.
  EXPECT_TRUE(v.panes[1].body.starts_with(u"<DIV style='height:288px;"));
  EXPECT_TRUE(v.panes[3].body.starts_with(u"<DIV style='height:256px;"));
  const std::u16string chinese = reader::PaneText(hok().Get(300, 13), false, false);
  EXPECT_TRUE(Contains(v.panes[3].body, chinese.substr(0, 4)));
  // Compact: both 26 characters, and the pane on top remembered per state.
  settings.Gcm1 = 1;
  reader.Command13();
  v = reader.Hyouji();
  EXPECT_EQ(v.compactTop, 3);
  EXPECT_TRUE(v.panes[1].body.starts_with(u"<DIV style='height:416px;"));
  reader.Check1Click();
  EXPECT_EQ(reader.Hyouji().compactTop, 1);
}

TEST_F(Sutra, PagesSearchedAreTheWritingsPages) {
  // The page boxes read `Dat` through its order while the sutra's rows are walked.
  const double page = 10;
  reader.PageBoxEnter(22, u"10");
  EXPECT_EQ(reader.engine().LastKind(), search::SearchKind::Page);
  EXPECT_TRUE(reader.engine().Combo1.empty());
  int expected = 0;
  const int start = search::LineOrder::Writings(corpus).FirstLineOf(1);
  for (int p = start; p <= std::min(corpus.DasMaxY, hok().rows()); ++p) {
    const int row = corpus.DatOrder[static_cast<std::size_t>(p)];
    const double klass = text::Val(corpus.Dat().Get(row, corpus::dat::kClass));
    if (std::floor(text::Val(corpus.Dat().Get(row, 22))) == page &&
        selection.Shows(static_cast<int>(klass))) {
      ++expected;
    }
  }
  ASSERT_GT(expected, 0);
  EXPECT_EQ(reader.engine().Srn, expected);
}

TEST_F(Sutra, NotesAreEditedInTheirPane) {
  reader.GoToRow(5);
  EXPECT_FALSE(reader.StartNoteEdit(1));
  const auto start = reader.StartNoteEdit(4);
  ASSERT_TRUE(start);
  reader.EndNoteEdit(4, *start, u"一行目\r\n二行目");
  EXPECT_EQ(corpus.HokDirty, 1);
  EXPECT_EQ(hok().Get(5, 36), u"一行目／二行目");
  EXPECT_EQ(reader.Hyouji().panes[4].body, u"一行目<BR>二行目");
  EXPECT_TRUE(reader.Command7().focusPanel);
}

TEST_F(Scripture, ANoteTheJournalCannotTakeStaysAndTheUserIsTold) {
  testing::TempDir dir;
  corpus::NoteJournal journal(dir.path());
  SutraReader reader(corpus, selection, settings, &journal);
  reader.GoToRow(5);
  const auto start = reader.StartNoteEdit(4);
  ASSERT_TRUE(start);
  corpus::ScopedWriteFault full([](const std::filesystem::path&, corpus::WriteStep at) {
    return at == corpus::WriteStep::Write ? ENOSPC : 0;
  });
  const reader::ReaderOutcome out = reader.EndNoteEdit(4, *start, u"残る覚え");
  EXPECT_TRUE(out.redraw);
  EXPECT_EQ(out.message.find(corpus::kNoteNotJournaled), 0U);
  EXPECT_NE(out.message.find(u"notes.journal"), std::u16string::npos);
  EXPECT_EQ(corpus.table(corpus::TableId::Hok).Get(5, 36), u"残る覚え");
  EXPECT_EQ(corpus.HokDirty, 1);
  EXPECT_TRUE(reader.EndNoteEdit(4, u"", u"").message.empty());
}

// The shorter text of a row is padded with ideographic spaces: whole columns
// of its own pane, so that the next row starts level in both.
TEST(SutraPage, ShorterTextsArePaddedWithIdeographicSpaces) {
  corpus::Corpus corpus("/nonexistent");
  corpus.Loaded[2] = 1;
  auto& hok = corpus.table(corpus::TableId::Hok);
  const std::u16string reading(20, u'経');  // two columns of 16
  for (int r = 1; r <= 3; ++r) {
    hok.Set(r, corpus::hok::kChapter, u"序品第一");
    hok.Set(r, 15, reading);
    hok.Set(r, 17, u"訳文");  // one column of 18
  }
  hok.set_rows(3);
  corpus::Selection selection;
  corpus::Settings settings;
  SutraReader reader(corpus, selection, settings, nullptr, 1);
  const reader::ReaderView v = reader.Hyouji();
  EXPECT_EQ(v.BlockLines, 3);
  const std::u16string padded = u"訳文" + std::u16string(18, u'\u3000');
  EXPECT_EQ(v.panes[2].body, u"<DIV style='height:288px; writing-mode:tb-rl;'>" + padded +
                                 u"<BR><BR>" + padded + u"<BR><BR>" + padded);
  EXPECT_EQ(v.panes[1].body, u"<DIV style='height:256px; writing-mode:tb-rl;'>" + reading +
                                 u"<BR><BR>" + reading + u"<BR><BR>" + reading);
}

class Sources : public Scripture {
 protected:
  Sources() : reader(corpus, selection, settings) {}
  int FirstLineOf(int m) const { return search::LineOrder::Sources(corpus).FirstLineOf(m); }
  SourcesReader reader;
};

TEST_F(Sources, HeaderComesFromTheLineAndItsDocument) {
  reader.GoToWork(2);
  const reader::ReaderView v = reader.Hyouji();
  const corpus::Table& smok = corpus.SMok();
  const int doc = corpus.SMokOrder[2];
  EXPECT_EQ(v.Text1, smok.Get(doc, 10));
  EXPECT_EQ(v.Text6, smok.Get(doc, 9));
  EXPECT_EQ(v.Text3, smok.Get(doc, 6));
  EXPECT_EQ(v.Text2, text::ReplaceAll(smok.Get(doc, 11), u"／", u"\u3000"));
  EXPECT_FALSE(Contains(v.Text2, u"／"));
  const int row = corpus.SDatOrder[static_cast<std::size_t>(reader.Lpos())];
  EXPECT_EQ(v.PageBox(1), corpus.SDat().Get(row, corpus::sdat::kSysNo));
  EXPECT_EQ(v.PageBox(10), corpus.SDat().Get(row, 4));
  EXPECT_EQ(v.caption, u"史料 - " + std::u16string(corpus.SDat().Get(row, 6)));
  EXPECT_EQ(v.Text4, corpus.SDat().Get(row, 6));
}

TEST_F(Sources, MovesAndPagesStayInTheirDocument) {
  // Under Limit the document's last line is an end.
  reader.GoToLine(FirstLineOf(2) - 1);
  reader.engine().Limit = true;
  reader.KeyDownAll(kDown, 0);
  EXPECT_EQ(reader.Lpos(), FirstLineOf(2) - 1);
  reader.engine().Limit = false;
  reader.KeyDownAll(kDown, kCtrl);
  EXPECT_EQ(reader.Mpos(), 2);
  EXPECT_EQ(reader.Lpos(), FirstLineOf(2));

  // A vertical page ends with its document.
  reader.SetColumnMeter(std::make_shared<TallMeter>());
  reader.TateInit();
  reader.GoToLine(FirstLineOf(2) - 2);
  reader::ReaderView v = reader.Hyouji();
  EXPECT_EQ(v.BlockLines, 2);
  EXPECT_TRUE(v.panes[3].written);  // the reading beside the main text
  EXPECT_FALSE(v.panes[2].written);
}

TEST_F(Sources, OnePaneFormAndItsSwitches) {
  reader.TateInit();
  EXPECT_TRUE(reader.Command13().redraw);
  EXPECT_EQ(reader.TateOne, 1);
  reader::ReaderView v = reader.Hyouji();
  // The main text is left out; the reading takes the whole height.
  const int both = (settings.SmL1 + settings.SmL2 + 2) * 16;
  EXPECT_TRUE(v.panes[3].body.starts_with(u"<DIV style='height:" + text::IntText(both) + u"px;"));
  EXPECT_FALSE(Contains(v.panes[1].body, reader.table().Text(reader.Lpos(), 10).substr(0, 3)));
  // With Check1 on Command13 is hidden: it does nothing, and TateOne does not hold.
  reader.Check1Click();
  EXPECT_FALSE(reader.Command13().redraw);
  v = reader.Hyouji();
  EXPECT_TRUE(v.panes[2].written);
  EXPECT_TRUE(v.panes[1].body.starts_with(u"<DIV style='height:" +
                                          text::IntText(settings.SmL1 * 16) + u"px;"));
  EXPECT_FALSE(reader.Command6().redraw);
}

TEST_F(Sources, NotesAndPlaceAcrossAChangeOfOrder) {
  reader.GoToWork(3);
  const auto start = reader.StartNoteEdit(4);
  ASSERT_TRUE(start);
  reader.EndNoteEdit(4, *start, *start + u"\r\n追記");
  EXPECT_EQ(corpus.SDatDirty, 1);
  reader.Deactivate();
  const std::u16string line = reader.OldLsys;
  selection.SKn = 1;
  corpus::ApplySourceSelection(corpus, selection);
  reader.FindPlaceAgain();
  EXPECT_EQ(reader.table().Text(reader.Lpos(), corpus::sdat::kSysNo), line);
}

TEST_F(Scripture, WindowsHandTheirRendersOnAndFollowTheOrder) {
  reader::WindowRegistry windows([](reader::FormKind) { return nullptr; });
  const reader::Navigator navigator(corpus, windows);
  SourcesWindow sources(corpus, selection, settings, navigator, nullptr);
  int renders = 0;
  reader::ReaderView last;
  sources.onView = [&](const reader::ReaderView& v) {
    ++renders;
    last = v;
  };
  sources.reader().GoToWork(3);
  sources.SetMuki1(1);
  sources.Hyouji();
  EXPECT_EQ(renders, 1);
  EXPECT_EQ(last.Muki1, 1);
  EXPECT_EQ(last.secondPane, 3);  // the reading, below the text as written
  EXPECT_EQ(last.height1, settings.SmL1 * 16);

  // The box searched again and the line found again in the other order.
  sources.Deactivate();
  const std::u16string line = sources.reader().OldLsys;
  sources.SetCombo1(u"寺");
  selection.SKn = 1;
  corpus::ApplySourceSelection(corpus, selection);
  sources.FollowSelection();
  EXPECT_EQ(renders, 2);
  EXPECT_GT(sources.reader().engine().Srn, 0);
  EXPECT_EQ(sources.reader().table().Text(sources.reader().Lpos(), corpus::sdat::kSysNo), line);

  SutraWindow sutra(reader::FormKind::Form7, corpus, selection, settings, navigator, nullptr);
  EXPECT_EQ(sutra.kind(), reader::FormKind::Form7);
  sutra.reader().GoToRow(212);
  EXPECT_EQ(sutra.Place().Lpos, 212);
}

}  // namespace
}  // namespace suizo::scripture
