#include "core/reader/horizontal.h"

#include "core/reader/frame.h"
#include "core/reader/line_text.h"
#include "core/reader/links.h"
#include "core/text/utf16.h"

namespace suizo::reader {

using text::ReplaceAll;

HorizontalPanes HyoujiYoko(const TextTable& table, const corpus::Corpus& corpus, int lpos,
                           Highlighter& highlighter, int srn, bool kakkoPressed, int gk,
                           int authenticScope) {
  HorizontalPanes out;
  const bool grey = table.Text(lpos, corpus::dat::kAutograph).empty() && authenticScope == 1;

  // The main text, or its second form when the hit stands only there.
  std::u16string t;
  for (int c = corpus::dat::kMain;;) {
    t = Indented(table.Text(lpos, c));
    if (text::Contains(t, kStubMark)) t = gk > 0 ? CutStub(t) : LinkLines(t);
    t = highlighter.HiLight(t, 0, lpos);
    if (srn > 0 && highlighter.HLerror == 1 && c == corpus::dat::kMain) {
      out.KakkoVisible = true;
      if (!kakkoPressed) {
        c = corpus::dat::kMain2;
        continue;
      }
    }
    break;
  }
  if (grey) t = std::u16string(kGreyOpen) + t + std::u16string(kGreyClose);
  out.html[1] = ReplaceAll(t, u"／", u"<BR>");

  // The translation without its first two notes.
  t = WithoutNotes(table.Text(lpos, corpus::dat::kTranslation));
  if (t.starts_with(u' ')) t = u"\u3000" + std::u16string(text::TrimSpace(t));
  t = highlighter.HiLight(LinkLines(ReplaceAll(t, u"／", u"<BR>")), 1, lpos);
  if (grey) t = std::u16string(kGreyOpen) + t + std::u16string(kGreyCloseTranslation);
  out.html[2] = ReplaceAll(t, u"／", u"<BR>");

  out.html[5] = highlighter.HiLight(
      ReplaceAll(table.Text(lpos, corpus::dat::kNote2), u"／", u"<BR>"), 8, lpos);
  out.html[6] = highlighter.HiLight(
      ReplaceAll(table.Text(lpos, corpus::dat::kNote3), u"／", u"<BR>"), 9, lpos);
  out.html[7] = highlighter.HiLight(
      LinkRefs(ReplaceAll(table.Text(lpos, corpus::dat::kQuotations), u"／", u"<BR>"), corpus), 10,
      lpos);
  return out;
}

}  // namespace suizo::reader
