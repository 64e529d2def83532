#include "core/text/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace suizo::text {
namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

bool IsExponentMark(char16_t c) {
  return c == u'e' || c == u'E' || c == u'd' || c == u'D';
}

std::u16string Ascii(std::string_view s) {
  return std::u16string(s.begin(), s.end());
}

// Decimal digits of |value| to 15 significant digits, with the position of the
// decimal point counted from the first digit.
struct Decimal {
  std::string digits;
  int point = 0;
};

Decimal ToDecimal(double magnitude) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.14e", magnitude);  // d.dddddddddddddde±XX
  Decimal d;
  d.digits.push_back(buffer[0]);
  d.digits.append(buffer + 2, 14);
  d.point = std::atoi(buffer + 17) + 1;
  return d;
}

}  // namespace

bool LooksLike(std::u16string_view text, std::size_t at, std::u16string_view form) {
  if (at > text.size() || form.size() > text.size() - at) return false;
  for (std::size_t k = 0; k < form.size(); ++k) {
    const char16_t c = text[at + k];
    if (form[k] == u'#' ? !IsDigit(c) : c != form[k]) return false;
  }
  return true;
}

double Val(std::u16string_view text) {
  std::string number;
  std::size_t i = 0;
  const auto skipBlanks = [&] {
    while (i < text.size() && (text[i] == u' ' || text[i] == u'\t' || text[i] == u'\n')) ++i;
  };
  skipBlanks();
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) number.push_back(char(text[i++]));
  bool seenPoint = false;
  bool seenDigit = false;
  for (;; ++i) {
    skipBlanks();
    if (i >= text.size()) break;
    if (IsDigit(text[i])) {
      seenDigit = true;
    } else if (text[i] == u'.' && !seenPoint) {
      seenPoint = true;
    } else {
      break;
    }
    number.push_back(char(text[i]));
  }
  if (!seenDigit) return 0.0;
  if (i < text.size() && IsExponentMark(text[i])) {
    std::size_t j = i + 1;
    std::string exponent = "e";
    while (j < text.size() && (text[j] == u' ' || text[j] == u'\t' || text[j] == u'\n')) ++j;
    if (j < text.size() && (text[j] == u'-' || text[j] == u'+'))
      exponent.push_back(char(text[j++]));
    bool exponentDigit = false;
    for (; j < text.size(); ++j) {
      if (text[j] == u' ' || text[j] == u'\t' || text[j] == u'\n') continue;
      if (!IsDigit(text[j])) break;
      exponentDigit = true;
      exponent.push_back(char(text[j]));
    }
    if (exponentDigit) number += exponent;
  }
  return std::strtod(number.c_str(), nullptr);
}

namespace {

template <typename Int>
Int Bounded(double value, double bound) {
  if (!(value == value)) return 0;  // not a number
  if (value >= bound) return static_cast<Int>(bound);
  if (value <= -bound) return static_cast<Int>(-bound);
  return static_cast<Int>(value);
}

}  // namespace

int ValInt(std::u16string_view text) {
  return Bounded<int>(Val(text), 1073741824.0);
}

std::int64_t ValWhole(std::u16string_view text) {
  return Bounded<std::int64_t>(Val(text), 9007199254740992.0);
}

