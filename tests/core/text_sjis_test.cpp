#include "core/text/sjis.h"

#include <gtest/gtest.h>

namespace suizo::text {
namespace {

TEST(Sjis, DecodesSingleAndDoubleBytes) {
  EXPECT_EQ(DecodeSjis("A\xB1\x82\xA0\x88\x9F"), u"Aｱあ亜");
  EXPECT_EQ(DecodeSjis("\x5C\x7E"), u"\\~");  // Windows reads these as ASCII
  EXPECT_EQ(DecodeSjis(""), u"");
}

TEST(Sjis, UserDefinedAreaIsPrivateUse) {
  EXPECT_EQ(DecodeSjis("\xF0\x40"), u"\uE000");
  EXPECT_EQ(DecodeSjis("\xF9\xFC"), u"\uE757");
  EXPECT_EQ(EncodeSjis(u"\uE000\uE757"), "\xF0\x40\xF9\xFC");
}

TEST(Sjis, ControlBytesMapToThemselves) {
  const std::string controls = "\x1A\x1C\x7F\r\n";
  EXPECT_EQ(DecodeSjis(controls), u"\x1A\x1C\x7F\r\n");
  EXPECT_EQ(EncodeSjis(u"\x1A\x1C\x7F\r\n"), controls);
}

TEST(Sjis, DuplicateCodesReadAlikeAndWriteTheWindowsChoice) {
  EXPECT_EQ(DecodeSjis("\x87\x90"), u"≒");  // NEC special row
  EXPECT_EQ(DecodeSjis("\x81\xE0"), u"≒");
  EXPECT_EQ(EncodeSjis(u"≒"), "\x81\xE0");
  EXPECT_EQ(DecodeSjis("\xED\x40"), DecodeSjis("\xFA\x5C"));  // NEC and IBM kanji
  EXPECT_EQ(EncodeSjis(DecodeSjis("\xED\x40")), "\xFA\x5C");
  EXPECT_EQ(EncodeSjis(u"～"), "\x81\x60");  // Windows' wave dash
}

TEST(Sjis, BadBytesStopDecodingAndTellWhere) {
  const auto offsetOf = [](std::string_view bytes) -> std::size_t {
    try {
      DecodeSjis(bytes);
    } catch (const SjisDecodeError& e) {
      return e.byteOffset();
    }
    return std::string_view::npos;
  };
  EXPECT_EQ(offsetOf("ab\x80"), 2u);
  EXPECT_EQ(offsetOf("\x82\xA0\xA0"), 2u);  // 0xA0 has no character
  EXPECT_EQ(offsetOf("a\x82\x20"), 1u);     // a lead byte with a bad trail
  EXPECT_EQ(offsetOf("abc\x82"), 3u);       // cut after a lead byte
  EXPECT_EQ(offsetOf("\x85\x40"), 0u);      // an empty row of the table
}

TEST(Sjis, CharactersWithoutACodeStopEncodingAndTellWhere) {
  try {
    EncodeSjis(u"翠蔵\u4E02");
    FAIL() << "encoded a character Windows-31J lacks";
  } catch (const SjisEncodeError& e) {
    EXPECT_EQ(e.unitIndex(), 2u);
    EXPECT_EQ(e.unit(), u'\u4E02');
  }
  EXPECT_THROW(EncodeSjis(u"\u00A5"), SjisEncodeError);
  EXPECT_THROW(EncodeSjis(std::u16string(1, char16_t(0xD800))), SjisEncodeError);
}

TEST(SjisCode, IsSignedForDoubleByteCodes) {
  EXPECT_EQ(SjisCode(u'A'), 65);
  EXPECT_EQ(SjisCode(u'ｱ'), 0xB1);
  EXPECT_EQ(SjisCode(u'ぁ'), -32097);  // 0x829F
  EXPECT_EQ(SjisCode(u'ん'), static_cast<std::int16_t>(0x82F1));
  EXPECT_EQ(SjisCode(u'亜'), -30561);  // 0x889F, the first level-one kanji
  EXPECT_EQ(SjisCode(u'α'), -31809);   // 0x83BF
  EXPECT_EQ(SjisCode(u'\uE000'), static_cast<std::int16_t>(0xF040));
  EXPECT_EQ(SjisCode(u'\x1A'), 0x1A);
}

TEST(SjisCode, ACharacterWithoutACodeReadsAsQuestionMark) {
  EXPECT_EQ(SjisCode(u'\u4E02'), 63);
  EXPECT_EQ(SjisCode(u'?'), 63);
}

TEST(SjisCode, OrdersKanaBeforeKanji) {
  EXPECT_LT(SjisCode(u'ア'), SjisCode(u'亜'));
  EXPECT_LT(SjisCode(u'あ'), SjisCode(u'ア'));
  EXPECT_GT(SjisCode(u'1'), SjisCode(u'亜'));  // single bytes are positive
}

TEST(SjisChar, InvertsSjisCodeForEveryCharacterWithACode) {
  EXPECT_EQ(SjisChar(-32097), u'ぁ');
  EXPECT_EQ(SjisChar(0x829F), u'ぁ');
  EXPECT_EQ(SjisChar(SjisCode(u'か') + 1), u'が');
  EXPECT_FALSE(SjisChar(0x8540));
  EXPECT_FALSE(SjisChar(0x80));
  EXPECT_FALSE(SjisChar(70000));
  int checked = 0;
  for (int c = 0; c < 0x10000; ++c) {
    const auto unit = static_cast<char16_t>(c);
    const std::int16_t code = SjisCode(unit);
    if (code == 63 && unit != u'?') continue;
    ASSERT_EQ(SjisChar(code), unit) << "U+" << std::hex << c;
    ++checked;
  }
  EXPECT_GT(checked, 7000 + 1880 + 256);  // JIS levels, user area, single bytes
}

}  // namespace
}  // namespace suizo::text
