#include "core/reader/writings_layout.h"
#include "core/reader/writings_reader.h"

#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "core/reader/frame.h"
#include "core/reader/writings_window.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::reader {
namespace {

using text::Contains;

// The sample corpus in the system order, a reader on its first line.
class Writings : public ::testing::Test {
 protected:
  Writings() : corpus(testing::SampleStore()) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
    reader = std::make_unique<WritingsReader>(corpus, selection, settings);
  }

  void Choose(int gk) {
    selection.MokRedo = gk != selection.Gk ? 1 : 0;
    selection.Gk = gk;
    corpus::ApplySelection(corpus, selection);
  }
  // Puts the reader on the line with this ｼｽﾃﾑNo.
  void At(std::u16string_view sysNo) {
    const corpus::ReaderPlace place = corpus::FindReaderPlace(corpus, sysNo);
    ASSERT_EQ(place.OldLsys, sysNo) << "not in this order";
    reader->GoToLine(place.Lpos);
  }
  std::u16string SysNoHere() const {
    return std::u16string(reader->table().Text(reader->Lpos(), corpus::dat::kSysNo));
  }
  int FirstLineOf(int m) const { return LineOrder::Writings(corpus).FirstLineOf(m); }
  ReaderOutcome Key(int code, int shift = 0) { return reader->KeyDownAll(code, shift); }
  std::u16string Pane(const WritingsView& v, int pane) {
    return v.panes[static_cast<std::size_t>(pane)].body;
  }

  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
  std::unique_ptr<WritingsReader> reader;
};

TEST_F(Writings, LinesMoveWithinAndAcrossWorks) {
  ASSERT_EQ(reader->Mpos(), 1);
  ASSERT_EQ(reader->Lpos(), FirstLineOf(1));
  // The head of work 1 stays, with or without Limit.
  EXPECT_FALSE(Key(key::kUp).redraw);
  reader->engine().Limit = true;
  EXPECT_FALSE(Key(key::kUp).redraw);
  reader->engine().Limit = false;
  EXPECT_EQ(reader->Lpos(), FirstLineOf(1));

  // Up from the head of work 2 goes to the last line of work 1.
  reader->GoToWork(2);
  EXPECT_TRUE(Key(key::kUp).redraw);
  EXPECT_EQ(reader->Mpos(), 1);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(2) - 1);
  EXPECT_EQ(reader->BackFill, 1);  // a vertical page would end here
  // Down crosses back into work 2, at its first line.
  Key(key::kDown);
  EXPECT_EQ(reader->Mpos(), 2);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(2));
  // Under Limit the last line of work 1 is an end.
  reader->GoToLine(FirstLineOf(2) - 1);
  reader->engine().Limit = true;
  Key(key::kDown);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(2) - 1);
  EXPECT_EQ(reader->Mpos(), 1);
  reader->engine().Limit = false;

  // The last line of the last work stays: the data ends, or the next line
  // heads a document that this order does not list.
  reader->GoToWork(corpus.MosMaxY);
  for (int before = -1; before != reader->Lpos();) {
    before = reader->Lpos();
    Key(key::kDown);
  }
  EXPECT_EQ(reader->Mpos(), corpus.MosMaxY);
  const int last = reader->Lpos();
  EXPECT_TRUE(last == corpus.DasMaxY || LineOrder::Writings(corpus).IsHead(last + 1));
  EXPECT_FALSE(Key(key::kDown).redraw && reader->Lpos() != last);
}

TEST_F(Writings, CtrlArrowsJumpByWork) {
  // On the first line of work 1 Ctrl+Up stays and still renders.
  EXPECT_TRUE(Key(key::kUp, key::kCtrl).redraw);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(1));
  // Inside a work the first press goes to its head, the second to the one before.
  reader->GoToLine(FirstLineOf(3) + 2);
  Key(key::kUp, key::kCtrl);
  EXPECT_EQ(reader->Mpos(), 3);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(3));
  Key(key::kUp, key::kCtrl);
  EXPECT_EQ(reader->Mpos(), 2);
  EXPECT_EQ(reader->Lpos(), FirstLineOf(2));
  Key(key::kDown, key::kCtrl);
  EXPECT_EQ(reader->Mpos(), 3);
  // Ctrl+Down on the last work does nothing and does not render.
  reader->GoToWork(corpus.MosMaxY);
  EXPECT_FALSE(Key(key::kDown, key::kCtrl).redraw);
  EXPECT_EQ(reader->Mpos(), corpus.MosMaxY);
  // With no work shown no key acts.
  reader->Mpos() = 0;
  EXPECT_FALSE(Key(key::kDown, key::kCtrl).redraw);
  EXPECT_FALSE(Key(key::kF1).openSettings);
}