std::optional<double> ParseNumber(std::u16string_view text) {
  std::size_t i = 0;
  std::size_t end = text.size();
  while (i < end && (text[i] == u' ' || text[i] == u'\t')) ++i;
  while (end > i && (text[end - 1] == u' ' || text[end - 1] == u'\t')) --end;
  std::string number;
  if (i < end && (text[i] == u'-' || text[i] == u'+')) number.push_back(char(text[i++]));
  std::size_t digits = 0;
  for (; i < end && IsDigit(text[i]); ++i, ++digits) number.push_back(char(text[i]));
  if (i < end && text[i] == u'.') {
    number.push_back('.');
    for (++i; i < end && IsDigit(text[i]); ++i, ++digits) number.push_back(char(text[i]));
  }
  if (digits == 0) return std::nullopt;
  if (i < end && IsExponentMark(text[i])) {
    number.push_back('e');
    ++i;
    if (i < end && (text[i] == u'-' || text[i] == u'+')) number.push_back(char(text[i++]));
    std::size_t exponentDigits = 0;
    for (; i < end && IsDigit(text[i]); ++i, ++exponentDigits) number.push_back(char(text[i]));
    if (exponentDigits == 0) return std::nullopt;
  }
  if (i != end) return std::nullopt;
  const double value = std::strtod(number.c_str(), nullptr);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<std::int32_t> ToInt(std::u16string_view text) {
  // Counts and order elements are plain digits: read those without strtod.
  if (!text.empty() && text.size() <= 9 && std::all_of(text.begin(), text.end(), IsDigit)) {
    std::int32_t value = 0;
    for (const char16_t c : text) value = value * 10 + (c - u'0');
    return value;
  }
  const auto value = ParseNumber(text);
  if (!value) return std::nullopt;
  const double rounded = std::nearbyint(*value);  // the default mode rounds half to even
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(rounded);
}

std::u16string Format(double value, std::string_view pattern) {
  const auto pointAt = pattern.find('.');
  const std::string_view integerPattern = pattern.substr(0, pointAt);
  const std::string_view fractionPattern =
      pointAt == std::string_view::npos ? std::string_view{} : pattern.substr(pointAt + 1);
  if (integerPattern.find_first_not_of("#0") != std::string_view::npos ||
      fractionPattern.find_first_not_of('0') != std::string_view::npos ||
      integerPattern.find("0#") != std::string_view::npos) {
    throw std::invalid_argument("unsupported number format: " + std::string(pattern));
  }
  const int minimumIntegerDigits =
      static_cast<int>(std::count(integerPattern.begin(), integerPattern.end(), '0'));
  const int decimals = static_cast<int>(fractionPattern.size());

  std::string digits;  // integer and fraction digits, the point sits `decimals` from the end
  if (value != 0.0 && std::isfinite(value)) {
    Decimal d = ToDecimal(std::fabs(value));
    if (d.point < 0) {
      d.digits.insert(0, static_cast<std::size_t>(-d.point), '0');
      d.point = 0;
    }
    const int keep = d.point + decimals;
    if (keep >= 0) {
      digits = d.digits.substr(0, std::min<std::size_t>(keep, d.digits.size()));
      digits.append(static_cast<std::size_t>(keep) - digits.size(), '0');
      if (static_cast<std::size_t>(keep) < d.digits.size() && d.digits[keep] >= '5') {
        int k = keep - 1;
        for (; k >= 0 && digits[k] == '9'; --k) digits[k] = '0';
        if (k >= 0) {
          ++digits[k];
        } else {
          digits.insert(digits.begin(), '1');
        }
      }
    }
  }
  if (digits.size() < static_cast<std::size_t>(decimals)) {
    digits.insert(0, decimals - digits.size(), '0');
  }
  std::string integerPart = digits.substr(0, digits.size() - decimals);
  const std::string fractionPart = digits.substr(digits.size() - decimals);
  const bool isZero = digits.find_first_not_of('0') == std::string::npos;
  integerPart.erase(0, std::min(integerPart.find_first_not_of('0'), integerPart.size()));
  if (integerPart.size() < static_cast<std::size_t>(minimumIntegerDigits)) {
    integerPart.insert(0, minimumIntegerDigits - integerPart.size(), '0');
  }
  std::string out = (value < 0 && !isZero) ? "-" : "";
  out += integerPart;
  if (decimals > 0) out += "." + fractionPart;
  return Ascii(out);
}

std::u16string Format(std::u16string_view text, std::string_view pattern) {
  const auto value = ParseNumber(text);
  return value ? Format(*value, pattern) : std::u16string(text);
}

std::u16string NumberText(double value) {
  if (value == 0.0) return u"0";
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15G", value);
  return Ascii(buffer);
}

}  // namespace suizo::text
