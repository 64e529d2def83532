#include "history.h"

#include <array>

#include "core/text/utf16.h"

namespace suizo::gen {
namespace {

struct Era {
  int firstYear;
  std::u16string_view name;
};

// Eras by the Western year of their first year, 1199 to 1302.
constexpr std::array<Era, 34> kEras = {{
    {1199, u"正治"}, {1201, u"建仁"}, {1204, u"元久"}, {1206, u"建永"}, {1207, u"承元"},
    {1211, u"建暦"}, {1213, u"建保"}, {1219, u"承久"}, {1222, u"貞応"}, {1224, u"元仁"},
    {1225, u"嘉禄"}, {1227, u"安貞"}, {1229, u"寛喜"}, {1232, u"貞永"}, {1233, u"天福"},
    {1234, u"文暦"}, {1235, u"嘉禎"}, {1238, u"暦仁"}, {1239, u"延応"}, {1240, u"仁治"},
    {1243, u"寛元"}, {1247, u"宝治"}, {1249, u"建長"}, {1256, u"康元"}, {1257, u"正嘉"},
    {1259, u"正元"}, {1260, u"文応"}, {1261, u"弘長"}, {1264, u"文永"}, {1275, u"建治"},
    {1278, u"弘安"}, {1288, u"正応"}, {1293, u"永仁"}, {1299, u"正安"},
}};

// Made-up eras for the full-scale corpus, outside the years above.
constexpr std::array<std::u16string_view, 20> kInventedEras = {
    u"甲和", u"乙安", u"丙寧", u"丁徳", u"戊永", u"己暦", u"庚治", u"辛保", u"壬元", u"癸長",
    u"春和", u"夏安", u"秋寧", u"冬徳", u"東永", u"西暦", u"南治", u"北保", u"中元", u"上長"};

}  // namespace

EraYear EraOf(int year) {
  if (year >= 1199 && year <= 1302) {
    const Era* era = &kEras[0];
    for (const Era& e : kEras) {
      if (e.firstYear <= year) era = &e;
    }
    return {std::u16string(era->name), year - era->firstYear + 1};
  }
  // Outside the table, an invented era every ten years.
  const int decade = year / 10;
  return {std::u16string(kInventedEras[static_cast<std::size_t>(decade) % kInventedEras.size()]),
          year % 10 + 1};
}

std::u16string KanjiNumber(int n) {
  static constexpr std::u16string_view kDigits = u"〇一二三四五六七八九";
  std::u16string out;
  if (n >= 20) out += kDigits[static_cast<std::size_t>(n / 10)];
  if (n >= 10) out += u'十';
  if (n % 10 != 0 || n == 0) out += kDigits[static_cast<std::size_t>(n % 10)];
  return out;
}

std::u16string DateText(int year, int month, int day) {
  const auto two = [](int n) { return std::u16string(n < 10 ? u"0" : u"") + text::IntText(n); };
  return text::IntText(year) + u"." + two(month) + u"." + two(day);
}

std::u16string EraLabel(int year) {
  const EraYear e = EraOf(year);
  return e.era + (e.number == 1 ? u"元" : KanjiNumber(e.number)) + u"年";
}

}  // namespace suizo::gen
