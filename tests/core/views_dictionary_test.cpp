#include <gtest/gtest.h>

#include <memory>

#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/reader/reader_base.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/views/dictionary.h"
#include "test_support.h"

namespace suizo::views {
namespace {

namespace dic = corpus::dic;
using text::IntText;

std::u16string Link(std::u16string_view target, std::u16string_view label) {
  return u"<a href='" + std::u16string(target) + u"'>" + std::u16string(label) + u"</a>";
}

TEST(DictionaryTexts, CleanEDropsThePrintedNotesAndBreaksAtSlashes) {
  EXPECT_EQ(CleanE(u"仏の教へ。≪翠蔵用語≫としての解説は、次頁をご覧ください。"), u"仏の教へ。");
  EXPECT_EQ(CleanE(u"資料の解題をご覧ください(上部ﾎﾞﾀﾝ列の「資料」をｸﾘｯｸする)。／二"),
            u"資料の解題をご覧ください。<BR>二");
}

TEST(DictionaryTexts, RelatedTermsRunFromTheArrowToTheNextBreak) {
  auto t = RelatedTerms(u"説明。<BR>⇒菩薩。 如来 。浄土。<BR>後書き。");
  EXPECT_EQ(t[1], u"菩薩");
  EXPECT_EQ(t[2], u"如来");  // blanks trimmed
  EXPECT_EQ(t[3], u"浄土");
  EXPECT_EQ(t[4], u"");  // the last "。" makes no empty term
  // Every arrow goes, and more than eight terms keep the first eight.
  t = RelatedTerms(u"⇒一。二⇒。三。四。五。六。七。八。九。");
  EXPECT_EQ(t[2], u"二");
  EXPECT_EQ(t[8], u"八");
  EXPECT_EQ(RelatedTerms(u"矢印のない解説。")[1], u"");
  EXPECT_EQ(RelatedTerms(u"⇒《次参考》")[1], kNextEntry);
}

// The sample with everything the dictionary links to loaded.
class DictionarySample : public ::testing::Test {
 protected:
  DictionarySample() {
    for (const int group : {0, 1, 2, 4, 5, 6}) c.ReadData(group);
    corpus::InitialOrders(c, selection);
    corpus::ApplySourceSelection(c, selection);
    lookup = std::make_unique<DictionaryLookup>(c, settings.Itaiji);
  }

  // The reading position of the `p`-th line of the writings, by its ｼｽﾃﾑNo.
  std::u16string DatSysNo(int p) const {
    return std::u16string(
        c.Dat().Get(c.DatOrder[static_cast<std::size_t>(p)], corpus::dat::kSysNo));
  }
  int DposOf(std::u16string_view head) const {
    for (int p = 1; p <= c.DisMaxY; ++p) {
      if (c.Dic().Get(c.DicOrder[static_cast<std::size_t>(p)], dic::kHeadWord) == head) return p;
    }
    ADD_FAILURE() << "no entry " << text::ToUtf8(head);
    return 0;
  }
  std::u16string Linked(std::u16string_view t, bool seeRecord = false) const {
    return LinkDic(t, seeRecord, c, selection);
  }

