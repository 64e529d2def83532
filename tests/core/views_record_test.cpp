#include "core/views/record.h"

#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "core/reader/page_boxes.h"
#include "core/reader/reader_base.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::views {
namespace {

using text::Contains;
namespace key = reader::key;

const RecordPageBox& BoxOf(int box) {
  for (const RecordPageBox& b : kRecordPageBoxes) {
    if (b.box == box) return b;
  }
  throw std::out_of_range("no such box");
}

TEST(RecordTexts, PageFormsDropLeadingZerosAndShowVolumes) {
  EXPECT_EQ(RecordPageText(BoxOf(22), u"0012.05"), u"12.5");  // A
  EXPECT_EQ(RecordPageText(BoxOf(22), u""), u"");
  EXPECT_EQ(RecordPageText(BoxOf(24), u"10123.05"), u"123.5");  // B: volume 1 shows no prefix
  EXPECT_EQ(RecordPageText(BoxOf(24), u"20123.05"), u"2-123.5");
  EXPECT_EQ(RecordPageText(BoxOf(26), u"1203.04"), u"12-3.4");  // C
  EXPECT_EQ(RecordPageText(BoxOf(32), u"1-002.01"), u"1-2.1");  // D
  EXPECT_EQ(RecordPageText(BoxOf(32), u"ﾅｼ"), u"ﾅｼ");
  EXPECT_EQ(RecordPageText(BoxOf(36), u"1-038-2.01"), u"1-38-2.1");  // E with a second "-"
  EXPECT_EQ(RecordPageText(BoxOf(36), u"1-036.02"), u"1-36.2");
  EXPECT_EQ(RecordPageText(BoxOf(0), u"0012.05"), u"0012.05");  // as it stands
}

TEST(RecordTexts, PanesPutEveryDocumentNumberBehindBangou) {
  EXPECT_EQ(BuildPane(u"一／二"), u"一<BR>二");
  EXPECT_EQ(BuildPane(u"番号№1-108"), u"番号1-108");
  EXPECT_EQ(BuildPane(u"№3-12と№4-追Ⅳ"), u"番号3-12と番号4-追Ⅳ");
  // Only the series 1, 3 and 4 are numbers; a № before anything else stays.
  EXPECT_EQ(BuildPane(u"№2-5、№11569"), u"№2-5、№11569");
}

TEST(RecordTexts, WordSelectGrowsToTheRunOfKanji) {
  const std::u16string t = u"かな真蹟集成々の\r\n漢字";
  // A click on 蹟 takes 真 before it and 々 after it, not the kana around.
  EXPECT_EQ(WordSelect(t, 3, 4), (std::pair<std::size_t, std::size_t>{2, 7}));
  // Trailing blanks go; a selection that starts on kana stays as it is.
  EXPECT_EQ(WordSelect(u"かな　", 0, 3), (std::pair<std::size_t, std::size_t>{0, 2}));
  // The line end stops the start.
  EXPECT_EQ(WordSelect(t, 11, 12), (std::pair<std::size_t, std::size_t>{10, 12}));
  // 々 alone does not start a word.
  EXPECT_EQ(WordSelect(t, 6, 7), (std::pair<std::size_t, std::size_t>{6, 7}));
}

// The sample corpus in the system order, with a record on its first document.
class RecordModel : public ::testing::Test {
 protected:
  RecordModel() : corpus(testing::SampleStore()) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
    record = std::make_unique<DocumentRecord>(corpus, selection, settings);
  }

  // The list position of the document with this 番号.
  int At(std::u16string_view bangou) const {
    for (int m = 1; m <= corpus.MosMaxY; ++m) {
      if (corpus.Mok().Get(corpus.MokOrder[static_cast<std::size_t>(m)], corpus::mok::kBangou) ==
          bangou)
        return m;
    }
    return 0;
  }
  int LineOf(std::u16string_view sysNo) const {
    return corpus::FindReaderPlace(corpus, sysNo).Lpos;
  }
  RecordDisplay Show(std::u16string_view bangou) {
    record->Mpos = At(bangou);
    return record->Hyouji();
  }
  static std::u16string Page(const RecordDisplay& v, int box) {
    for (const RecordPageView& p : v.pages) {
      if (p.box == box) return p.text;
    }
    return u"(none)";
  }
  static const std::u16string& Pane(const RecordDisplay& v, int pane) {
    return v.panes[static_cast<std::size_t>(pane)].body;
  }
  std::u16string Link(int position, std::u16string_view text,
                      std::u16string_view prefix = u"") const {
    return u"<a href='" + std::u16string(prefix) + text::IntText(position) + u"'>" +
           std::u16string(text) + u"</a>";
  }

  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
  std::unique_ptr<DocumentRecord> record;
};

