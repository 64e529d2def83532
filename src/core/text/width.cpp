#include "core/text/width.h"

#include <unicode/translit.h>
#include <unicode/unistr.h>

#include <memory>
#include <stdexcept>

namespace suizo::text {
namespace {

const icu::Transliterator& FullToHalf() {
  // Transliterators are costly to build and not to be shared across threads.
  thread_local std::unique_ptr<icu::Transliterator> instance = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> t(
        icu::Transliterator::createInstance("Fullwidth-Halfwidth", UTRANS_FORWARD, status));
    if (U_FAILURE(status) || !t) {
      throw std::runtime_error(std::string("ICU has no Fullwidth-Halfwidth transform: ") +
                               u_errorName(status));
    }
    return t;
  }();
  return *instance;
}

}  // namespace

std::u16string Narrow(std::u16string_view text) {
  icu::UnicodeString s(false, reinterpret_cast<const UChar*>(text.data()),
                       static_cast<int32_t>(text.size()));
  FullToHalf().transliterate(s);
  std::u16string out(reinterpret_cast<const char16_t*>(s.getBuffer()),
                     static_cast<std::size_t>(s.length()));
  // In Shift-JIS the half-width yen and overline are the single bytes 0x5C and
  // 0x7E; Unicode's own half-width forms of them have no place in the store.
  for (char16_t& c : out) {
    if (c == u'\u00A5') c = u'\\';
    if (c == u'\u00AF') c = u'~';
  }
  return out;
}

}  // namespace suizo::text