TEST_F(Writings, HeadBoxesAndPageBoxes) {
  At(u"17443");
  WritingsView v = reader->Hyouji();
  EXPECT_EQ(v.Bangou, u"3-12 補");  // a double blank shows as one
  At(u"11301");
  v = reader->Hyouji();
  EXPECT_EQ(v.caption, u"本文「滝音御書(別本)」");
  EXPECT_EQ(v.Text4, u"滝音御書");
  EXPECT_EQ(v.Text6, u"(別本)");
  EXPECT_EQ(v.PageBox(0), u"11301");
  At(u"11092");
  v = reader->Hyouji();
  EXPECT_EQ(v.PageBox(32), u"ﾅｼ");  // 対録 without a page shows its mark
  EXPECT_TRUE(v.Text6.empty());
  EXPECT_FALSE(v.Text1.empty());
  EXPECT_EQ(v.Label3Text, u"0/0");
  // The label of the collection in use is coloured by the order.
  Choose(22);
  v = reader->Hyouji();
  EXPECT_EQ(v.clev.PageTitle[22], kPageOrder);
  EXPECT_EQ(v.clev.PageTitle[23], search::kButtonFace);
}

TEST_F(Writings, StubsLinkInTheSystemOrderAndAreCutInACollection) {
  At(u"12862");
  EXPECT_EQ(Pane(reader->Hyouji(), 1),
            u"この段は滝音御書(別本)に移動<BR><a href='11301'>11301</a>");
  Choose(22);
  reader->Deactivate();
  reader->FindPlaceAgain();
  if (SysNoHere() == u"12862") {
    EXPECT_EQ(Pane(reader->Hyouji(), 1), u"この段は滝音御書(別本)に移動");
  } else {
    // Not printed in 定本: a stub that is takes the cut all the same.
    bool seen = false;
    for (int p = 1; p <= corpus.DasMaxY && !seen; ++p) {
      reader->GoToLine(p);
      const std::u16string main(reader->table().Text(p, corpus::dat::kMain));
      if (!Contains(main, u"に移動")) continue;
      seen = true;
      EXPECT_EQ(Pane(reader->Hyouji(), 1), main.substr(0, main.find(u'／')));
    }
    EXPECT_TRUE(seen);
  }
}

TEST_F(Writings, TranslationConventions) {
  At(u"14602");
  // The first two notes go, the third stays.
  const std::u16string t = Pane(reader->Hyouji(), 2);
  EXPECT_FALSE(Contains(t, u"＜注1＞"));
  EXPECT_FALSE(Contains(t, u"＜注2＞"));
  EXPECT_TRUE(Contains(t, u"＜注3＞"));
  At(u"15649");  // a leading blank: one ideographic space in front of the trimmed text
  EXPECT_TRUE(Pane(reader->Hyouji(), 2).starts_with(u"\u3000故郷の母"));
  At(u"11095");  // two leading blanks in the main text: an indent
  EXPECT_TRUE(Pane(reader->Hyouji(), 1).starts_with(u"\u3000檀那の御身"));
}