TEST_F(RecordModel, HeadBoxesReadTheRecordAndItsHeadLine) {
  const RecordDisplay v = Show(u"3-12  補");
  EXPECT_EQ(v.Bangou, u"3-12\u3000補");  // a double blank shows as one wide blank
  EXPECT_EQ(v.Text2, u"57 歳");
  EXPECT_EQ(v.Text6, u"1278年");
  EXPECT_EQ(Page(v, 0), u"17443");

  corpus.Mok().Set(corpus.MokOrder[static_cast<std::size_t>(At(u"1-110"))], corpus::mok::kDate,
                   u"??");
  EXPECT_EQ(Show(u"1-110").Text6, u" ?? 年");
  const RecordDisplay titled = Show(u"1-103");
  EXPECT_EQ(titled.Text4, u"岩室御返事");
  EXPECT_EQ(titled.Text8, u"滝音記とも");
  EXPECT_EQ(Show(u"1-101").Text8, u"");

  const RecordDisplay first = Show(u"1-101");
  EXPECT_EQ(Page(first, 32), u"1-2.1");
  EXPECT_EQ(Page(first, 36), u"1-38-2.1");
  // The page boxes of the printed collections come from the document's head line.
  const int head = corpus.DatOrder[static_cast<std::size_t>(LineOf(u"10001"))];
  EXPECT_EQ(Page(first, 22), reader::PageBoxText(22, corpus.Dat().Get(head, 22)));
  EXPECT_FALSE(Page(first, 22).empty());
  EXPECT_EQ(Page(Show(u"新加-36"), 32), u"ﾅｼ");
}

TEST_F(RecordModel, DocumentNumbersLinkToTheirListPosition) {
  EXPECT_EQ(LinkDocumentNumbers(u"番号1-106あり", corpus),
            u"番号" + Link(At(u"1-106"), u"1-106") + u"あり");
  // Three characters without "-" are read as series 1.
  EXPECT_EQ(LinkDocumentNumbers(u"番号111と", corpus),
            u"番号" + Link(At(u"1-111"), u"111") + u"と");
  // Read whole, narrowed, then compared; the link keeps the text as written.
  EXPECT_EQ(LinkDocumentNumbers(u"番号４－追Ⅳに", corpus),
            u"番号" + Link(At(u"4-追Ⅳ"), u"４－追Ⅳ") + u"に");
  EXPECT_EQ(LinkDocumentNumbers(u"番号1-999は欠番", corpus), u"番号1-999は欠番");
  // A 番号 with no number behind it is passed over, and the next one found.
  EXPECT_EQ(LinkDocumentNumbers(u"番号は番号1-106", corpus),
            u"番号は番号" + Link(At(u"1-106"), u"1-106"));

  // A document the class filter takes out of the list is no link.
  selection.CSel[5] = 0;
  corpus::ApplySelection(corpus, selection);
  EXPECT_EQ(LinkDocumentNumbers(u"番号1-106", corpus), u"番号1-106");
}

