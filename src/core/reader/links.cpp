#include "core/reader/links.h"

#include <optional>

#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::reader {

namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// Whether `text` at `at` reads as `shape`, where "9" stands for a digit and
// any other unit for itself.
bool Shaped(std::u16string_view text, std::size_t at, std::u16string_view shape) {
  if (at + shape.size() > text.size()) return false;
  for (std::size_t k = 0; k < shape.size(); ++k) {
    const char16_t c = text[at + k];
    if (shape[k] == u'9' ? !IsDigit(c) : c != shape[k]) return false;
  }
  return true;
}

// The length of an ｼｽﾃﾑNo. at `at`: five digits, or five digits, a point
// and a digit; 0 for none.
std::size_t SysNoLength(std::u16string_view text, std::size_t at) {
  if (Shaped(text, at, u"99999.9")) return 7;
  return Shaped(text, at, u"99999") ? 5 : 0;
}

std::u16string Anchor(std::u16string_view href, std::u16string_view shown) {
  return u"<a href='" + std::u16string(href) + u"'>" + std::u16string(shown) + u"</a>";
}

// The scan both link makers share: at each place `length` says how long a
// number to link stands there, `href` what it links to (nothing: stays
// text). The place after a link is passed over, as the scan steps one
// further after moving past the link.
template <typename Length, typename Href>
std::u16string Scan(std::u16string_view text, Length&& length, Href&& href) {
  std::u16string out(text);
  for (std::size_t i = 0; i < out.size(); ++i) {
    const std::size_t n = length(out, i);
    if (n == 0) continue;
    const std::u16string shown = out.substr(i, n);
    const auto target = href(shown);
    if (!target) continue;
    const std::u16string link = Anchor(*target, shown);
    out.replace(i, n, link);
    i += link.size();
  }
  return out;
}

// The first position of the current order whose ｼｽﾃﾑNo. has this value.
int LineOfSysNo(const corpus::Corpus& corpus, double value) {
  const corpus::Table& dat = corpus.Dat();
  for (int k = 1; k <= corpus.DasMaxY; ++k) {
    if (text::Val(dat.Get(corpus.DatOrder[static_cast<std::size_t>(k)], corpus::dat::kSysNo)) ==
        value)
      return k;
  }
  return 0;
}

}  // namespace

std::u16string LinkLines(std::u16string_view text) {
  return Scan(text, SysNoLength,
              [](const std::u16string& s) { return std::optional<std::u16string>(s); });
}

std::u16string LinkRefs(std::u16string_view text, const corpus::Corpus& corpus) {
  // Pass 1: page references, past volume references.
  std::u16string out(text);
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (out.compare(i, 2, u"成仏") == 0) i += 2;
    if (i + 1 < out.size() &&
        std::u16string_view(u"大続全仏").find(out[i]) != std::u16string_view::npos &&
        IsDigit(out[i + 1])) {
      ++i;
      while (i < out.size() &&
             (IsDigit(out[i]) || out[i] == u'.' || (out[i] >= u'a' && out[i] <= u'z')))
        ++i;
      continue;
    }
    std::size_t n = 0;
    if (Shaped(out, i, u"999.99")) n = 6;
    if (Shaped(out, i, u"99.99")) n = 5;
    if (n == 0) continue;
    const std::u16string link = Anchor(out.substr(i, n), out.substr(i, n));
    out.replace(i, n, link);
    i += link.size();
  }
  // Pass 2: ｼｽﾃﾑNo. references to lines of the current order.
  return Scan(out, SysNoLength, [&](const std::u16string& s) -> std::optional<std::u16string> {
    const int k = LineOfSysNo(corpus, text::Val(s));
    if (k == 0) return std::nullopt;
    return u"D" + text::IntText(k);
  });
}

LinkTarget ResolveLink(std::u16string_view href, corpus::Corpus& corpus) {
  if (!href.empty() && href.front() == u'D') {
    return {LinkTarget::Kind::Line, text::ValInt(href.substr(1)), {}};
  }
  const double x = text::Val(href);
  if (x > 65 && x < 722) {
    corpus.ReadData(2);
    const corpus::Table& hok = corpus.table(corpus::TableId::Hok);
    for (int i = 1; i <= hok.rows(); ++i) {
      const double from = text::Val(hok.Get(i, corpus::hok::kKaiketsuPage));
      const double to =
          i + 1 <= hok.rows() ? text::Val(hok.Get(i + 1, corpus::hok::kKaiketsuPage)) : 0;
      if (x >= from && x < to) return {LinkTarget::Kind::Sutra, i, {}};
    }
    return {LinkTarget::Kind::NotFound, 0, {}};
  }
  if (const int k = LineOfSysNo(corpus, x); k != 0) return {LinkTarget::Kind::SysNo, k, {}};
  return {LinkTarget::Kind::NotFound, 0, std::u16string(href) + u"リンク先が見つかりません"};
}

}  // namespace suizo::reader
