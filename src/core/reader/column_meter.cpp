#include "core/reader/column_meter.h"

#include <algorithm>
#include <string>
#include <vector>

namespace suizo::reader {

namespace {

constexpr int kFull = 16;  // the font size of the vertical frame
constexpr int kHalf = 8;

bool IsAsciiLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool IsAsciiDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
// The blanks HTML collapses into one; U+3000 is not among them.
bool IsCollapsible(char32_t c) {
  return c == U' ' || c == U'\t' || c == U'\n' || c == U'\r' || c == U'\f';
}

bool IsHalfWidth(char32_t c) {
  return (c >= 0x20 && c <= 0x7E) || c == 0xA0 || (c >= 0xFF61 && c <= 0xFF9F) ||
         (c >= 0xFFE8 && c <= 0xFFEE);
}

// Latin runs are words: the browser breaks them only at blanks, and after a
// hyphen or a question mark that a letter or digit follows.
bool IsWordChar(char32_t c) {
  return (c > 0x20 && c <= 0x7E) || c == 0xA0;
}
bool BreaksInsideWord(char32_t before, char32_t after) {
  const bool alnum = (after >= U'0' && after <= U'9') || (after >= U'a' && after <= U'z') ||
                     (after >= U'A' && after <= U'Z');
  return (before == U'-' || before == U'?') && alnum;
}

// The ideographic space may not begin a column, and at a column's end it
// hangs: it takes no room there, and what follows starts the next column.
constexpr char32_t kIdeographicSpace = 0x3000;

bool IsIn(std::u16string_view set, char32_t c) {
  return c <= 0xFFFF && set.find(static_cast<char16_t>(c)) != std::u16string_view::npos;
}

// Japanese line breaking: these may not begin a column, so the character
// before them goes along into the next one. Small kana and the long vowel
// mark count among them, as do the signs that follow a number, and quotes,
// which hold to what stands on either side.
bool IsNonStarter(char32_t c) {
  static constexpr std::u16string_view kNonStarters =
      u"、。，．・：；？！‼⁇⁈⁉゛゜ヽヾゝゞ々〻‐–゠〜）〕］｝〉》」』】〙〗〟‘’“”｡｣､･ﾞﾟ…‥"
      u"ぁぃぅぇぉっゃゅょゎゕゖァィゥェォッャュョヮヵヶーｧｨｩｪｫｬｭｮｯｰ％℃°′″‰¢"
      u"!),.:;?]}%-/|\"'";
  return IsIn(kNonStarters, c) || (c >= 0x31F0 && c <= 0x31FF) || c == kIdeographicSpace;
}
// ...and these may not end one: openers, quotes, and the signs that go
// before a number.
bool IsOpener(char32_t c) {
  static constexpr std::u16string_view kOpeners =
      u"（〔［｛〈《「『【〘〖〝‘’“”｢￥＄£¥€±([{$+\\\"'";
  return IsIn(kOpeners, c);
}

bool BreakBetween(char32_t before, char32_t after) {
  if (IsWordChar(before) && IsWordChar(after)) return BreaksInsideWord(before, after);
  return !IsNonStarter(after) && !IsOpener(before);
}

// A run no break may fall inside, and whether a blank stands in front of it.
struct Segment {
  int px = 0;
  int hanging = 0;  // the ideographic spaces it ends with
  bool blankBefore = false;
};

// Columns a text between two breaks takes: segments fill a column greedily;
// a blank between them takes room only inside a column; a segment longer
// than a column overflows it rather than being split; the spaces a segment
// ends with may hang past the column's end.
int LineColumns(const std::vector<Segment>& segments, int heightPx) {
  if (segments.empty()) return 0;
  int columns = 1;
  int used = 0;
  for (const Segment& s : segments) {
    const int blank = s.blankBefore && used > 0 ? kHalf : 0;
    if (used > 0 && used + blank + s.px - s.hanging > heightPx) {
      ++columns;
      used = s.px;
    } else {
      used += blank + s.px;
    }
  }
  return columns;
}

// Reads `html` as the browser shows it: tags take no room, an entity is one
// character, a "<BR>" ends a line.
class Reader {
 public:
  Reader(std::u16string_view html, int heightPx) : html_(html), heightPx_(heightPx) {}