TEST_F(RecordModel, SysNoReferencesLinkToTheReaderOnlyInTheirForms) {
  const auto d = [&](std::u16string_view sysNo) { return Link(LineOf(sysNo), sysNo, u"D"); };
  EXPECT_EQ(LinkSysNos(u"本文は(11301)に", corpus), u"本文は(" + d(u"11301") + u")に");
  EXPECT_EQ(LinkSysNos(u"№11569参照", corpus), u"№" + d(u"11569") + u"参照");
  EXPECT_EQ(LinkSysNos(u"12035は本文の首", corpus), u"12035は本文の首");
  EXPECT_EQ(LinkSysNos(u"(99999)と№99999", corpus), u"(99999)と№99999");
  EXPECT_EQ(LinkSysNos(u"見よ11586.5を", corpus), u"見よ" + d(u"11586.5") + u"を");
  // At a "№" the short form is read last and wins: 11586 stands in the list.
  EXPECT_EQ(LinkSysNos(u"№11586.5", corpus), u"№" + d(u"11586") + u".5");
  // Where only the point form names a line, the place after "№" finds it.
  corpus.Dat().Set(corpus.DatOrder[5], corpus::dat::kSysNo, u"99999.5");
  EXPECT_EQ(LinkSysNos(u"№99999.5", corpus), u"№" + Link(5, u"99999.5", u"D"));
}

TEST_F(RecordModel, PanesAreBuiltThenLinked) {
  const RecordDisplay v = Show(u"1-102");
  EXPECT_EQ(Pane(v, 1), u"御義口伝は年次は推定による。<BR>番号" + Link(At(u"1-107"), u"1-107") +
                            u"と対をなす。№" + Link(LineOf(u"11569"), u"11569", u"D") + u"参照。");
  EXPECT_EQ(Pane(v, 2), u"別題あり<BR>萩露御消息");
  EXPECT_EQ(Pane(v, 3), u"");
  for (int p = 1; p <= kRecordPanes; ++p) EXPECT_TRUE(v.panes[static_cast<std::size_t>(p)].toStart);
  EXPECT_EQ(*v.panes[1].frame, RecordFrame(1));
  EXPECT_TRUE(Contains(*v.panes[1].frame, u"line-height:1.6em; font-size:14px;"));
  EXPECT_TRUE(Contains(*v.panes[2].frame, u"margin-top:3px; line-height:1.2em; font-size:13.5px;"));
  // The frames are written once.
  EXPECT_FALSE(record->Hyouji().panes[1].frame.has_value());
}

TEST_F(RecordModel, ArrowsWalkTheListButNotFromTheReservedSlot) {
  record->Mpos = 1;
  EXPECT_TRUE(record->KeyDownAll(key::kUp, 0).redraw);
  EXPECT_EQ(record->Mpos, 1);
  record->Mpos = corpus.MosMaxY;
  record->KeyDownAll(key::kDown, 0);
  EXPECT_EQ(record->Mpos, corpus.MosMaxY);
  record->KeyDownAll(key::kUp, 0);
  EXPECT_EQ(record->Mpos, corpus.MosMaxY - 1);
  EXPECT_TRUE(record->KeyDownAll(70, key::kCtrl).focusSearchBox);

  // A link to a record the list does not hold: the copy stands in the slot.
  const int row = corpus.MokOrder[3];
  EXPECT_TRUE(record->LinkClick(u"about:-" + text::IntText(row)).redraw);
  ASSERT_EQ(record->Mpos, kReservedSlot);
  EXPECT_EQ(corpus.MokOrder[kReservedSlot], kReservedSlot);
  EXPECT_EQ(corpus.Mok().Get(kReservedSlot, corpus::mok::kTitle),
            corpus.Mok().Get(row, corpus::mok::kTitle));
  const RecordDisplay v = record->Hyouji();
  EXPECT_FALSE(v.Command4Enabled || v.Command5Enabled || v.Command7Enabled);
  // Its head line is found by the ｼｽﾃﾑNo.
  EXPECT_FALSE(Page(v, 22).empty());
  EXPECT_EQ(Page(v, 22), Page(Show(corpus.Mok().Get(row, corpus::mok::kBangou)), 22));
  record->Mpos = kReservedSlot;
  for (const int k : {key::kUp, key::kDown, key::kLeft, key::kRight})
    EXPECT_FALSE(record->KeyDownAll(k, 0).redraw);
  EXPECT_EQ(record->Mpos, kReservedSlot);
  EXPECT_EQ(record->Command5().jump, RecordOutcome::Jump::None);
  EXPECT_TRUE(record->KeyDownAll(key::kF1, 0).openSettings);
  // The dictionary still takes the copy's title.
  EXPECT_EQ(record->Command8(u"").jump, RecordOutcome::Jump::Dictionary);
}

