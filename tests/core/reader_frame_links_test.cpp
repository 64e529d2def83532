#include <gtest/gtest.h>

#include "core/reader/frame.h"
#include "core/reader/links.h"
#include "core/reader/navigation.h"
#include "core/reader/page_boxes.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

using text::Contains;

TEST(Frame, HorizontalPanesDifferOnlyInTheirBodies) {
  EXPECT_EQ(HorizontalFrame(1),
            u"<!DOCTYPE html><style>span{ color:black; font-weight: bold; background-color: "
            u"yellow; }</style>"
            u"<style>a{ color:blue; text-decoration:none; }</style><body scroll=auto "
            u"style='width:98%; margin:auto; "
            u"margin-top:5px; line-height:1.4em; font-size:16px; font-family:ＭＳ ゴシック;'>");
  EXPECT_EQ(HorizontalFrame(2), HorizontalFrame(1));
  EXPECT_TRUE(HorizontalFrame(3).ends_with(
      u"margin-top:0px; line-height:1.3em; font-size:16px; font-family:ＭＳ ゴシック;'>"));
  EXPECT_EQ(HorizontalFrame(4), HorizontalFrame(5));
  EXPECT_TRUE(Contains(HorizontalFrame(5), u"font-size:14px"));
  EXPECT_EQ(HorizontalFrame(6), HorizontalFrame(7));
  EXPECT_TRUE(HorizontalFrame(7).starts_with(u"<!DOCTYPE html>"));
  EXPECT_TRUE(Contains(HorizontalFrame(7), u"<body scroll=auto style='width:97%;"));
}

TEST(Frame, VerticalFrameCarriesTheWheelStep) {
  const std::u16string frame = VerticalFrame(WheelStep(96));
  EXPECT_TRUE(frame.starts_with(
      u"<!DOCTYPE html><script language='javascript'>function handle(delta){if (delta < "
      u"0)scrollBy(-25,0);else scrollBy(25,0);} function wheel(event){var delta = 0;"));
  EXPECT_TRUE(
      Contains(frame, u"if (delta)handle(delta);if (event.preventDefault)event.preventDefault();"));
  EXPECT_TRUE(Contains(
      frame, u"window.onmousewheel = document.onmousewheel = wheel; </script><style>span{"));
  EXPECT_TRUE(frame.ends_with(
      u"<body scroll=auto style='width:98%; margin:auto; margin-top:8px; line-height:1.5em; "
      u"font-size:16px; font-family:ＭＳ ゴシック;'>"));
  EXPECT_TRUE(
      Contains(VerticalFrame(WheelStep(120)), u"scrollBy(-31.25,0);else scrollBy(31.25,0);"));
  // The measuring pane: the compatibility tag in front of the very same frame.
  EXPECT_EQ(MeasuringFrame(25),
            u"<meta http-equiv='X-UA-Compatible' content='IE=9'>" + VerticalFrame(25));
  EXPECT_EQ(ZoomText(96), u"100%");
  EXPECT_EQ(ZoomText(120), u"125%");
}

TEST(Links, LineNumbersOfFiveDigitsWithOrWithoutOneDecimal) {
  EXPECT_EQ(LinkLines(u"（14611に移動）"), u"（<a href='14611'>14611</a>に移動）");
  EXPECT_EQ(LinkLines(u"14611.5と"), u"<a href='14611.5'>14611.5</a>と");
  // After a link the scan steps one further: the next digit is passed over.
  EXPECT_EQ(LinkLines(u"1234567890"), u"<a href='12345'>12345</a>67890");
  EXPECT_EQ(LinkLines(u"1234"), u"1234");
  EXPECT_EQ(LinkLines(u"１４６１１"), u"１４６１１");  // full-width digits are text
  EXPECT_EQ(LinkLines(u""), u"");
}

// A writings order whose lines carry ｼｽﾃﾑNo. 10001.. in reverse table order.
class LinkTargets : public ::testing::Test {
 protected:
  LinkTargets() : corpus("/nonexistent") {
    corpus.DatOrder = {0};
    for (int p = 1; p <= 4; ++p) {
      const int row = 5 - p;
      corpus.Dat().Set(row, corpus::dat::kSysNo, text::IntText(10000 + p));
      corpus.DatOrder.push_back(row);
    }
    corpus.Dat().Set(1, corpus::dat::kSysNo, u"10004.5");  // position 4
    corpus.Dat().set_rows(4);
    corpus.DasMaxY = 4;
    corpus.Loaded[2] = 1;  // the sutra is in memory: pages from 66 on
    auto& hok = corpus.table(corpus::TableId::Hok);
    const char16_t* pages[] = {u"66.01", u"66.10", u"120.03", u"721.15"};
    for (int r = 1; r <= 4; ++r) hok.Set(r, corpus::hok::kKaiketsuPage, pages[r - 1]);
    hok.set_rows(4);
  }
  corpus::Corpus corpus;
};

