#include "core/reader/vertical.h"

#include <cmath>

#include "core/corpus/schema.h"
#include "core/reader/frame.h"
#include "core/reader/line_text.h"
#include "core/reader/links.h"
#include "core/text/utf16.h"

namespace suizo::reader {

namespace {

constexpr double kMaxColumns = 28;
constexpr int kCompactTranslationPx = 416;  // 26 characters, whatever `GmL2` says

// A fraction of a column pads nothing: the count is a loop's limit.
std::u16string Breaks(double count) {
  std::u16string out;
  for (int k = 1; k <= count; ++k) out += u"<BR>";
  return out;
}

// Blanks become full-width, and a double one at the start is one indent.
std::u16string Blanks(std::u16string_view raw) {
  std::u16string t = text::ReplaceAll(raw, u" ", u"\u3000");
  if (t.starts_with(u"\u3000\u3000")) t.erase(0, 1);
  return t;
}

// A closing "／" would only add an empty column.
void DropClosingSlash(std::u16string& t) {
  if (t.ends_with(u"／")) t.pop_back();
}

bool SameWork(const Position& a, const Position& b) {
  return a.Mpos == b.Mpos && a.chapter == b.chapter;
}

}  // namespace

VerticalSpec WritingsVerticalSpec(const VerticalSettings& settings, int tateOne) {
  VerticalSpec shape;
  shape.mainColumn = corpus::dat::kMain;  // never the second main text
  shape.secondColumn = corpus::dat::kTranslation;
  shape.chars1 = tateOne == 1 ? settings.GmL1 + settings.GmL2 + 2 : settings.GmL1;
  shape.chars2 = settings.Gcm1 == 1 ? kCompactTranslationPx / 16 : settings.GmL2;
  shape.height1 = shape.chars1 * 16;
  shape.height2 = shape.chars2 * 16;
  shape.second = tateOne != 1;
  return shape;
}

std::u16string VerticalWrapper(int heightPx) {
  return u"<DIV style='height:" + text::IntText(heightPx) + u"px; writing-mode:tb-rl;'>";
}

std::u16string VerticalMainText(std::u16string_view raw, const VerticalSpec& shape, int gk) {
  std::u16string t = Blanks(raw);
  if (shape.writings && gk > 0 && text::Contains(t, kStubMark)) t = CutStub(t);
  DropClosingSlash(t);
  return t;
}

std::u16string VerticalSecondText(std::u16string_view raw, const VerticalSpec& shape) {
  std::u16string t = Blanks(raw);
  DropClosingSlash(t);
  if (shape.writings) t = WithoutNotes(t);
  return t;
}

std::u16string MeasuredLine(std::u16string_view marked) {
  return text::ReplaceAll(marked, u"／", u"<BR>");
}

VerticalPage HyoujiTate(const TextTable& table, VerticalState state, const VerticalSpec& shape,
                        int gk, int authenticScope, const LineMarker& hiLight,
                        const ColumnMeter& meter) {
  const bool one = !shape.second;
  const int height1 = shape.height1;
  const int height2 = shape.height2;
  const std::u16string h1 = VerticalWrapper(height1);
  const std::u16string h2 = VerticalWrapper(height2);

  Position& pos = *state.pos;
  const Position start = pos;
  const int backFill = *state.BackFill;
  int& blockLines = *state.BlockLines;
  blockLines = 0;
  double sum1 = 0;
  double sum2 = 0;
  std::u16string html1, html2, sep1, sep2;
  Position before = pos;

  for (int i = 1; i <= shape.maxLines; ++i) {
    std::u16string t1 = VerticalMainText(
        shape.mainEmpty ? std::u16string_view() : table.Text(pos.Lpos, shape.mainColumn), shape,
        gk);
    t1 = hiLight(t1, shape.mainPane, pos.Lpos);

    std::u16string t2 = VerticalSecondText(
        one ? std::u16string_view() : table.Text(pos.Lpos, shape.secondColumn), shape);
    t2 = hiLight(t2, shape.secondPane, pos.Lpos);

    const double w1 = meter.Columns(MeasuredLine(t1), height1);
    const double w2 = one ? 0 : meter.Columns(MeasuredLine(t2), height2);
    const double d = std::abs(w2 - w1);
    sum1 += w1;
    sum2 += w2;

    const bool grey = shape.writings && authenticScope == 1 &&
                      table.Text(pos.Lpos, corpus::dat::kAutograph).empty();
    const std::u16string_view a = grey ? kGreyOpen : u"";
    const std::u16string_view b = grey ? kGreyClose : u"";

    // Any other value moves nothing, so every further pass would read this
    // same line to the same end.
    if (backFill != 0 && backFill != 1) break;

    if (blockLines != 0 && (sum1 > kMaxColumns || sum2 > kMaxColumns)) {
      if (backFill == 1) pos = before;
      break;
    }

    // The separators stand behind the line: an empty column between lines,
    // and the shorter text padded so that the next line starts level.
    std::u16string next1 = one ? u"<BR>" : u"<BR><BR>";
    std::u16string next2 = t2.empty() ? u"<BR>" : u"<BR><BR>";
    if (!one) {
      sum1 += 1;
      sum2 += 1;
    }
    std::u16string* padded = nullptr;
    if (!one && w1 > w2) {
      padded = shape.writings ? &next2 : &t2;
      sum2 += std::floor(d);
    } else if (w2 > w1) {
      padded = shape.writings ? &next1 : &t1;
      sum1 += std::floor(d);
    }
    // The others fill the shorter text's last column and whole columns more
    // with ideographic spaces: d columns of its own characters.
    if (!shape.writings && padded != nullptr) {
      const bool second = padded == &t2;
      const auto n = static_cast<std::size_t>(std::floor(d)) *
                     static_cast<std::size_t>(second ? shape.chars2 : shape.chars1);
      padded->append(n, u'\u3000');
      // A padded text is no longer empty: it takes the full separator.
      if (second && n > 0) next2 = u"<BR><BR>";
      padded = nullptr;
    }

    if (backFill == 0) {
      if (padded != nullptr) *padded += Breaks(d);
      html1 += sep1;
      html1 += a;
      html1 += t1;
      html1 += b;
      html2 += sep2;
      html2 += a;
      html2 += t2;
      html2 += b;
      ++blockLines;
      sep1 = std::move(next1);
      sep2 = std::move(next2);

      before = pos;
      table.Down(pos, state.limit);
      if (!SameWork(pos, before) || pos.Lpos == before.Lpos) break;
    } else {
      if (padded != nullptr) padded->insert(0, Breaks(d));
      if (i == 1) {
        next1.clear();
        next2.clear();
      }
      html1 = std::u16string(a) + t1 + std::u16string(b) + next1 + html1;
      html2 = std::u16string(a) + t2 + std::u16string(b) + next2 + html2;
      ++blockLines;

      before = pos;
      table.Up(pos, state.limit);
      if (!SameWork(pos, before)) {
        pos = before;  // the page never reaches over the head of a work
        break;
      }
      if (pos.Lpos == before.Lpos) break;
      // The page is full: the line just stepped to is not on it.
      if (i == shape.maxLines) pos = before;
    }
  }

  if (backFill == 1) {
    *state.BackFill = 0;
  } else {
    pos = start;
  }

  VerticalPage page;
  html1 = text::ReplaceAll(html1, u"／", u"<BR>");
  // Under a printed collection the stubs were cut line by line, and with the
  // breaks in no "／" is left to cut from.
  if (shape.writings && gk <= 0 && text::Contains(html1, kStubMark)) html1 = LinkLines(html1);
  page.main = h1 + html1;
  if (!one) {
    html2 = text::ReplaceAll(html2, u"／", u"<BR>");
    page.translation = h2 + (shape.writings ? LinkLines(html2) : html2);
    page.translationWritten = true;
  }
  return page;
}

}  // namespace suizo::reader