TEST_F(Writings, GreyLinesKeepTheirHits) {
  // The first line without an autograph, and a word of its own main text.
  int line = 1;
  while (line <= corpus.DasMaxY && (!reader->table().Text(line, corpus::dat::kAutograph).empty() ||
                                    reader->table().Text(line, corpus::dat::kMain).size() < 8)) {
    ++line;
  }
  ASSERT_LE(line, corpus.DasMaxY);
  reader->GoToLine(line);
  const std::u16string word(reader->table().Text(line, corpus::dat::kMain).substr(2, 3));
  reader->engine().Combo1 = word;
  reader->engine().Limit = true;
  reader->Combo1Enter();
  ASSERT_GT(reader->engine().Srn, 0);
  reader->GoToLine(line);
  selection.CSel[10] = 1;  // the autograph scope greys the line, not its hit
  const WritingsView v = reader->Hyouji();
  EXPECT_TRUE(Pane(v, 1).starts_with(kGreyOpen));
  EXPECT_TRUE(Pane(v, 1).ends_with(u"</span>"));
  EXPECT_TRUE(Contains(Pane(v, 1), u"<span>" + word + u"</span>"));
  EXPECT_TRUE(Pane(v, 2).starts_with(kGreyOpen));
  EXPECT_TRUE(Pane(v, 2).ends_with(u"</span2>"));  // the translation's grey is left open
  selection.CSel[10] = 0;
  EXPECT_FALSE(Pane(reader->Hyouji(), 1).starts_with(kGreyOpen));
}

TEST_F(Writings, QuotationIndexLinksPagesLinesAndLeavesVolumes) {
  At(u"16610");
  const std::u16string index = Pane(reader->Hyouji(), 7);
  EXPECT_TRUE(Contains(index, u"開結<a href='384.41'>384.41</a>"));
  EXPECT_TRUE(Contains(index, u"大12.3a"));
  EXPECT_TRUE(Contains(index, u">10695</a>"));
  EXPECT_TRUE(Contains(index, u"99999"));
  EXPECT_FALSE(Contains(index, u">99999<"));

  // Every kind of target.
  const int before = reader->Mpos();
  ReaderOutcome out = reader->LinkClick(u"10695");
  EXPECT_TRUE(out.redraw);
  EXPECT_EQ(SysNoHere(), u"10695");
  EXPECT_EQ(reader->Mpos(), before);  // only the line moves
  out = reader->LinkClick(u"384.41");
  EXPECT_EQ(out.jump, ReaderOutcome::Jump::SutraRow);
  EXPECT_GT(out.jumpPosition, 0);
  out = reader->LinkClick(u"D7");
  EXPECT_EQ(out.jump, ReaderOutcome::Jump::WritingsLine);
  EXPECT_EQ(out.jumpPosition, 7);
  out = reader->LinkClick(u"99999");
  EXPECT_EQ(out.message, u"99999リンク先が見つかりません");
}

TEST_F(Writings, SideAndFormChooseTheThirdPane) {
  At(u"10003");
  WritingsView v = reader->Hyouji();
  const std::u16string autograph(reader->table().Text(reader->Lpos(), corpus::dat::kAutograph));
  ASSERT_FALSE(autograph.empty());
  ASSERT_FALSE(reader->table().Text(reader->Lpos(), corpus::dat::kCopy).empty());
  EXPECT_EQ(v.SinSyaCaption, u"写");  // the other side holds a copy
  EXPECT_EQ(v.SinSyaColour, 0x99FFFFu);
  EXPECT_EQ(v.panes[3].colour, kTranslationColour);
  EXPECT_TRUE(v.tabVisible[2] && !v.tabVisible[3] && v.tabVisible[6] && !v.tabVisible[7]);
  EXPECT_EQ(Pane(v, 3), text::ReplaceAll(text::ReplaceAll(autograph, u"\n", u"/"), u"／", u" / "));
  EXPECT_EQ(Pane(v, 4), u"真蹟は下総の寺に蔵す。日付は後筆か");
  EXPECT_EQ(v.TyoKatCaption, u"活");
  reader->TyoKatButton();
  v = reader->Hyouji();
  EXPECT_TRUE(v.tabVisible[3] && !v.tabVisible[2]);
  EXPECT_EQ(v.TyoKatCaption, u"直");
  // S flips the side: pane 3 takes the copies' colour and text.
  Key(key::kS);
  v = reader->Hyouji();
  EXPECT_EQ(v.panes[3].colour, kCopyColour);
  EXPECT_TRUE(v.tabVisible[5] && v.tabVisible[7] && !v.tabVisible[6]);
  EXPECT_EQ(v.SinSyaCaption, u"真");  // the other side holds an autograph
  EXPECT_EQ(v.SinSyaColour, 0xFF80FFu);
  // Only in the horizontal layout.
  reader->TateInit();
  EXPECT_FALSE(reader->SinSyaButton().redraw);
  EXPECT_EQ(reader->SinSya, 1);
}

