#include "core/reader/line_text.h"

namespace suizo::reader {

std::u16string Indented(std::u16string_view t) {
  if (t.starts_with(u"  ")) return u"\u3000" + std::u16string(t.substr(2));
  return std::u16string(t);
}

std::u16string CutStub(std::u16string_view t) {
  return std::u16string(t.substr(0, t.find(u'／')));
}

std::u16string WithoutNotes(std::u16string_view text) {
  std::u16string t(text);
  for (int k = 0; k < 2; ++k) {
    const std::size_t open = t.find(u'＜');
    const std::size_t close = t.find(u'＞');
    if (open == std::u16string::npos || close == std::u16string::npos) break;
    t = t.substr(0, open) + t.substr(close + 1);
  }
  return t;
}

}  // namespace suizo::reader
