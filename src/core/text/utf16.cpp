#include "core/text/utf16.h"

#include <unicode/ustring.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace suizo::text {

std::size_t FindAnyUnit(std::u16string_view text, std::u16string_view units, std::size_t from) {
  std::size_t i = from;
#if defined(__SSE2__)
  constexpr std::size_t kMost = 8;
  if (units.size() <= kMost) {
    __m128i wanted[kMost];
    for (std::size_t k = 0; k < units.size(); ++k)
      wanted[k] = _mm_set1_epi16(static_cast<short>(units[k]));
    for (; i + 8 <= text.size(); i += 8) {
      const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
      __m128i hits = _mm_setzero_si128();
      for (std::size_t k = 0; k < units.size(); ++k)
        hits = _mm_or_si128(hits, _mm_cmpeq_epi16(block, wanted[k]));
      const int mask = _mm_movemask_epi8(hits);
      if (mask != 0)
        return i + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask))) / 2;
    }
  }
#endif
  for (; i < text.size(); ++i) {
    if (units.find(text[i]) != std::u16string_view::npos) return i;
  }
  return std::u16string_view::npos;
}

std::u16string ReplaceAll(std::u16string_view text, std::u16string_view from,
                          std::u16string_view to) {
  if (from.empty()) return std::u16string(text);
  std::u16string out;
  out.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t hit = text.find(from); hit != std::u16string_view::npos;
       hit = text.find(from, start)) {
    out.append(text.substr(start, hit - start));
    out.append(to);
    start = hit + from.size();
  }
  out.append(text.substr(start));
  return out;
}

std::u16string_view TrimSpace(std::u16string_view text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  const auto last = text.find_last_not_of(u' ');
  return text.substr(first, last - first + 1);
}

std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view separator) {
  std::vector<std::u16string_view> parts;
  if (text.empty()) return parts;
  if (separator.empty()) {
    parts.push_back(text);
    return parts;
  }
  std::size_t start = 0;
  for (std::size_t hit = text.find(separator); hit != std::u16string_view::npos;
       hit = text.find(separator, start)) {
    parts.push_back(text.substr(start, hit - start));
    start = hit + separator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::string ToUtf8(std::u16string_view text) {
  std::string out(text.size() * 3, '\0');
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &length,
                     reinterpret_cast<const UChar*>(text.data()), static_cast<int32_t>(text.size()),
                     0xFFFD, nullptr, &status);
  out.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
  return out;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string out(text.size(), u'\0');
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()),
                       &length, text.data(), static_cast<int32_t>(text.size()), 0xFFFD, nullptr,
                       &status);
  out.resize(U_SUCCESS(status) ? static_cast<std::size_t>(length) : 0);
  return out;
}

std::u16string IntText(std::int64_t value) {
  const std::string ascii = std::to_string(value);
  return std::u16string(ascii.begin(), ascii.end());
}

}  // namespace suizo::text