TEST_F(Writings, TheSecondTextFormStandsInForAHitOnlyItHas) {
  settings.Itaiji = 0;  // "實" alone, not its variant
  At(u"10014");
  reader->engine().Combo1 = u"實の心";
  reader->engine().Limit = true;
  reader->Combo1Enter();
  ASSERT_EQ(reader->engine().getSrf(reader->Lpos()), 1);
  At(u"10014");
  WritingsView v = reader->Hyouji();
  EXPECT_TRUE(v.KakkoVisible);
  EXPECT_TRUE(Contains(Pane(v, 1), u"<span>實の心</span>"));
  // Kakko pressed keeps the first form, without the mark.
  EXPECT_TRUE(reader->KakkoClick().redraw);
  v = reader->Hyouji();
  EXPECT_TRUE(v.KakkoVisible);
  EXPECT_TRUE(Contains(Pane(v, 1), u"実の心"));
  EXPECT_FALSE(Contains(Pane(v, 1), u"<span>"));
}

TEST_F(Writings, FramesAreWrittenOncePerLayout) {
  WritingsView v = reader->Hyouji();
  for (int p = 1; p <= kPanes; ++p) {
    ASSERT_TRUE(v.panes[static_cast<std::size_t>(p)].frame) << p;
    EXPECT_EQ(*v.panes[static_cast<std::size_t>(p)].frame, HorizontalFrame(p));
    EXPECT_EQ(v.panes[static_cast<std::size_t>(p)].colour,
              kHorizontalColours[static_cast<std::size_t>(p)]);
  }
  EXPECT_EQ(v.zoom, u"100%");
  EXPECT_TRUE(v.scrollPanesToTop);
  v = reader->Hyouji();
  EXPECT_FALSE(v.panes[1].frame);

  // The space bar switches once per repeat gap above 50 ms.
  std::int64_t now = 1000;
  reader->SetClock([&] { return now; });
  EXPECT_TRUE(Key(key::kSpace).redraw);
  now += 30;
  EXPECT_FALSE(Key(key::kSpace).redraw);
  now += 30;
  EXPECT_FALSE(Key(key::kSpace).redraw);  // still within 50 ms of the last press
  EXPECT_EQ(reader->Muki1, 1);
  v = reader->Hyouji();
  EXPECT_EQ(*v.panes[1].frame, VerticalFrame(25));
  EXPECT_EQ(*v.panes[2].frame, VerticalFrame(25));
  EXPECT_EQ(*v.measuringFrame, MeasuringFrame(25));
  EXPECT_FALSE(v.panes[5].frame);
  EXPECT_FALSE(v.panes[5].written);  // the note panes keep their last horizontal text
  EXPECT_TRUE(v.panes[3].written);
  EXPECT_TRUE(v.panes[2].written);  // the translation, beside the text
  EXPECT_TRUE(Pane(v, 1).starts_with(u"<DIV style='height:256px; writing-mode:tb-rl;'>"));
  now += 100;
  EXPECT_TRUE(Key(key::kSpace).redraw);
  EXPECT_EQ(reader->Muki1, 0);
}

TEST_F(Writings, VerticalDownStepsByBlockAndOkuriByLine) {
  reader->TateInit();
  WritingsView v = reader->Hyouji();
  ASSERT_GT(v.BlockLines, 1);
  const int first = reader->Lpos();
  Key(key::kDown);
  EXPECT_EQ(reader->Lpos(), first + v.BlockLines);
  reader->Okuri = 1;
  reader->Hyouji();
  Key(key::kDown);
  EXPECT_EQ(reader->Lpos(), first + v.BlockLines + 1);
  // Okuri's Up moves one line without filling backwards.
  Key(key::kUp);
  EXPECT_EQ(reader->BackFill, 0);
  EXPECT_EQ(reader->Lpos(), first + v.BlockLines);
}