TEST_F(RecordModel, LinksOpenTheReaderOrMoveTheRecord) {
  const RecordOutcome line = record->LinkClick(u"about:D7");
  EXPECT_EQ(line.jump, RecordOutcome::Jump::Reader);
  EXPECT_EQ(line.lpos, 7);
  EXPECT_TRUE(record->LinkClick(u"about:4").redraw);
  EXPECT_EQ(record->Mpos, 4);
  EXPECT_FALSE(CancelsNavigation(u"about:blank"));
  EXPECT_FALSE(record->LinkClick(u"about:blank").redraw);
  EXPECT_FALSE(record->LinkClick(u"about:" + text::IntText(corpus.MosMaxY + 1)).redraw);
  EXPECT_EQ(record->Mpos, 4);
}

TEST_F(RecordModel, SearchIsAndOnlyOverTitlesOrPaneTexts) {
  settings.AutoDiv = 1;  // the record never tries single characters
  record->Mpos = 5;
  record->Combo1 = u"岩室 御";
  RecordOutcome out = record->Kensaku(0);
  EXPECT_FALSE(out.toast);
  ASSERT_EQ(record->Srn, 2);  // 岩室御返事 and 岩室御書, not 岩室消息
  EXPECT_EQ(record->Mpos, At(u"1-103"));
  EXPECT_EQ(record->getSr(1, 1), LineOf(u"10459"));
  EXPECT_EQ(record->getSr(2, 0), At(u"新加-36"));
  EXPECT_EQ(record->Label3Colour, search::kWordColour);
  // "絞込" shows with the result and does nothing.
  EXPECT_TRUE(record->controls.Command14Visible && record->controls.Command14Enabled);
  EXPECT_FALSE(record->controls.Command15Enabled);
  record->Command14();
  EXPECT_EQ(record->RefineCount, 0);

  record->Combo1 = u"岩室 無い";
  out = record->Kensaku(0);
  EXPECT_TRUE(out.toast);
  EXPECT_EQ(record->Mpos, At(u"1-103"));  // nothing found: the place stays
  EXPECT_FALSE(record->controls.Command14Visible);
  EXPECT_EQ(record->Combo.front(), u"岩室 無い");

  // A new target with text in the box searches the built pane text.
  record->Combo1 = u"番号1-107";
  record->SelClick(1);
  ASSERT_EQ(record->Srn, 1);  // its "№1-107" stands behind "番号" once built
  EXPECT_EQ(record->Mpos, At(u"1-102"));

  // Only the searched pane of a hit is marked.
  record->Combo1 = u"萩露";
  record->Label1Click(2);
  ASSERT_EQ(record->Srn, 2);
  EXPECT_EQ(record->Mpos, At(u"1-102"));
  const RecordDisplay v = record->Hyouji();
  EXPECT_EQ(Pane(v, 2), u"別題あり<BR><span>萩露</span>御消息");
  EXPECT_EQ(v.Label3Text, u"1/2");
  record->Mpos = At(u"1-126");  // 萩露記: the title, not pane 2
  EXPECT_FALSE(Contains(Pane(record->Hyouji(), 2), u"<span>"));
  record->Text4Click();
  EXPECT_EQ(record->Srn, 1);
  EXPECT_EQ(record->Mpos, At(u"1-126"));
}

TEST_F(RecordModel, HitWalkAndClearing) {
  record->Combo1 = u"杉原";
  record->Kensaku(0);
  ASSERT_EQ(record->Srn, 2);
  record->SrnBack();
  EXPECT_EQ(record->SrnPos, 1);
  record->KeyDownAll(key::kRight, 0);
  record->KeyDownAll(key::kRight, 0);
  EXPECT_EQ(record->SrnPos, 2);
  EXPECT_EQ(record->Mpos, At(u"1-129"));
  record->Label3Click();
  EXPECT_EQ(record->Srn, 0);
  EXPECT_EQ(record->Combo1, u"");
  EXPECT_EQ(record->Mpos, At(u"1-129"));
  EXPECT_FALSE(record->KeyDownAll(key::kLeft, 0).redraw);
}

