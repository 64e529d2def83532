// The core speaks UTF-16 in standard strings, Qt in QString: the same code
// units either way, so the crossing copies and never converts.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace suizo::platform {

inline QString Q(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::u16string U(const QString& text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text.utf16()),
                        static_cast<std::size_t>(text.size()));
}

}  // namespace suizo::platform
