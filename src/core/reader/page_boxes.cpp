#include "core/reader/page_boxes.h"

#include "core/corpus/schema.h"
#include "core/text/numbers.h"

namespace suizo::reader {

namespace {

// Val of a stretch of the text, 1-based as the forms are told, as the
// number's own text: leading zeros fall away.
std::u16string V(std::u16string_view t, std::size_t from, std::size_t length) {
  if (from - 1 >= t.size()) return u"0";
  return text::NumberText(text::Val(t.substr(from - 1, length)));
}

std::u16string Last2(std::u16string_view t) {
  return V(t, t.size() >= 2 ? t.size() - 1 : 1, 2);
}

}  // namespace

std::u16string PageBoxText(int box, std::u16string_view s) {
  if (s.empty()) return {};
  switch (box) {
    case 0:
      return std::u16string(s);
    case 22:
    case 23:
    case 25:
    case 28:
    case 29: {
      const std::u16string t = text::Format(s, text::kPageLineBoxFormat);
      return V(t, 1, 4) + u"." + Last2(t);
    }
    case 24: {
      const std::u16string t = text::Format(s, text::kPageLineFormat);
      const double volume = text::Val(t.substr(0, 1));
      const std::u16string prefix = volume > 1 ? text::NumberText(volume) + u"-" : u"";
      return prefix + V(t, 2, 4) + u"." + Last2(t);
    }
    case 26:
    case 27: {
      const std::u16string t = text::Format(s, text::kPageLineBoxFormat);
      return V(t, 1, 2) + u"-" + V(t, 3, 2) + u"." + Last2(t);
    }
    case 32:
      if (s.find(u"ﾅｼ") != std::u16string_view::npos) return std::u16string(s);
      return std::u16string(s.substr(0, 2)) + V(s, 3, 3) + u"." + Last2(s);
    case 36: {
      std::u16string out = std::u16string(s.substr(0, 2)) + V(s, 3, 3);
      if (s.rfind(u'-') != s.find(u'-')) out += s.substr(std::min<std::size_t>(5, s.size()), 2);
      return out + u"." + Last2(s);
    }
    default:
      return std::u16string(s);
  }
}

std::array<std::u16string, kPageBoxes.size()> PageBoxTexts(const corpus::Table& dat, int row) {
  std::array<std::u16string, kPageBoxes.size()> out;
  for (std::size_t i = 0; i < kPageBoxes.size(); ++i) {
    const int box = kPageBoxes[i];
    out[i] = PageBoxText(box, dat.Get(row, box == 0 ? corpus::dat::kSysNo : box));
  }
  return out;
}

bool PageBoxTakes(char16_t key) {
  return (key >= u'0' && key <= u'9') || key == u'-' || key == 8 || key == 3 || key == 22;
}

bool ScripturePageBoxTakes(char16_t key) {
  return (key >= u'0' && key <= u'9') || key == u'.' || key == 8 || key == 3 || key == 22;
}

}  // namespace suizo::reader