TEST_F(Writings, NotesAreEditedInTheirPanes) {
  At(u"10012");
  EXPECT_FALSE(reader->StartNoteEdit(3));
  const auto start = reader->StartNoteEdit(5);
  ASSERT_TRUE(start);
  EXPECT_EQ(*start, u"作業の覚え\r\n末尾に追而書あり");
  reader->EndNoteEdit(5, *start, *start);
  EXPECT_EQ(corpus.DatDirty, 0);  // unchanged: nothing to save
  reader->EndNoteEdit(5, *start, u"作業の覚え\r\n二行目\r\n三行目");
  EXPECT_EQ(corpus.DatDirty, 1);
  EXPECT_EQ(reader->table().Text(reader->Lpos(), corpus::dat::kNote2),
            u"作業の覚え／二行目／三行目");
  EXPECT_EQ(Pane(reader->Hyouji(), 5), u"作業の覚え<BR>二行目<BR>三行目");
}

TEST_F(Writings, PlaceIsFoundAgainAfterAChangeOfCollection) {
  At(u"11301");
  reader->Deactivate();
  EXPECT_EQ(reader->OldLsys, u"11301");
  Choose(28);
  reader->FindPlaceAgain();
  if (corpus::FindReaderPlace(corpus, u"11301").OldLsys == u"11301") {
    EXPECT_EQ(SysNoHere(), u"11301");
  }
  EXPECT_GE(reader->Mpos(), 1);
}

TEST_F(Writings, HitCounterFollowsThePosition) {
  reader->engine().Combo1 = u"春の雨";
  reader->Combo1Enter();
  ASSERT_GT(reader->engine().Srn, 2);
  const int line = reader->engine().getSr(3, 1);
  reader->GoToLine(line);
  reader->Hyouji2();
  EXPECT_EQ(reader->engine().SrnPos, 3);
  EXPECT_EQ(reader->Hyouji().Label3Text, u"3/" + text::IntText(reader->engine().Srn));
  Key(key::kRight);
  EXPECT_EQ(reader->engine().SrnPos, 4);
}

// Readers opened by jumps: the registry holds them in creation order.
TEST_F(Writings, LinksAndJumpsOpenOrRaiseReaders) {
  int renders = 0;
  std::unique_ptr<Navigator> navigator;
  WindowRegistry windows([&](FormKind kind) -> std::unique_ptr<OpenWindow> {
    if (kind != FormKind::Form2) return nullptr;
    auto window = std::make_unique<WritingsWindow>(corpus, selection, settings, *navigator);
    window->onView = [&](const WritingsView&) { ++renders; };
    return window;
  });
  navigator = std::make_unique<Navigator>(corpus, windows);

  JumpOutcome out = navigator->GoHonbun(u"", 0, 10, search::Method::And, 0, u"翠典本文");
  ASSERT_TRUE(out.created);
  auto& first = dynamic_cast<WritingsWindow&>(*out.window);
  EXPECT_EQ(first.Place().Lpos, 10);
  EXPECT_EQ(first.Place().Mpos, corpus::LineToWork(corpus, 10));
  EXPECT_EQ(first.ParentForm, u"翠典");
  EXPECT_GT(renders, 0);

  // A line link opens the line in a reader of the same family; a second
  // click on it raises that reader instead of opening another.
  first.LinkClick(*navigator, u"D20");
  ASSERT_EQ(windows.OfKind(FormKind::Form2).size(), 2u);
  auto& second = dynamic_cast<WritingsWindow&>(*windows.OfKind(FormKind::Form2)[1]);
  EXPECT_EQ(second.Place().Lpos, 20);
  first.LinkClick(*navigator, u"D20");
  EXPECT_EQ(windows.OfKind(FormKind::Form2).size(), 2u);

  // A jump with a search runs it with the jump's kind of search.
  out = navigator->GoHonbun(u"春の雨　山の寺", 0, 0, search::Method::Or, 1, u"翠典");
  auto& third = dynamic_cast<WritingsWindow&>(*out.window);
  EXPECT_TRUE(out.created);
  EXPECT_EQ(third.Muki1(), 1);
  EXPECT_EQ(third.reader().engine().LastMethod(), search::Method::Or);
  EXPECT_GT(third.reader().engine().Srn, 0);
  EXPECT_EQ(navigator->JumpMethod(), search::Method::And);
}

