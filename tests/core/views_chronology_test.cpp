#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "core/reader/reader_base.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/views/chronology.h"
#include "test_support.h"

namespace suizo::views {
namespace {

namespace nen = corpus::nen;

// The sample corpus as the program has it when the chronology first opens.
class ChronologySample : public ::testing::Test {
 protected:
  ChronologySample() {
    c.ReadData(0);
    c.ReadData(3);
    c.ReadData(6);
    corpus::InitialOrders(c, selection);
  }

  int RowOf(int nenNo) const {
    for (int r = 1; r <= c.Nen().rows(); ++r) {
      if (text::Val(c.Nen().Get(r, nen::kNumber)) == nenNo) return r;
    }
    ADD_FAILURE() << "no event " << nenNo;
    return 0;
  }
  // The list position of an event, or 0 when it is not listed.
  int PositionOf(const Chronology& n, int nenNo) const {
    const auto order = n.NenOrder();
    for (std::size_t p = 1; p < order.size(); ++p) {
      if (text::Val(c.Nen().Get(order[p], nen::kNumber)) == nenNo) return static_cast<int>(p);
    }
    return 0;
  }
  // Stands on an event as a click on its row would.
  void Select(Chronology& n, int nenNo) const {
    const int p = PositionOf(n, nenNo);
    ASSERT_GT(p, 0) << nenNo;
    n.RowChange(p);
  }