TEST_F(RecordModel, LeftPaneSwapOutlivesARedraw) {
  record->Mpos = At(u"1-102");
  const RecordDisplay before = record->Hyouji();
  EXPECT_FALSE(record->PaneDoubleClick(1).has_value());
  const RecordDisplay swapped = *record->PaneDoubleClick(2);
  EXPECT_EQ(Pane(swapped, 1), Pane(before, 2));
  EXPECT_TRUE(swapped.PicVisible && swapped.Text9Visible);
  EXPECT_EQ(swapped.PicPane, 2);
  EXPECT_EQ(swapped.Text9, u"【 書 名 】を表示中");
  EXPECT_TRUE(swapped.panes[2].clearSelection);

  record->Mpos = At(u"新加-36");
  const RecordDisplay next = record->Hyouji();
  EXPECT_EQ(Pane(next, 1), u"別題あり<BR>花園御消息");
  EXPECT_EQ(next.PicPane, 2);

  EXPECT_FALSE(record->PaneClick(3).has_value());
  const RecordDisplay back = *record->Text9Click();
  EXPECT_FALSE(back.PicVisible || back.Text9Visible);
  EXPECT_TRUE(Contains(Pane(back, 1), u"岩室御書は"));
  EXPECT_FALSE(record->PaneClick(1).has_value());
}

TEST_F(RecordModel, FollowsAChangeOfCollectionByTheSystemNumber) {
  record->Mpos = At(u"1-106");
  record->Deactivate();
  selection.Gk = 22;
  selection.MokRedo = 1;
  corpus::ApplySelection(corpus, selection);
  EXPECT_TRUE(record->FollowSelection().redraw);
  EXPECT_EQ(record->Mpos, At(u"1-106"));
  EXPECT_EQ(record->OldMsys, u"11301");
  EXPECT_EQ(record->Hyouji().pages[3].titleColour, reader::kPageOrder);  // PageTitle(22)

  // Gone from the list: the first document. A resizing window does not redraw,
  // but a box with text searches again.
  selection.CSel[5] = 0;
  corpus::ApplySelection(corpus, selection);
  record->Resize = 1;
  EXPECT_FALSE(record->FollowSelection().redraw);
  EXPECT_EQ(record->Mpos, 1);
  record->Combo1 = u"杉原";
  EXPECT_TRUE(record->FollowSelection().redraw);
  EXPECT_EQ(record->Srn, 2);
}

// The record in the registry: its links and buttons go through the jumps.
TEST_F(RecordModel, WindowRunsItsJumpsThroughTheNavigation) {
  reader::WindowRegistry windows([&](reader::FormKind kind) -> std::unique_ptr<reader::OpenWindow> {
    if (kind == reader::FormKind::Form5)
      return std::make_unique<RecordWindow>(corpus, selection, settings);
    return nullptr;
  });
  reader::Navigator navigator(corpus, windows);
  const reader::JumpOutcome opened =
      navigator.GoMok(u"", At(u"1-104"), reader::kFromWritingsContents);
  ASSERT_TRUE(opened.created);
  auto& window = static_cast<RecordWindow&>(*opened.window);
  std::vector<RecordDisplay> shown;
  window.onView = [&](const RecordDisplay& v) { shown.push_back(v); };
  EXPECT_EQ(window.Family(), reader::kWritingsFamily);

  // A link to another record moves this window.
  window.LinkClick(navigator, u"about:" + text::IntText(At(u"1-101")));
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown.back().Text4, u"聖愚問答抄");
  EXPECT_EQ(windows.size(), 1u);

  // A jump with a search reuses the window at that place; the search runs
  // on the title and the jump's place comes last.
  window.model().SrTarget = 3;
  navigator.GoMok(u"白雲", At(u"1-101"), reader::kWritingsFamily);
  EXPECT_EQ(windows.size(), 1u);
  EXPECT_EQ(window.model().Srk, 0);
  EXPECT_EQ(window.model().Srn, 4);
  EXPECT_EQ(window.Mpos(), At(u"1-101"));
  EXPECT_TRUE(window.CancelOnEsc);
  // The contents are asked for, not opened here.
  EXPECT_EQ(window.Follow(navigator, window.model().Command4()).window, nullptr);
  EXPECT_FALSE(window.Minimized);
}

}  // namespace
}  // namespace suizo::views