TEST(PaneKeys, BrowserCommandsAreBarredAndArrowsMove) {
  using A = PaneKey::Action;
  EXPECT_EQ(PaneKeyDown(key::kS, false, false, false, true).action, A::CloseMenu);
  EXPECT_EQ(PaneKeyDown(27, false, false, false, true).action,
            A::Pass);  // Esc closes through the window
  EXPECT_EQ(PaneKeyDown(key::kF, false, true, false, false).action, A::FocusSearch);
  for (const int k : {80, 78, 79, 76, 187, 189, 48})
    EXPECT_EQ(PaneKeyDown(k, false, true, false, false).action, A::Swallow);
  EXPECT_EQ(PaneKeyDown(80, false, false, false, false).action, A::Pass);  // P alone is a letter
  EXPECT_EQ(PaneKeyDown(67, false, true, false, false).action, A::Copy);
  EXPECT_EQ(PaneKeyDown(116, false, false, false, false).action, A::Swallow);
  const PaneKey up = PaneKeyDown(key::kUp, true, true, false, false);
  EXPECT_EQ(up.action, A::Move);
  EXPECT_EQ(up.shift, key::kShift | key::kCtrl);
  EXPECT_EQ(PaneKeyDown(key::kS, false, false, false, false).action,
            A::Pass);  // letters act outside the panes
}

TEST(DoubleClick, SelectsTheRunOfKanji) {
  const std::u16string t = u"の観念の窓をabc漢字\r\n法華経";
  EXPECT_EQ(KanjiRunAround(t, 2, 3), (std::pair<std::size_t, std::size_t>{1, 3}));  // 観念
  EXPECT_EQ(KanjiRunAround(t, 0, 1),
            (std::pair<std::size_t, std::size_t>{0, 1}));  // kana: as clicked
  EXPECT_EQ(KanjiRunAround(t, 6, 7),
            (std::pair<std::size_t, std::size_t>{6, 7}));  // ASCII is no kanji
  // Single-byte characters next to kanji pass the code test; a line end stops the run.
  EXPECT_EQ(KanjiRunAround(t, 9, 10).first, 6u);
  EXPECT_EQ(KanjiRunAround(t, 14, 15),
            (std::pair<std::size_t, std::size_t>{12, 16}));  // LF passes, CR stops
  // Trailing blanks of the selection fall away first.
  EXPECT_EQ(KanjiRunAround(u"あ\u3000 ", 0, 3), (std::pair<std::size_t, std::size_t>{0, 1}));
}