  corpus::Corpus c{testing::SampleStore()};
  corpus::Selection selection;
  corpus::Settings settings;
};

using ChronologyAges = ChronologySample;
using ChronologyCells = ChronologySample;
using ChronologyKinds = ChronologySample;
using ChronologyFold = ChronologySample;
using ChronologyLinks = ChronologySample;
using ChronologySearch = ChronologySample;
using ChronologyRefine = ChronologySample;
using ChronologyRows = ChronologySample;
using ChronologyFollow = ChronologySample;

TEST(ChronologyAge, HasNoYearZeroAndCountsOnFromTheDeath) {
  EXPECT_EQ(AgeText(u"1221", 155), u"-1");
  EXPECT_EQ(AgeText(u"1220", 150), u"-2");
  EXPECT_EQ(AgeText(u"1222", 175), u"1");
  EXPECT_EQ(AgeText(u"1290", 1590), u"69");  // the number, not the year, marks the death
  EXPECT_EQ(AgeText(u"1290", 1591), u"9*");
  EXPECT_EQ(AgeText(u"", 1591), u"");
}

TEST_F(ChronologyAges, StandInColumn6OfTheGrid) {
  c.Nen().Set(RowOf(1591), 13, u"1290");
  Chronology n(c, selection, settings);
  EXPECT_EQ(n.Grid().TextMatrix(PositionOf(n, 155), kAgeCol), u"-1");
  EXPECT_EQ(n.Grid().TextMatrix(PositionOf(n, 175), kAgeCol), u"1");
  EXPECT_EQ(n.Grid().TextMatrix(PositionOf(n, 1591), kAgeCol), u"9*");
  EXPECT_EQ(n.Grid().TextMatrix(PositionOf(n, 1593), kAgeCol), u"2*");
}

TEST_F(ChronologyCells, OpenShowsEveryColumnAndPaintsTheCurrentRow) {
  Chronology n(c, selection, settings);
  const views::ChronologyGrid& g = n.Grid();
  EXPECT_EQ(n.NesMaxY(), c.Nen().rows());
  EXPECT_EQ(n.Label5Text(), u"473/473");
  EXPECT_EQ(g.TextMatrix(0, 0), u"天\n皇");
  EXPECT_EQ(g.TextMatrix(0, kEventCol), u"事　　項");
  EXPECT_EQ(g.TextMatrix(1, 2), u"摂)\n近\n衛\n基\n通");  // the store's "@" as line feeds
  EXPECT_EQ(g.Row, 1);
  for (int col = 0; col < kNenCols; ++col) EXPECT_EQ(g.CellBackColor(1, col), kCurrentBack) << col;

  Select(n, 774);  // 分類 3, a letter
  const int p = n.Npos;
  EXPECT_EQ(g.CellBackColor(1, kEraCol), kEraBack);
  EXPECT_EQ(g.CellBackColor(1, kDayCol), kDetailBack);
  EXPECT_EQ(g.CellBackColor(1, 0), kGridBack);
  EXPECT_EQ(g.CellForeColor(p, kEventCol), Bgr(0x003399));
  EXPECT_EQ(g.CellForeColor(1, kEventCol), Bgr(0x777777));  // 分類 0
  EXPECT_EQ(n.Label4(), u"774");
  EXPECT_TRUE(n.Edit().Visible);
  EXPECT_EQ(n.Edit().Text, u"「御義口伝」を著す");
}

TEST_F(ChronologyKinds, FollowTheBoxesOfForm14) {
  Chronology n(c, selection, settings);
  n.NenSel[1] = 0;
  n.NenSort();
  for (const int row : n.NenOrder().subspan(1)) EXPECT_NE(c.Nen().Get(row, 15), u"1");

  n.NenSel = kDefaultNenSel;
  n.NenSel[6] = 0;
  n.NenSort();
  EXPECT_EQ(PositionOf(n, 49), 0);  // "…と伝う"
  EXPECT_GT(PositionOf(n, 47), 0);

  n.NenSel = kDefaultNenSel;
  n.NenSel[7] = 1;
  n.NenSort();
  EXPECT_EQ(c.Nen().Get(n.NenOrder()[1], nen::kNumber), u"175");
  EXPECT_EQ(c.Nen().Get(n.NenOrder().back(), nen::kNumber), u"1605");
}

TEST_F(ChronologyKinds, NoKindLeftEmptiesTheListAndDisablesTheToldEvents) {
  Chronology n(c, selection, settings);
  ChronologyFilterDialog dialog(n.NenSel);
  for (int i = 0; i < 6; ++i) {
    EXPECT_TRUE(dialog.Check2Enabled(6));
    dialog.Check2[static_cast<std::size_t>(i)] = 0;
  }
  EXPECT_FALSE(dialog.Check2Enabled(6));
  EXPECT_TRUE(dialog.Command1(n.NenSel));
  n.FilterChanged();
  EXPECT_EQ(n.NesMaxY(), 0);
  ASSERT_EQ(n.Grid().Rows(), 2);  // one empty row kept, out of sight
  EXPECT_EQ(n.Grid().RowHeight(1), 0);
  EXPECT_EQ(n.Label5Text(), u"0/473");
  n.ShowEdit();
  EXPECT_FALSE(n.Edit().Visible);
  EXPECT_TRUE(n.GoLink(1).empty());
}

TEST(ChronologyFilter, ConfirmTellsAnyChangeEvenOfEqualSum) {
  NenSelection sel = kDefaultNenSel;
  EXPECT_FALSE(ChronologyFilterDialog(sel).Command1(sel));
  ChronologyFilterDialog swapped(sel);
  swapped.Check2[0] = 0;
  swapped.Check2[7] = 1;
  EXPECT_TRUE(swapped.Command1(sel));
  EXPECT_EQ(sel[7], 1);
}

TEST_F(ChronologyFold, OpeningAgainWithoutMovingReturnsToTheSameEvent) {
  Chronology n(c, selection, settings);
  n.Combo1 = u"京都";
  n.Kensaku(0);
  Select(n, 163);  // in the middle of 承久三年
  n.Command13();
  EXPECT_EQ(n.Command13Caption(), u"▼");
  EXPECT_EQ(n.Combo1, u"");  // folding clears the search
  EXPECT_EQ(n.Srn, 0);
  const views::ChronologyGrid& g = n.Grid();
  EXPECT_EQ(g.TextMatrix(g.Row, kEraCol), u"承久三年");
  for (int r = 2; r <= n.NesMaxY(); ++r)
    EXPECT_NE(g.TextMatrix(r, kEraCol), g.TextMatrix(r - 1, kEraCol));
  EXPECT_EQ(g.ColWidth(kEventCol), 0);
  EXPECT_EQ(g.TextMatrix(0, kEventCol), u"");
  EXPECT_EQ(g.CellBackColor(g.Row, kEraCol), kCurrentBack);
  EXPECT_EQ(g.CellBackColor(g.Row, kAgeCol), kEraBack);
  EXPECT_EQ(g.CellBackColor(g.Row, kLinkCol), kFoldedBack);
  EXPECT_FALSE(n.Edit().Visible);

  n.Command13();
  EXPECT_EQ(n.Command13Caption(), u"▲");
  EXPECT_EQ(n.NesMaxY(), 473);
  EXPECT_EQ(n.Nkey, u"163");
  EXPECT_EQ(n.Npos, PositionOf(n, 163));
}

TEST_F(ChronologyFold, AnotherEraOpensAtItsFirstEvent) {
  Chronology n(c, selection, settings);
  Select(n, 163);
  n.KeyDown(kKeySpace);
  n.RowChange(n.Grid().Row + 1);                   // 貞応元年
  n.DblClick(kEraCol, n.Grid().RowHeight(0) - 1);  // on the header: nothing
  EXPECT_EQ(n.Fold, 1);
  n.DblClick(kEraCol, n.Grid().RowHeight(0) + 1);
  EXPECT_EQ(n.Fold, 0);
  EXPECT_EQ(n.Nkey, u"175");
  EXPECT_EQ(n.Grid().TextMatrix(n.Npos, kEventCol), u"聖人、安房国東条郷の漁村に生まる");
}

TEST_F(ChronologyLinks, LiveLinkAndTheBlankOfADocumentFilteredOut) {
  {
    Chronology n(c, selection, settings);
    const int p = PositionOf(n, 774);
    EXPECT_EQ(n.Grid().TextMatrix(p, kLinkCol), u"番号1-102");
    EXPECT_TRUE(n.HandCursor(p, kLinkCol));
    EXPECT_EQ(n.Grid().CellForeColor(p, kLinkCol), kLinkText);
    EXPECT_EQ(n.Grid().TextMatrix(PositionOf(n, 82), kLinkCol), u"旧家伝書第12\n史料12");
  }
  const int klass = static_cast<int>(text::Val(c.Nen().Get(RowOf(774), nen::kClass)));
  selection.CSel[static_cast<std::size_t>(klass)] = 0;
  corpus::ApplySelection(c, selection);
  Chronology n(c, selection, settings);
  const int p = PositionOf(n, 774);
  EXPECT_EQ(n.Grid().TextMatrix(p, kLinkCol), kBlank);
  EXPECT_FALSE(n.HandCursor(p, kLinkCol));
  EXPECT_EQ(n.Grid().CellForeColor(p, kLinkCol), kGreyText);
  Select(n, 774);
  EXPECT_FALSE(n.Command4Enabled);
  EXPECT_TRUE(n.Command4().empty());
  EXPECT_TRUE(n.Click(p, kLinkCol).empty());
}

TEST_F(ChronologyLinks, LeadToTheWorkTheRowOrTheSource) {
  Chronology n(c, selection, settings);
  const int work = corpus::FindContentsPlace(c, u"10154").Mpos;
  Select(n, 774);  // a letter: by its work
  EXPECT_TRUE(n.Command4Enabled && n.Command5Enabled);
  ASSERT_EQ(n.GoLink(1).size(), 1u);
  EXPECT_EQ(n.GoLink(1)[0].target, ChronologyJump::Target::Reader);
  EXPECT_EQ(n.GoLink(1)[0].Mpos, work);
  EXPECT_EQ(n.Command5()[0].target, ChronologyJump::Target::Record);
  EXPECT_EQ(n.KeyDown(kKeyEnter)[0].Mpos, work);

  Select(n, 968);  // a disciple's event: by the row of the text
  ASSERT_EQ(n.GoLink(1).size(), 1u);
  const ChronologyJump line = n.GoLink(1)[0];
  EXPECT_EQ(line.Mpos, 0);
  EXPECT_EQ(c.Dat().Get(c.DatOrder[static_cast<std::size_t>(line.Lpos)], 2), u"12353");
  EXPECT_FALSE(n.Command5Enabled);  // no "番号" in the link

  Select(n, 8);  // 史料番号 1
  EXPECT_TRUE(n.Command9Enabled);
  ASSERT_EQ(n.Command9().size(), 1u);
  EXPECT_EQ(n.Command9()[0].target, ChronologyJump::Target::Sources);
  EXPECT_EQ(c.SMok().Get(c.SMokOrder[static_cast<std::size_t>(n.Command9()[0].Mpos)], 2), u"1");
}

TEST_F(ChronologySearch, WalksTheHitsAndKeepsTheHistoryOfMode0Only) {
  Chronology n(c, selection, settings);
  n.Combo1 = u"地震";
  EXPECT_FALSE(n.Kensaku(0));
  EXPECT_EQ(n.Srn, 6);
  EXPECT_EQ(n.Npos, 17);
  EXPECT_EQ(n.Label3Text(), u"1/6");
  EXPECT_EQ(n.Label3Colour, search::kWordColour);
  EXPECT_TRUE(n.controls.Command14Visible);
  n.SrnBack();
  EXPECT_EQ(n.Npos, 17);
  n.KeyDown(kKeyRight);
  EXPECT_EQ(n.Npos, 43);
  for (int i = 0; i < 8; ++i) n.SrnNext();
  EXPECT_EQ(n.SrnPos, 6);
  EXPECT_EQ(n.Npos, 440);

  n.Combo1 = u"白雲";
  EXPECT_FALSE(n.Kensaku(-1));  // a jump's search
  EXPECT_EQ(n.Npos, 262);
  EXPECT_EQ(n.Combo, std::vector<std::u16string>{u"地震"});
}

TEST_F(ChronologySearch, NothingFoundKeepsThePlaceAndAsksForTheToast) {
  Chronology n(c, selection, settings);
  Select(n, 163);
  n.Combo1 = u"見つからぬ語";
  EXPECT_TRUE(n.Kensaku(0));
  EXPECT_EQ(n.Npos, PositionOf(n, 163));
  EXPECT_EQ(n.Label3Text(), u"0/0");
  n.Combo1 = u"見つからぬ語";
  EXPECT_FALSE(n.Kensaku(-1));
  n.Combo1 = u"   ";
  EXPECT_FALSE(n.Kensaku(0));  // blanks clear
  EXPECT_EQ(n.Combo.size(), 1u);
}

TEST_F(ChronologyRefine, KeepsTheHitsByTheMarkAndGivesThemBack) {
  Chronology n(c, selection, settings);
  n.Combo1 = u"地震";
  n.Kensaku(0);
  ASSERT_TRUE(n.Command14());
  EXPECT_EQ(n.NesMaxY(), 6);
  EXPECT_EQ(n.Combo1, u"");
  EXPECT_EQ(n.Srn, 0);
  EXPECT_EQ(n.controls.RefineLevel, u"■－－－－");
  EXPECT_EQ(c.Nen().Get(RowOf(82), nen::kShown), u"0");
  EXPECT_EQ(c.Nen().Get(RowOf(80), nen::kShown), u"-1");

  n.Combo1 = u"京都";
  n.Kensaku(0);
  EXPECT_EQ(n.Srn, 2);  // only among the kept
  n.Label3Click();      // with a refinement: replayed, the box emptied
  EXPECT_EQ(n.RefineCount, 1);
  EXPECT_EQ(n.NesMaxY(), 6);
  EXPECT_EQ(n.Combo1, u"");

  n.Command15();
  EXPECT_EQ(n.NesMaxY(), 473);
  EXPECT_EQ(c.Nen().Get(RowOf(80), nen::kShown), u"0");
  EXPECT_FALSE(n.controls.Command14Visible);
  EXPECT_FALSE(n.Command14());  // no hits to keep
}

TEST(ChronologyRowHeight, DoublesOncePerMeasureThatDoesNotFit) {
  EXPECT_EQ(FitRowHeight(330, {}), 330);
  const std::array<double, 3> fits = {330, 200, 300};
  EXPECT_EQ(FitRowHeight(330, fits), 330);  // equal is no excess
  const std::array<double, 3> tall = {5000, 5000, 5000};
  EXPECT_EQ(FitRowHeight(330, tall), 2640);  // eight times at most
}

TEST_F(ChronologyRows, AThreeLineEventFitsAndTheRowShrinksOnLeaving) {
  Chronology n(c, selection, settings);
  n.MeasureLab = [](std::u16string_view text, int col) {
    return col == kEventCol && text.size() > 20 ? 990.0 : 300.0;  // three lines of 330
  };
  Select(n, 35);  // the longest event of the first years
  const int p = n.Npos;
  ASSERT_GT(n.Grid().TextMatrix(p, kEventCol).size(), 20u);
  EXPECT_EQ(n.Grid().RowHeight(p), 660);
  n.ShowEdit();
  EXPECT_EQ(n.Grid().RowHeight(p), 1320);
  EXPECT_GE(n.Grid().RowHeight(p), 990);
  EXPECT_EQ(n.Edit().Top, (1320 - 990) / 2.0);
  n.RowChange(p + 1);
  EXPECT_EQ(n.Grid().RowHeight(p), 330);
  EXPECT_EQ(n.Grid().RowHeight(p + 1), 330);
}

TEST_F(ChronologyFollow, ANewSelectionFindsTheEventAgainAndSearchesAgain) {
  reader::WindowRegistry windows([&](reader::FormKind) -> std::unique_ptr<reader::OpenWindow> {
    return std::make_unique<ChronologyWindow>(c, selection, settings);
  });
  reader::Navigator navigator(c, windows);
  const int work = corpus::FindContentsPlace(c, u"10154").Mpos;
  const reader::JumpOutcome out = navigator.GoNen(u"", work, reader::kWritingsFamily);
  ASSERT_NE(out.window, nullptr);
  auto& window = static_cast<ChronologyWindow&>(*out.window);
  Chronology& n = window.model();
  EXPECT_EQ(n.Nkey, u"774");
  EXPECT_EQ(window.Parent, u"@年表");

  // The letter's class goes: the event stays, its link turns blank.
  const int klass = static_cast<int>(text::Val(c.Nen().Get(RowOf(774), nen::kClass)));
  selection.CSel[static_cast<std::size_t>(klass)] = 0;
  corpus::ApplySelection(c, selection);
  n.NenSel[3] = 0;  // and the letters themselves
  window.FollowSelection();
  EXPECT_EQ(n.Nkey, u"769");  // the event before the one passed over
  EXPECT_EQ(n.Clev[static_cast<std::size_t>(klass)], reader::kClevOff);

  n.Combo1 = u"地震";
  n.Kensaku(0);
  n.NenSel[0] = 0;
  EXPECT_TRUE(n.FilterChanged());  // every earthquake is of 分類 0
  EXPECT_EQ(n.Srn, 0);
}

TEST_F(ChronologyFollow, ButtonsAndKeysOfTheWindowAskTheProgramForTheRest) {
  reader::WindowRegistry windows([&](reader::FormKind) -> std::unique_ptr<reader::OpenWindow> {
    return std::make_unique<ChronologyWindow>(c, selection, settings);
  });
  reader::Navigator navigator(c, windows);
  const int work = corpus::FindContentsPlace(c, u"10154").Mpos;
  auto& window = static_cast<ChronologyWindow&>(
      *navigator.GoNen(u"", work, reader::kFromWritingsContents).window);
  int views = 0;
  window.onView = [&] { ++views; };

  // 目次 goes back to the writings' list at the event's work.
  ChronologyAction a = window.Command(2, u"", navigator);
  EXPECT_TRUE(a.contents);
  EXPECT_EQ(a.contentsKind, reader::FormKind::Form9);
  EXPECT_EQ(a.contentsMpos, work);
  EXPECT_EQ(window.model().WorkPlace(true), 0);  // the letter names no source

  // From the sources' side the sources' list, at the event's source.
  Chronology& n = window.model();
  ASSERT_GT(PositionOf(n, 8), 0);
  Select(n, 8);
  window.ParentForm = reader::kFromSourcesContents;
  a = window.Command(2, u"", navigator);
  EXPECT_EQ(a.contentsKind, reader::FormKind::Form15);
  EXPECT_EQ(c.SMok().Get(c.SMokOrder[static_cast<std::size_t>(a.contentsMpos)], 2), u"1");

  EXPECT_TRUE(window.Command(7, u"", navigator).openFilter);
  EXPECT_TRUE(window.KeyDownAll(reader::key::kF1, 0, navigator).openSettings);
  EXPECT_TRUE(window.KeyDownAll(reader::key::kF, reader::key::kCtrl, navigator).focusBox);
  EXPECT_FALSE(window.KeyDownAll(reader::key::kF, 0, navigator).handled);
  EXPECT_FALSE(window.KeyDownAll(reader::key::kDown, 0, navigator).handled);
  EXPECT_FALSE(window.Command(10, u"", navigator).handled);  // no mandala view yet
  EXPECT_EQ(views, 0);  // nothing so far changed what the window shows

  // Space folds and the window repaints; folded, no work is named.
  const int generation = n.Grid().generation;
  window.KeyDownAll(reader::key::kSpace, 0, navigator);
  EXPECT_EQ(n.Fold, 1);
  EXPECT_GT(n.Grid().generation, generation);
  EXPECT_EQ(views, 1);
  EXPECT_EQ(n.WorkPlace(false), 0);
  window.Command(13, u"", navigator);
  EXPECT_EQ(n.Nkey, u"8");  // opened again at the same event
}

}  // namespace
}  // namespace suizo::views