  int Columns() {
    while (at_ < html_.size()) {
      const char16_t c = html_[at_];
      if (c == u'<' && at_ + 1 < html_.size() && StartsTag(html_[at_ + 1])) {
        Tag();
      } else if (c == u'&') {
        Character(Entity());
      } else if (c >= 0xD800 && c <= 0xDBFF && at_ + 1 < html_.size() && html_[at_ + 1] >= 0xDC00 &&
                 html_[at_ + 1] <= 0xDFFF) {
        Character(0x10000 + ((static_cast<char32_t>(c) - 0xD800) << 10) +
                  (html_[at_ + 1] - 0xDC00));
        at_ += 2;
      } else {
        Character(c);
        ++at_;
      }
    }
    return columns_ + LineColumns(segments_, heightPx_);
  }

 private:
  static bool StartsTag(char16_t c) { return IsAsciiLetter(c) || c == u'/' || c == u'!'; }

  void Tag() {
    const std::size_t end = html_.find(u'>', at_);
    std::u16string_view tag = html_.substr(
        at_ + 1, end == std::u16string_view::npos ? std::u16string_view::npos : end - at_ - 1);
    at_ = end == std::u16string_view::npos ? html_.size() : end + 1;
    if (!tag.empty() && tag.front() == u'/') tag.remove_prefix(1);  // "</br>" breaks as "<br>" does
    if (tag.size() >= 2 && (tag[0] | 0x20) == u'b' && (tag[1] | 0x20) == u'r' &&
        (tag.size() == 2 || tag[2] == u' ' || tag[2] == u'/' || tag[2] == u'\t' ||
         tag[2] == u'\n')) {
      Break();
    }
  }

  // An entity such as "&nbsp;" or "&#12354;"; a lone "&" is itself.
  char32_t Entity() {
    std::size_t k = at_ + 1;
    const bool numeric = k < html_.size() && html_[k] == u'#';
    const bool hex = numeric && k + 1 < html_.size() && (html_[k + 1] | 0x20) == u'x';
    k += numeric ? (hex ? 2 : 1) : 0;
    const std::size_t nameStart = k;
    char32_t value = 0;
    for (; k < html_.size() && k - nameStart < 32; ++k) {
      const char16_t c = html_[k];
      const char16_t lower = c | 0x20;
      if (hex && IsAsciiDigit(c)) {
        value = value * 16 + (c - u'0');
      } else if (hex && lower >= u'a' && lower <= u'f') {
        value = value * 16 + (lower - u'a' + 10);
      } else if (numeric && !hex && IsAsciiDigit(c)) {
        value = value * 10 + (c - u'0');
      } else if (numeric || !(IsAsciiLetter(c) || (k > nameStart && IsAsciiDigit(c)))) {
        break;
      }
      value = std::min<char32_t>(value, 0x10FFFF);
    }
    if (k == nameStart || k >= html_.size() || html_[k] != u';') {
      ++at_;
      return U'&';
    }
    const std::u16string_view name = html_.substr(nameStart, k - nameStart);
    at_ = k + 1;
    if (numeric) return value == 0 ? 0xFFFD : value;
    if (name == u"nbsp") return 0xA0;
    if (name == u"amp" || name == u"lt" || name == u"gt" || name == u"quot" || name == u"apos")
      return U'&';
    return 0x3013;  // other named symbols stand full width in a Japanese font
  }

  void Character(char32_t c) {
    if (IsCollapsible(c)) {
      blank_ = true;
      return;
    }
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return;
    const int px = IsHalfWidth(c) ? kHalf : kFull;
    if (!segments_.empty() && !blank_ && !BreakBetween(last_, c)) {
      segments_.back().px += px;
    } else {
      segments_.push_back({px, 0, blank_});
    }
    Segment& s = segments_.back();
    s.hanging = c == kIdeographicSpace ? s.hanging + px : 0;
    blank_ = false;
    last_ = c;
  }

  // The line ends; an empty one still takes its column.
  void Break() {
    const int line = LineColumns(segments_, heightPx_);
    columns_ += line > 0 ? line : 1;
    segments_.clear();
    blank_ = false;
  }

  std::u16string_view html_;
  int heightPx_;
  std::size_t at_ = 0;
  int columns_ = 0;
  std::vector<Segment> segments_;
  bool blank_ = false;
  char32_t last_ = 0;
};

}  // namespace

double TextColumnMeter::Columns(std::u16string_view html, int heightPx) const {
  return Reader(html, heightPx).Columns();
}

}  // namespace suizo::reader