  corpus::Corpus c{testing::SampleStore()};
  corpus::Selection selection;
  corpus::Settings settings;
  std::unique_ptr<DictionaryLookup> lookup;
};

using DictionaryLinks = DictionarySample;
using DictionaryModel = DictionarySample;

TEST_F(DictionaryLinks, LinesOfTheWritingsLinkToTheirReadingPosition) {
  const std::u16string sysNo = DatSysNo(5);
  ASSERT_EQ(sysNo.size(), 5u);
  EXPECT_EQ(Linked(u"〔" + sysNo + u"〕"), u"〔" + Link(u"5", sysNo) + u"〕");
  // Six digits are no reference, even where five of them would be.
  EXPECT_EQ(Linked(u"目録" + sysNo + u"7"), u"目録" + sysNo + u"7");
  // A number no line has, and a line of a class not shown, stay plain.
  EXPECT_EQ(Linked(u"〔49999〕"), u"〔49999〕");
  const int klass = static_cast<int>(text::Val(c.Dat().Get(c.DatOrder[5], corpus::dat::kClass)));
  selection.CSel[static_cast<std::size_t>(klass)] = 0;
  EXPECT_EQ(Linked(sysNo), sysNo);
}

TEST_F(DictionaryLinks, SourcesLinkByTheirNumberOrTheirLine) {
  ASSERT_GT(c.SMosMaxY, 0);
  const int number =
      static_cast<int>(text::Val(c.SMok().Get(c.SMokOrder[1], corpus::smok::kNumber)));
  ASSERT_LT(number, 2000);
  const std::u16string four = text::Format(static_cast<double>(number), "0000");
  EXPECT_EQ(Linked(u"史料番号" + four + u"の記事"), u"史料番号" + Link(u"r1", four) + u"の記事");

  // A line of a source from 50000 up; it counts while its source is kept.
  int p = 1;
  while (p <= c.SDasMaxY && text::Val(c.SDat().Get(c.SDatOrder[static_cast<std::size_t>(p)],
                                                   corpus::sdat::kSysNo)) < 50000)
    ++p;
  ASSERT_LE(p, c.SDasMaxY);
  const int row = c.SDatOrder[static_cast<std::size_t>(p)];
  const std::u16string line(c.SDat().Get(row, corpus::sdat::kSysNo));
  EXPECT_EQ(Linked(u"本文" + line), u"本文" + Link(u"s" + IntText(p), line));
  const double source = text::Val(c.SDat().Get(row, 4));
  for (int r = 1; r <= c.SMok().rows(); ++r) {
    if (text::Val(c.SMok().Get(r, corpus::smok::kNumber)) == source)
      c.SMok().Set(r, corpus::smok::kMark, u"1");
  }
  EXPECT_EQ(Linked(u"本文" + line), u"本文" + line);
}

TEST_F(DictionaryLinks, SeeTheRecordMakesNumbersDocuments) {
  const int row = c.MokOrder[1];
  const std::u16string sysNo(c.Mok().Get(row, corpus::mok::kSysNo));
  EXPECT_EQ(Linked(u"〔" + sysNo + u"〕", true), u"〔" + Link(u"-" + sysNo, sysNo) + u"〕");
  // Not a document's number: no link, though a line may have it.
  const std::u16string notHead = DatSysNo(c.DasMaxY);
  if (notHead != sysNo) {
    EXPECT_EQ(Linked(notHead, true), notHead);
  }
}

TEST_F(DictionaryLinks, SutraRowsUpToTheTableLink) {
  const std::u16string last = IntText(c.table(corpus::TableId::Hok).rows());
  const std::u16string past = IntText(c.table(corpus::TableId::Hok).rows() + 1);
  EXPECT_EQ(Linked(u"[h1]と〔h" + last + u"〕と[h1]"),
            Link(u"h1", u"〔h1〕") + u"と" + Link(u"h" + last, u"〔h" + last + u"〕") + u"と" +
                Link(u"h1", u"〔h1〕"));
  EXPECT_EQ(Linked(u"[h" + past + u"]"), u"[h" + past + u"]");
  EXPECT_EQ(Linked(u"[h12345]"), u"[h12345]");  // five digits are no row
}

TEST_F(DictionaryModel, AnEntryShowsItsFieldsTermsAndLinks) {
  Dictionary d(c, selection, settings, *lookup);
  d.Dpos = DposOf(u"衆生");
  const DictionaryDisplay v = d.Hyouji();
  EXPECT_EQ(v.caption, u"辞書「衆生」");
  EXPECT_EQ(v.Text4, u"衆生");
  EXPECT_EQ(v.Kanren[1].caption, u"菩薩");
  EXPECT_TRUE(v.Kanren[1].enabled);
  EXPECT_TRUE(v.Kanren[8].enabled);
  EXPECT_TRUE(v.frame.has_value());
  EXPECT_FALSE(d.Hyouji().frame.has_value());  // written once per layout
  EXPECT_FALSE(v.Command3Enabled);
  EXPECT_EQ(v.Text3Balloon.substr(0, 4), u"【分類】");

  // "《次参考》" looks up the next entry's head word.
  d.Dpos = DposOf(u"妙法");
  d.Hyouji();
  const DictionaryOutcome next = d.KanrenClick(1);
  EXPECT_EQ(next.jump, DictionaryOutcome::Jump::Dictionary);
  EXPECT_EQ(next.text,
            c.Dic().Get(c.DicOrder[static_cast<std::size_t>(d.Dpos + 1)], dic::kHeadWord));
  EXPECT_EQ(d.KanrenClick(2).jump, DictionaryOutcome::Jump::None);
}

TEST_F(DictionaryModel, LinksLeadToEachKindOfTarget) {
  using Jump = DictionaryOutcome::Jump;
  Dictionary d(c, selection, settings, *lookup);
  d.Dpos = DposOf(u"法華経");
  EXPECT_EQ(d.LinkClick(u"about:blank").jump, Jump::None);
  DictionaryOutcome o = d.LinkClick(u"about:h12");
  EXPECT_EQ(o.jump, Jump::Sutra);
  EXPECT_EQ(o.lpos, 12);
  EXPECT_EQ(o.text, u"法華経");
  o = d.LinkClick(u"r1");
  EXPECT_EQ(o.jump, Jump::Sources);
  EXPECT_EQ(o.mpos, 1);
  o = d.LinkClick(u"s7");
  EXPECT_EQ(o.jump, Jump::Sources);
  EXPECT_EQ(o.lpos, 7);
  o = d.LinkClick(u"about:25");
  EXPECT_EQ(o.jump, Jump::Reader);
  EXPECT_EQ(o.lpos, 25);
  const std::u16string sysNo(c.Mok().Get(c.MokOrder[2], corpus::mok::kSysNo));
  o = d.LinkClick(u"-" + sysNo);
  EXPECT_EQ(o.jump, Jump::Record);
  EXPECT_EQ(o.mpos, 2);
  // The head word handed on stops before its bracket.
  c.Dic().Set(c.DicOrder[static_cast<std::size_t>(d.Dpos)], dic::kHeadWord, u"法華経(①経典)");
  EXPECT_EQ(d.LinkClick(u"h1").text, u"法華経");
  EXPECT_EQ(d.LinkClick(u"-" + sysNo).text, u"法華経");
}

TEST_F(DictionaryModel, AnEntryThatSendsToTheRecordEnablesItsButton) {
  int p = 1;
  while (p <= c.DisMaxY &&
         !text::Contains(c.Dic().Get(c.DicOrder[static_cast<std::size_t>(p)], dic::kExplanation),
                         kSeeRecord))
    ++p;
  ASSERT_LE(p, c.DisMaxY);
  Dictionary d(c, selection, settings, *lookup);
  d.Dpos = p;
  const DictionaryDisplay v = d.Hyouji();
  EXPECT_TRUE(v.Command3Enabled);
  EXPECT_FALSE(text::Contains(v.body, u"ﾎﾞﾀﾝ"));
  EXPECT_TRUE(text::Contains(v.body, u"<a href='-"));
  const DictionaryOutcome o = d.Command3();
  EXPECT_EQ(o.jump, DictionaryOutcome::Jump::Record);
  EXPECT_GT(o.mpos, 0);
}

TEST_F(DictionaryModel, TheSearchStandsOnTheChoiceOrKeepsTheEntry) {
  Dictionary d(c, selection, settings, *lookup);
  d.Combo1 = u"法華経を";
  DictionaryOutcome o = d.Kensaku(0);
  EXPECT_FALSE(o.toast);
  ASSERT_GT(d.Srn, 0);
  EXPECT_EQ(d.Dpos, d.getSr(d.SrnPos));
  EXPECT_EQ(c.Dic().Get(c.DicOrder[static_cast<std::size_t>(d.Dpos)], dic::kHeadWord), u"法華経");
  EXPECT_EQ(d.Hyouji().Label3Colour, kDictionaryHitColour);
  EXPECT_EQ(d.Combo.front(), u"法華経を");

  const int shown = d.Dpos;
  d.Combo1 = u"ゐゑをゐゑを";
  o = d.Kensaku(0);
  EXPECT_TRUE(o.toast);
  EXPECT_EQ(d.Srn, 0);
  EXPECT_EQ(d.Dpos, shown);
  EXPECT_EQ(d.Hyouji().Label3Text, u"0/0");

  // Blanks clear; the walk does nothing without hits.
  d.Combo1 = u"  ";
  EXPECT_FALSE(d.Kensaku(0).toast);
  EXPECT_EQ(d.Combo1, u"");
  EXPECT_FALSE(d.SrnNext().redraw);
}

TEST_F(DictionaryModel, TheExplanationIsMarkedOnlyWhenItWasSearched) {
  Dictionary d(c, selection, settings, *lookup);
  d.Combo1 = u"菩薩";
  d.Kensaku(0);
  EXPECT_FALSE(text::Contains(d.Hyouji().body, u"<span>"));
  d.SelClick(1);
  ASSERT_GT(d.Srn, 0);
  EXPECT_TRUE(text::Contains(d.Hyouji().body, u"<span>菩薩</span>"));
}

TEST_F(DictionaryModel, KeysWalkTheEntriesAndTheHits) {
  namespace key = reader::key;
  Dictionary d(c, selection, settings, *lookup);
  EXPECT_TRUE(d.KeyDownAll(key::kUp, 0).redraw);
  EXPECT_EQ(d.Dpos, 1);
  d.Dpos = c.DisMaxY;
  d.KeyDownAll(key::kDown, 0);
  EXPECT_EQ(d.Dpos, c.DisMaxY);
  EXPECT_TRUE(d.KeyDownAll(key::kF, key::kCtrl).focusSearchBox);
  EXPECT_TRUE(d.KeyDownAll(key::kF1, 0).openSettings);

  d.SrTarget = 1;
  d.Combo1 = u"法華経";
  d.Kensaku(0);
  ASSERT_GT(d.Srn, 1);
  d.KeyDownAll(key::kRight, 0);
  EXPECT_EQ(d.Dpos, d.getSr(d.SrnPos));
  d.KeyDownAll(key::kLeft, 0);
  d.KeyDownAll(key::kLeft, 0);
  EXPECT_EQ(d.SrnPos, 1);
}

TEST_F(DictionaryModel, OneWindowPerWordAndTheFamilyOnItsButtons) {
  reader::WindowRegistry windows([&](reader::FormKind kind) -> std::unique_ptr<reader::OpenWindow> {
    if (kind == reader::FormKind::Form6)
      return std::make_unique<DictionaryWindow>(c, selection, settings, *lookup);
    return nullptr;
  });
  reader::Navigator navigator(c, windows);
  const reader::JumpOutcome opened = navigator.GoJisho(u"衆生", reader::kSourcesFamily);
  ASSERT_TRUE(opened.created);
  auto& window = static_cast<DictionaryWindow&>(*opened.window);
  std::vector<DictionaryDisplay> shown;
  window.onView = [&](const DictionaryDisplay& v) { shown.push_back(v); };
  window.Hyouji();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown.back().Text4, u"衆生");
  EXPECT_EQ(shown.back().Command4Colour, 0xC0E0FFu);
  EXPECT_EQ(shown.back().Command2Caption, reader::kSourcesFamily);

  // The same word again reuses the window; a related term opens another,
  // and this one steps back.
  navigator.GoJisho(u"衆生", reader::kSourcesFamily);
  EXPECT_EQ(windows.size(), 1u);
  const reader::JumpOutcome term = window.Follow(navigator, window.model().KanrenClick(1));
  EXPECT_TRUE(term.created);
  EXPECT_EQ(windows.size(), 2u);
  EXPECT_TRUE(window.Minimized);
  EXPECT_EQ(term.window->Combo1(), u"菩薩");
  // The contents and the way back are the caller's.
  EXPECT_EQ(window.Follow(navigator, window.model().Command4()).window, nullptr);
}

}  // namespace
}  // namespace suizo::views