TEST_F(LinkTargets, ReferencesLinkPagesAndLinesOfTheOrder) {
  EXPECT_EQ(LinkRefs(u"p123.45、12.34", corpus),
            u"p<a href='123.45'>123.45</a>、<a href='12.34'>12.34</a>");
  // Volume references are not pages; "成仏" is a word, not the volume 仏.
  EXPECT_EQ(LinkRefs(u"大12.34a 続3.45", corpus), u"大12.34a 続3.45");
  EXPECT_EQ(LinkRefs(u"仏12.34", corpus), u"仏12.34");
  EXPECT_EQ(LinkRefs(u"成仏12.34", corpus), u"成仏<a href='12.34'>12.34</a>");
  // ｼｽﾃﾑNo. of a line in the order: its position, behind "D"; unknown: text.
  EXPECT_EQ(LinkRefs(u"10002と99999", corpus), u"<a href='D2'>10002</a>と99999");
  EXPECT_EQ(LinkRefs(u"10004.5", corpus), u"<a href='D4'>10004.5</a>");
}

TEST_F(LinkTargets, ClicksLeadToALineTheSutraOrNowhere) {
  using K = LinkTarget::Kind;
  EXPECT_EQ(ResolveLink(u"D3", corpus).kind, K::Line);
  EXPECT_EQ(ResolveLink(u"D3", corpus).position, 3);
  const LinkTarget line = ResolveLink(u"10003", corpus);
  EXPECT_EQ(line.kind, K::SysNo);
  EXPECT_EQ(line.position, 3);
  // Pages of the sutra edition lie strictly between 65 and 722.
  EXPECT_EQ(ResolveLink(u"66.05", corpus).kind, K::Sutra);
  EXPECT_EQ(ResolveLink(u"66.05", corpus).position, 1);
  EXPECT_EQ(ResolveLink(u"120.03", corpus).position, 3);
  const LinkTarget beyond =
      ResolveLink(u"721.20", corpus);  // past the last row's page: no row holds it
  EXPECT_EQ(beyond.kind, K::NotFound);
  EXPECT_TRUE(beyond.message.empty());
  const LinkTarget edge = ResolveLink(u"65", corpus);
  EXPECT_EQ(edge.kind, K::NotFound);
  EXPECT_EQ(edge.message, u"65リンク先が見つかりません");
  EXPECT_EQ(ResolveLink(u"722", corpus).message, u"722リンク先が見つかりません");
}

TEST(PageBoxes, EachCollectionInItsOwnForm) {
  EXPECT_EQ(PageBoxText(0, u"14611.5"), u"14611.5");
  EXPECT_EQ(PageBoxText(22, u"1234.05"), u"1234.5");  // leading zeros fall away
  EXPECT_EQ(PageBoxText(23, u"12.5"), u"12.50");      // line 50
  EXPECT_EQ(PageBoxText(22, u""), u"");
  // 縮冊: a volume prefix from 2 on.
  EXPECT_EQ(PageBoxText(24, u"20043.03"), u"2-43.3");
  EXPECT_EQ(PageBoxText(24, u"10043.03"), u"43.3");
  EXPECT_EQ(PageBoxText(24, u"43.03"), u"43.3");
  // 録内, 録外: volume and page.
  EXPECT_EQ(PageBoxText(26, u"1203.04"), u"12-3.4");
  EXPECT_EQ(PageBoxText(27, u"109.01"), u"1-9.1");
  // 対録: the volume as it stands; "ﾅｼ" is shown as it is.
  EXPECT_EQ(PageBoxText(32, u"1-002.01"), u"1-2.1");
  EXPECT_EQ(PageBoxText(32, u"ﾅｼ"), u"ﾅｼ");
  // 集成: a second "-" brings its part number.
  EXPECT_EQ(PageBoxText(36, u"4-306-2.01"), u"4-306-2.1");
  EXPECT_EQ(PageBoxText(36, u"4-306.01"), u"4-306.1");
  EXPECT_EQ(PageTitleOf(32), 31);
  EXPECT_EQ(PageTitleOf(36), 35);
  EXPECT_EQ(PageTitleOf(22), 22);
}

TEST(PageBoxes, TakeDigitsDashAndEditingKeysOnly) {
  for (const char16_t k : std::u16string(u"0123456789-\b\x03\x16"))
    EXPECT_TRUE(PageBoxTakes(k)) << int(k);
  for (const char16_t k : std::u16string(u".aP \r")) EXPECT_FALSE(PageBoxTakes(k)) << int(k);
  // The sutra's and the sources' boxes: the point instead of the dash.
  for (const char16_t k : std::u16string(u"0123456789.\b\x03\x16"))
    EXPECT_TRUE(ScripturePageBoxTakes(k)) << int(k);
  for (const char16_t k : std::u16string(u"-aP \r"))
    EXPECT_FALSE(ScripturePageBoxTakes(k)) << int(k);
  EXPECT_EQ(ContentsOf(kSourcesFamily), FormKind::Form15);
  EXPECT_EQ(ContentsOf(kWritingsFamily), FormKind::Form9);
}

}  // namespace
}  // namespace suizo::reader