TEST(WritingsLayout, PanesFollowTheLayoutSwitches) {
  WritingsLayoutState s;
  s.tabVisible = std::vector<bool>(11, true);
  s.tabVisible[3] = s.tabVisible[4] = s.tabVisible[5] = s.tabVisible[7] = false;

  // Across: seven panes, the notes row at the bottom sets the height.
  WritingsLayout full = LayOutWritings(s);
  for (int p = 1; p <= 7; ++p) EXPECT_TRUE(full.panes[static_cast<std::size_t>(p)].visible) << p;
  EXPECT_EQ(full.height, full.panes[5].bottom() + 8);
  EXPECT_TRUE(full.tabs[2].visible);
  EXPECT_FALSE(full.tabs[3].visible);  // pane 3 shows one of its four texts
  EXPECT_EQ(full.tabs[2].y, full.panes[3].y);
  EXPECT_FALSE(full.Command10 || full.Command13 || full.Command16);

  // Compact: the notes row lies outside, or moves up over the second row.
  s.Gcm1 = 1;
  const WritingsLayout shown = LayOutWritings(s);
  EXPECT_FALSE(shown.panes[5].visible);
  EXPECT_TRUE(shown.Command10);
  EXPECT_LT(shown.height, full.height);
  s.GcmShow = 0;
  const WritingsLayout notes = LayOutWritings(s);
  EXPECT_TRUE(notes.panes[5].visible);
  EXPECT_FALSE(notes.panes[2].visible || notes.panes[4].visible);
  EXPECT_EQ(notes.panes[5].y, shown.panes[2].y);

  // Down: the panes are as tall as the columns the settings ask for.
  s = {.Muki1 = 1, .GmL1 = 20, .GmL2 = 10, .tabVisible = std::vector<bool>(11, true)};
  const WritingsLayout down = LayOutWritings(s);
  EXPECT_EQ(down.panes[1].h, 16 * 20 + 24);
  EXPECT_EQ(down.panes[2].h, 16 * 10 + 32);
  EXPECT_GT(down.panes[2].y, down.panes[1].bottom());
  for (int p = 3; p <= 7; ++p) EXPECT_FALSE(down.panes[static_cast<std::size_t>(p)].visible) << p;
  EXPECT_TRUE(down.Command13);
  EXPECT_EQ(down.height, down.panes[2].bottom() + 8);

  // One pane takes the place of both.
  s.TateOne = 1;
  s.tabVisible[1] = false;
  const WritingsLayout one = LayOutWritings(s);
  EXPECT_FALSE(one.panes[2].visible);
  EXPECT_FALSE(one.tabs[1].visible);
  EXPECT_EQ(one.panes[1].bottom(), down.panes[2].bottom());

  // Compact down: the two lie on one place, the swap choosing the top one.
  s = {.Muki1 = 1, .Gcm1 = 1, .CompactSwap = 1, .tabVisible = std::vector<bool>(11, true)};
  const WritingsLayout compact = LayOutWritings(s);
  EXPECT_EQ(compact.panes[1].y, compact.panes[2].y);
  EXPECT_EQ(compact.panes[1].h, compact.panes[2].h);
  EXPECT_EQ(compact.paneOnTop, 2);
  EXPECT_TRUE(compact.Command16);
  EXPECT_FALSE(compact.Command13);
  EXPECT_TRUE(compact.tabs[1].visible);
  EXPECT_FALSE(compact.tabs[0].visible);
}

TEST(WritingsLayout, TheScriptureReadersFourPanes) {
  // Across: all four, the notes at the bottom right.
  const WritingsLayout across = LayOutScripture({});
  for (int p = 1; p <= 4; ++p) EXPECT_TRUE(across.panes[static_cast<std::size_t>(p)].visible) << p;
  EXPECT_FALSE(across.panes[5].visible);
  EXPECT_GT(across.panes[4].x, across.panes[2].x);
  EXPECT_EQ(across.height, across.panes[4].bottom() + 8);

  // Down: the main page over the second one, each as tall as its columns;
  // the pane of the second text is the reader's choice.
  const WritingsLayout down =
      LayOutScripture({.Muki1 = 1, .secondPane = 3, .height1 = 288, .height2 = 256});
  EXPECT_EQ(down.panes[1].h, 288 + 24);
  EXPECT_EQ(down.panes[3].h, 256 + 32);
  EXPECT_FALSE(down.panes[2].visible || down.panes[4].visible);
  EXPECT_TRUE(down.tabs[2].visible);
  EXPECT_FALSE(down.tabs[1].visible);
  EXPECT_EQ(down.height, down.panes[3].bottom() + 8);

  // An empty main text: the second page alone.
  const WritingsLayout alone =
      LayOutScripture({.Muki1 = 1, .secondPane = 3, .height2 = 576, .mainEmpty = true});
  EXPECT_FALSE(alone.panes[1].visible);
  EXPECT_EQ(alone.panes[3].y, down.panes[1].y);

  // Compact: one place, the flipped pane on top.
  const WritingsLayout compact =
      LayOutScripture({.Muki1 = 1, .Gcm1 = 1, .secondPane = 2, .compactTop = 2});
  EXPECT_EQ(compact.panes[1].y, compact.panes[2].y);
  EXPECT_EQ(compact.paneOnTop, 2);
  EXPECT_TRUE(compact.Command16);
  EXPECT_FALSE(compact.tabs[0].visible);
}

}  // namespace
}  // namespace suizo::reader
