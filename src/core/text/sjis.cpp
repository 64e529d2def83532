#include "core/text/sjis.h"

#include <unicode/ucnv.h>

#include <array>
#include <cstdio>
#include <memory>

namespace suizo::text {
namespace {

// ICU's Windows-31J table rotates three control bytes, as IBM code pages do:
// 0x1A reads as U+001C, 0x1C as U+007F and 0x7F as U+001A. Windows maps them
// to themselves, and so must we.
char16_t FromIcuControl(char16_t c) {
  switch (c) {
    case 0x1C:
      return 0x1A;
    case 0x7F:
      return 0x1C;
    case 0x1A:
      return 0x7F;
    default:
      return c;
  }
}

char16_t ToIcuControl(char16_t c) {
  switch (c) {
    case 0x1A:
      return 0x1C;
    case 0x1C:
      return 0x7F;
    case 0x7F:
      return 0x1A;
    default:
      return c;
  }
}

struct ConverterCloser {
  void operator()(UConverter* c) const { ucnv_close(c); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// Opened as "windows-31j": "ibm-943" names a different table.
UConverter* Cp932() {
  thread_local Converter converter = [] {
    UErrorCode status = U_ZERO_ERROR;
    Converter c(ucnv_open("windows-31j", &status));
    if (U_FAILURE(status)) {
      throw std::runtime_error(std::string("ICU cannot open windows-31j: ") + u_errorName(status));
    }
    ucnv_setToUCallBack(c.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(c.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    return c;
  }();
  ucnv_reset(converter.get());
  return converter.get();
}

std::string HexBytes(const char* bytes, int8_t length) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (int i = 0; i < length; ++i) {
    if (i > 0) out += ' ';
    const auto b = static_cast<unsigned char>(bytes[i]);
    out += kHex[b >> 4];
    out += kHex[b & 15];
  }
  return out;
}

struct BadBytes {
  std::size_t offset;
  std::string hex;
};

// Decodes into `out`; on a bad sequence tells where it stands instead.
std::optional<BadBytes> TryDecode(std::string_view bytes, std::u16string& out) {
  UConverter* converter = Cp932();
  out.assign(bytes.size(), u'\0');  // never more units than bytes
  const char* source = bytes.data();
  UChar* target = reinterpret_cast<UChar*>(out.data());
  UErrorCode status = U_ZERO_ERROR;
  ucnv_toUnicode(converter, &target, target + out.size(), &source, bytes.data() + bytes.size(),
                 nullptr, true, &status);
  if (U_FAILURE(status)) {
    char invalid[32];
    int8_t length = sizeof invalid;
    UErrorCode ignored = U_ZERO_ERROR;
    ucnv_getInvalidChars(converter, invalid, &length, &ignored);
    return BadBytes{static_cast<std::size_t>(source - bytes.data()) - length,
                    HexBytes(invalid, length)};
  }
  out.resize(static_cast<std::size_t>(target - reinterpret_cast<UChar*>(out.data())));
  for (char16_t& c : out) c = FromIcuControl(c);
  return std::nullopt;
}

// Both directions of SjisCode, built once from the converter itself.
struct CodeTables {
  std::array<std::int16_t, 0x10000> codeOf;
  std::array<char16_t, 0x10000> charOf;  // by unsigned code; 0 where none (and for code 0)

  CodeTables() {
    codeOf.fill('?');
    charOf.fill(0);
    std::u16string decoded;
    const auto learn = [&](std::string_view bytes, std::uint16_t code) {
      if (!TryDecode(bytes, decoded).has_value() && decoded.size() == 1) charOf[code] = decoded[0];
    };
    for (int b = 0; b < 0x100; ++b) learn(std::string(1, char(b)), static_cast<std::uint16_t>(b));
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
      if (lead >= 0xA0 && lead < 0xE0) continue;
      for (int trail = 0x40; trail <= 0xFC; ++trail) {
        if (trail == 0x7F) continue;
        const char pair[2] = {char(lead), char(trail)};
        learn(std::string_view(pair, 2), static_cast<std::uint16_t>(lead << 8 | trail));
      }
    }
    // Several codes can read as one character (the NEC and IBM duplicates);
    // the code of a character is the one the encoder writes.
    for (int code = 0; code < 0x10000; ++code) {
      const char16_t c = charOf[code];
      if (c == 0 && code != 0) continue;
      if (codeOf[c] != '?' || c == u'?') continue;
      const std::string bytes = EncodeSjis(std::u16string_view(&c, 1));
      codeOf[c] = bytes.size() == 1
                      ? static_cast<std::int16_t>(static_cast<unsigned char>(bytes[0]))
                      : static_cast<std::int16_t>(static_cast<unsigned char>(bytes[0]) << 8 |
                                                  static_cast<unsigned char>(bytes[1]));
    }
  }
};

const CodeTables& Tables() {
  static const CodeTables tables;
  return tables;
}

}  // namespace

SjisDecodeError::SjisDecodeError(std::size_t byteOffset, std::string bytes)
    : std::runtime_error("not a Shift-JIS character: byte " + bytes), byteOffset_(byteOffset) {}

SjisEncodeError::SjisEncodeError(std::size_t unitIndex, char16_t unit)
    : std::runtime_error([unit] {
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "U+%04X has no Shift-JIS code", unsigned(unit));
        return std::string(buffer);
      }()),
      unitIndex_(unitIndex),
      unit_(unit) {}

std::u16string DecodeSjis(std::string_view bytes) {
  std::u16string out;
  if (const auto bad = TryDecode(bytes, out)) throw SjisDecodeError(bad->offset, bad->hex);
  return out;
}

std::string EncodeSjis(std::u16string_view text) {
  std::u16string source(text);
  for (char16_t& c : source) c = ToIcuControl(c);
  UConverter* converter = Cp932();
  std::string out(source.size() * 2, '\0');
  const UChar* from = reinterpret_cast<const UChar*>(source.data());
  char* target = out.data();
  UErrorCode status = U_ZERO_ERROR;
  ucnv_fromUnicode(converter, &target, target + out.size(), &from, from + source.size(), nullptr,
                   true, &status);
  if (U_FAILURE(status)) {
    UChar invalid[8];
    int8_t length = 8;
    UErrorCode ignored = U_ZERO_ERROR;
    ucnv_getInvalidUChars(converter, invalid, &length, &ignored);
    const auto index =
        static_cast<std::size_t>(from - reinterpret_cast<const UChar*>(source.data())) - length;
    throw SjisEncodeError(index, text[index]);
  }
  out.resize(static_cast<std::size_t>(target - out.data()));
  return out;
}

std::int16_t SjisCode(char16_t c) {
  return Tables().codeOf[c];
}

std::optional<char16_t> SjisChar(int code) {
  if (code < -0x8000 || code > 0xFFFF) return std::nullopt;
  const auto index = static_cast<std::uint16_t>(code);
  const char16_t c = Tables().charOf[index];
  if (c == 0 && index != 0) return std::nullopt;
  return c;
}

}  // namespace suizo::text
