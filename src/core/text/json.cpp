#include "core/text/json.h"

#include <cstdio>

namespace suizo::text {
namespace {

bool High(char16_t u) {
  return u >= 0xD800 && u <= 0xDBFF;
}
bool Low(char16_t u) {
  return u >= 0xDC00 && u <= 0xDFFF;
}

void Escape(std::string& out, char16_t u) {
  char buffer[8];
  std::snprintf(buffer, sizeof buffer, "\\u%04x", static_cast<unsigned>(u));
  out += buffer;
}

void Utf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::string JsonString(std::u16string_view text) {
  std::string out;
  out.reserve(text.size() * 3 + 2);
  out += '"';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t u = text[i];
    if (u == u'"' || u == u'\\') {
      out += '\\';
      out += static_cast<char>(u);
    } else if (u < 0x20 || u == 0x2028 || u == 0x2029) {
      Escape(out, u);
    } else if (High(u) && i + 1 < text.size() && Low(text[i + 1])) {
      Utf8(out, 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (text[i + 1] - 0xDC00));
      ++i;
    } else if (High(u) || Low(u)) {
      Escape(out, u);
    } else {
      Utf8(out, u);
    }
  }
  out += '"';
  return out;
}

}  // namespace suizo::text
