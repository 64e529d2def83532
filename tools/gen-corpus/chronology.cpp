// The chronology: 年表関連.dat with one row a year (era, cyclical sign and the
// holders of five offices), 年表.dat with the events, and 本尊資料.dat with
// the mandalas some events point to. Events are numbered so that the view's
// lifetime filter and age column find the saint's years at 175 to 1590.
#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

#include "composer.h"
#include "core/corpus/schema.h"
#include "core/text/utf16.h"
#include "dat_writer.h"
#include "history.h"
#include "modules.h"
#include "offices.h"

namespace suizo::gen {
namespace {

using text::IntText;
using Pool = std::span<const std::u16string_view>;

// The saint's years, and the 年表No ranges the view relies on.
constexpr int kBirthYear = 1222;
constexpr int kDeathYear = 1282;
constexpr int kFirstMandalaYear = 1271;
constexpr int kBeforeLastNo = 174;
constexpr int kLifeFirstNo = 175;
constexpr int kLifeLastNo = 1590;
constexpr int kAfterFirstNo = 1591;
constexpr int kUndatedEvents = 2;

// Which events give way first when a range of numbers is full.
enum Priority { kKeep = 0, kLink = 1, kInvented = 2, kFiller = 3 };

// ---------------------------------------------------------------- dates

std::u16string Two(int n) {
  return (n < 10 ? u"0" : u"") + IntText(n);
}

// "07/16" as the import compares it with an accession day; "07/00" for a
// month alone; empty for a whole year, which sorts before any accession.
std::u16string DayKey(MonthDay d) {
  return d.month == 0 ? u"" : Two(d.month) + u"/" + Two(d.day);
}

std::u16string DayLabel(MonthDay d) {
  if (d.month == 0) return u"是歳";
  std::u16string s = (d.leap ? u"閏" : u"") + IntText(d.month) + u"月";
  return d.day == 0 ? s : s + IntText(d.day) + u"日";
}

std::u16string Keinen(int year, MonthDay d) {
  std::u16string s = EraLabel(year);
  if (d.month == 0) return s;
  s += (d.leap ? u"閏" : u"") + KanjiNumber(d.month) + u"月";
  return d.day == 0 ? s : s + KanjiNumber(d.day) + u"日";
}

// Sorts a year's events: by month (a leap month after its plain one), by
// day, and the undated ones last.
int DayOrder(MonthDay d) {
  return d.month == 0 ? 10000 : (d.month * 2 + d.leap) * 40 + d.day;
}

MonthDay RandomDay(Rng& rng) {
  return {rng.Between(1, 12), rng.Between(1, 29), false};
}

MonthDay RandomDayBefore(Rng& rng, MonthDay limit) {
  const int month = rng.Between(1, limit.month);
  const int lastDay = month < limit.month ? 29 : limit.day - 1;
  return {month, rng.Between(1, std::max(1, lastDay)), false};
}

std::u16string Sexagenary(int year) {
  static constexpr std::u16string_view kStems = u"甲乙丙丁戊己庚辛壬癸";
  static constexpr std::u16string_view kBranches = u"子丑寅卯辰巳午未申酉戌亥";
  const int i = ((year - 4) % 60 + 60) % 60;
  return {kStems[static_cast<std::size_t>(i % 10)], kBranches[static_cast<std::size_t>(i % 12)]};
}

// ---------------------------------------------------------------- offices

struct Holding {
  int year;
  MonthDay date;
  std::u16string name;  // empty: vacant
  int ordinal;
};

// An office's state in one Western year, as a 年表関連 row holds it: the
// holder at the year's end, and for a year with a change the day of the last
// one and who held the office before it.
struct OfficeYear {
  std::u16string holder, previous, since;
  int changes = 0;
  bool leap = false;
  int ordinal = 0;
};

constexpr std::array<std::u16string_view, 20> kReignFirst = {
    u"嵯", u"桂", u"白", u"朱", u"清", u"深", u"泉", u"若", u"高", u"春",
    u"松", u"花", u"緑", u"岩", u"雲", u"光", u"明", u"和", u"東", u"北"};
constexpr std::array<std::u16string_view, 12> kReignSecond = {
    u"峨", u"川", u"河", u"雀", u"原", u"山", u"野", u"宮", u"園", u"泉", u"坂", u"水"};
constexpr std::array<std::u16string_view, 6> kCourtHouses = {u"近衛", u"九条", u"一条",
                                                             u"二条", u"鷹司", u"藤原"};
constexpr std::array<std::u16string_view, 7> kWarriorHouses = {u"源",   u"平",   u"東条", u"高倉",
                                                               u"松田", u"小野", u"三浦"};
constexpr std::array<std::u16string_view, 20> kGivenFirst = {
    u"義", u"時", u"泰", u"経", u"長", u"政", u"貞", u"師", u"宗", u"頼",
    u"家", u"実", u"兼", u"良", u"道", u"基", u"忠", u"教", u"通", u"房"};
constexpr std::array<std::u16string_view, 20> kGivenSecond = {
    u"時", u"村", u"宗", u"光", u"国", u"氏", u"直", u"房", u"綱", u"朝",
    u"家", u"実", u"平", u"経", u"基", u"忠", u"教", u"嗣", u"通", u"盛"};

std::u16string GivenName(Rng& rng) {
  const std::u16string a(rng.Pick(Pool(kGivenFirst)));
  std::u16string b(rng.Pick(Pool(kGivenSecond)));
  if (a == b) b = u"綱";
  return a + b;
}

std::u16string InventedHolder(Office office, Rng& rng) {
  switch (office) {
    case Office::Emperor:
    case Office::Cloister: {
      std::u16string name = rng.Percent(30) ? u"後" : u"";
      name += rng.Pick(Pool(kReignFirst));
      name += rng.Pick(Pool(kReignSecond));
      return name;
    }
    case Office::Regent: {
      std::u16string name = rng.Percent(40) ? u"摂政:" : u"関白:";
      name += rng.Pick(Pool(kCourtHouses));
      return name + GivenName(rng);
    }
    case Office::Shogun: {
      if (rng.Percent(25)) return std::u16string(rng.Pick(Pool(kReignFirst))) + u"仁親王";
      const std::u16string house(rng.Pick(Pool(kWarriorHouses)));
      return house + GivenName(rng);
    }
    case Office::Shikken: {
      const std::u16string house(rng.Pick(Pool(kWarriorHouses)));
      return house + GivenName(rng);
    }
  }
  return {};
}

// The real holders, with invented ones before them (court offices only: the
// warrior ones did not exist yet) and after 1300, so that every row of the
// full-scale table has someone.
std::vector<Holding> Timeline(Office office, int firstYear, int lastYear, Rng& rng) {
  const auto real = RealAccessions(office);
  std::vector<Holding> before, out;
  const bool courtly = office != Office::Shogun && office != Office::Shikken;
  if (courtly && firstYear < real.front().year) {
    for (int y = firstYear - rng.Between(1, 10); y < real.front().year - 1;
         y += rng.Between(6, 22)) {
      const bool vacant = office == Office::Cloister && rng.Percent(25);
      before.push_back({y, RandomDay(rng), vacant ? u"" : InventedHolder(office, rng), 0});
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
      if (office == Office::Emperor) {
        before[i].ordinal = real.front().ordinal - static_cast<int>(before.size() - i);
      }
    }
  }
  out = std::move(before);
  for (const RealAccession& a : real)
    out.push_back({a.year, a.date, std::u16string(a.name), a.ordinal});
  int ordinal = real.back().ordinal;
  for (int y = std::max(real.back().year, kRealLastYear) + rng.Between(3, 15); y <= lastYear;
       y += rng.Between(5, 20)) {
    const bool vacant = office == Office::Cloister && rng.Percent(25);
    out.push_back({y, RandomDay(rng), vacant ? u"" : InventedHolder(office, rng),
                   office == Office::Emperor ? ++ordinal : 0});
  }
  return out;
}

OfficeYear OfficeIn(const std::vector<Holding>& timeline, int year) {
  OfficeYear o;
  for (std::size_t i = 0; i < timeline.size() && timeline[i].year <= year; ++i) {
    o.holder = timeline[i].name;
    o.ordinal = timeline[i].ordinal;
    if (timeline[i].year != year) continue;
    ++o.changes;
    o.since = DayKey(timeline[i].date);
    o.leap = timeline[i].date.leap;
    o.previous = i > 0 ? timeline[i - 1].name : u"";
  }
  return o;
}

// ---------------------------------------------------------------- years

struct YearInfo {
  int year;
  EraYear era;
  std::u16string previousEra;  // in a year the era changed
  MonthDay eraChange;          // month 0: no change
  std::array<OfficeYear, 5> offices;
};

struct Span {
  int first, last;
  int years() const { return last - first + 1; }
};

std::vector<YearInfo> YearTable(Span span, const std::array<std::vector<Holding>, 5>& timelines,
                                Rng& rng) {
  std::vector<YearInfo> years;
  for (int y = span.first; y <= span.last; ++y) {
    YearInfo info{y, EraOf(y), u"", {}, {}};
    const EraYear before = EraOf(y - 1);
    if (before.era != info.era.era) {
      info.previousEra = before.era;
      const auto real = RealEraChange(y);
      info.eraChange = real ? *real : MonthDay{rng.Between(1, 12), rng.Between(1, 28), false};
    }
    for (std::size_t o = 0; o < kOffices.size(); ++o) info.offices[o] = OfficeIn(timelines[o], y);
    years.push_back(std::move(info));
  }
  return years;
}

// The latest accession day of the year, as text; empty when none.
std::u16string LastAccession(const YearInfo& info) {
  std::u16string last;
  for (const OfficeYear& o : info.offices) last = std::max(last, o.since);
  return last;
}

// ---------------------------------------------------------------- mandalas

struct Mandala {
  int key = 0, number = 0;
  int year = 0;
  MonthDay date;
  bool copy = false;  // written out by a disciple after the saint's death
  std::u16string recipient, place;
};

constexpr std::array<std::u16string_view, 14> kNameFirst = {u"寂", u"円", u"蓮", u"浄", u"覚",
                                                            u"性", u"智", u"信", u"行", u"妙",
                                                            u"善", u"宗", u"本", u"常"};
constexpr std::array<std::u16string_view, 10> kNameSecond = {u"日", u"円", u"蓮", u"仙", u"阿",
                                                             u"忍", u"実", u"乗", u"明", u"海"};
constexpr std::array<std::u16string_view, 4> kNameTitles = {u"房", u"阿闍梨", u"尼", u"入道"};

std::u16string NameStem(Rng& rng) {
  std::u16string name(rng.Pick(Pool(kNameFirst)));
  return name + std::u16string(rng.Pick(Pool(kNameSecond)));
}

std::u16string Disciple(Rng& rng) {
  const std::u16string stem = NameStem(rng);
  return stem + std::u16string(rng.Pick(Pool(kNameTitles)));
}

// Where the saint was in a month of a year, for mandalas and deeds.
std::u16string_view SaintPlace(int year, int month) {
  const int at = year * 100 + month;
  if (at < 126009) return u"鎌倉";
  if (at < 126105) return u"下総";
  if (at < 126303) return u"伊豆";
  if (at < 127110) return u"鎌倉";
  if (at < 127111) return u"相模依智";
  if (at < 127403) return u"佐渡";
  if (at < 127405) return u"鎌倉";
  if (at < 128209) return u"身延";
  return u"武蔵池上";
}

std::u16string Recipient(Composer& c) {
  Rng& rng = c.rng();
  const int pick = rng.Between(0, 99);
  if (pick < 15) return u"";
  if (pick < 55) return c.Recipient();
  if (pick < 80) return u"沙門" + NameStem(rng);
  const std::u16string lay = rng.Percent(50) ? u"優婆塞" : u"優婆夷";
  return lay + NameStem(rng);
}

// The saint's mandalas from his first, after the Tatsunokuchi night, to the
// month before his death; a quarter are disciples' copies of later years.
std::vector<Mandala> ComposeMandalas(int rows, Span span, Composer& c) {
  Rng& rng = c.rng();
  std::vector<Mandala> out;
  const int copies = rows / 4;
  const int copyLast = std::min(span.last, kDeathYear + std::max(18, rows - 60));
  for (int i = 0; i < rows; ++i) {
    Mandala m;
    m.copy = i >= rows - copies && copyLast > kDeathYear;
    if (i == 0) {
      m.year = kFirstMandalaYear;
      m.date = {10, 9, false};
    } else if (m.copy) {
      m.year = rng.Between(kDeathYear + 1, copyLast);
      m.date = RandomDay(rng);
    } else {
      m.year = rng.Between(kFirstMandalaYear, kDeathYear);
      const int firstMonth = m.year == kFirstMandalaYear ? 10 : 1;
      const int lastMonth = m.year == kDeathYear ? 9 : 12;
      m.date = {rng.Between(firstMonth, lastMonth), rng.Between(1, 29), false};
      if (m.year == kFirstMandalaYear && m.date.month == 10) m.date.day = rng.Between(10, 29);
    }
    const bool first = m.year == kFirstMandalaYear && m.date.month == 10;
    if (i > 0 && !first && rng.Percent(30)) m.date.day = 0;  // the month alone
    m.recipient = Recipient(c);
    m.place = m.copy ? c.Place() : std::u16string(SaintPlace(m.year, m.date.month));
    out.push_back(std::move(m));
  }
  std::stable_sort(out.begin(), out.end(), [](const Mandala& a, const Mandala& b) {
    return a.year != b.year ? a.year < b.year : DayOrder(a.date) < DayOrder(b.date);
  });
  // 本尊No follows the dates; 尊基礎No is the database's own key, in no order.
  std::vector<int> keys(out.size());
  for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = static_cast<int>(i) + 1;
  for (std::size_t i = keys.size(); i > 1; --i) {
    std::swap(keys[i - 1], keys[static_cast<std::size_t>(rng.Between(0, static_cast<int>(i) - 1))]);
  }
  for (std::size_t i = 0; i < out.size(); ++i) {
    out[i].number = static_cast<int>(i) + 1;
    out[i].key = keys[i];
  }
  return out;
}

constexpr std::array<std::u16string_view, 4> kHonSources = {u"本尊図録", u"諸山宝物録", u"本尊集成",
                                                            u"寺宝調査報告"};
constexpr std::array<std::u16string_view, 4> kHonForms = {u"紙本墨書", u"絹本墨書",
                                                          u"紙本墨書 軸装", u"板本尊"};
constexpr std::array<std::u16string_view, 5> kSheets = {u"一紙", u"二枚継", u"三枚継", u"四枚継",
                                                        u"六枚継"};
constexpr std::array<std::u16string_view, 8> kPopularNames = {u"楊柳", u"松風", u"月影", u"雲間",
                                                              u"浦波", u"山桜", u"紅葉", u"雪中"};
constexpr std::array<std::u16string_view, 10> kTempleFirst = {u"妙", u"本", u"法", u"蓮", u"久",
                                                              u"正", u"立", u"常", u"実", u"善"};
constexpr std::array<std::u16string_view, 10> kTempleSecond = {u"法", u"覚", u"顕", u"成", u"遠",
                                                               u"行", u"住", u"照", u"円", u"寿"};

void WriteHon(const std::vector<Mandala>& mandalas, Composer& c,
              const std::filesystem::path& path) {
  Rng& rng = c.rng();
  DatWriter hon(ExportColumns(corpus::TableId::Hon));
  for (const Mandala& m : mandalas) {
    auto r = hon.Blank();
    const auto text = [&](std::u16string_view column, std::u16string value) {
      if (!value.empty()) hon.Set(r, column, Value::Text(value));
    };
    hon.Set(r, u"尊基礎No", Value::Number(m.key));
    hon.Set(r, u"本尊No", Value::Number(m.number));
    text(u"出典", std::u16string(rng.Pick(Pool(kHonSources))));
    text(u"書顕", m.copy ? u"門下書写" : u"聖人書顕");
    text(u"形態", std::u16string(rng.Pick(Pool(kHonForms))));
    text(u"系年", Keinen(m.year, m.date));
    text(u"年号", EraLabel(m.year));
    hon.Set(r, u"西暦", Value::Number(m.year));
    text(u"月日", DayLabel(m.date));
    text(u"年月日", DateText(m.year, m.date.month, m.date.day));
    const std::u16string writer = m.copy ? NameStem(rng) : u"";
    text(u"脇書", m.recipient.empty()
                      ? u""
                      : m.recipient + u"授与之" + (m.copy ? u" " + writer + u"謹写" : u""));
    text(u"授与者", m.recipient);
    text(u"讃文", c.Kanbun(14, 26));
    if (rng.Percent(30)) text(u"図顕讃文", c.Kanbun(8, 14));
    std::u16string keeper(rng.Pick(Pool(kTempleFirst)));
    keeper += rng.Pick(Pool(kTempleSecond));
    keeper += u"寺";
    text(u"所蔵", keeper);
    const int height = rng.Between(40, 180);
    const int heightTenth = rng.Between(0, 9);
    const int width = rng.Between(25, 100);
    const int widthTenth = rng.Between(0, 9);
    text(u"寸法", u"縦" + IntText(height) + u"." + IntText(heightTenth) + u"cm 横" +
                      IntText(width) + u"." + IntText(widthTenth) + u"cm");
    text(u"紙数", std::u16string(rng.Pick(Pool(kSheets))));
    const std::u16string popular =
        rng.Percent(30) ? std::u16string(rng.Pick(Pool(kPopularNames))) + u"本尊" : u"";
    text(u"通称", popular);
    if (rng.Percent(40)) text(u"真影", u"有");
    if (rng.Percent(20)) text(u"真影（旧分）", u"旧");
    text(u"参考資料", u"図録第" + IntText(m.number) + u"図");
    if (rng.Percent(30)) text(u"備考", c.Remark());
    std::u16string search = m.recipient.empty() ? keeper : m.recipient + u" " + keeper;
    if (!popular.empty()) search += u" " + popular;
    text(u"検索用", search);
    hon.Set(r, u"印", Value::Number(0));
    if (rng.Percent(40))
      hon.Set(r, u"旧本尊No", Value::Number(std::max(1, m.number - rng.Between(0, 3))));
    if (rng.Percent(10)) text(u"備考2", u"再調査を要す");
    hon.Add(std::move(r));
  }
  hon.Write(path);
}

// ---------------------------------------------------------------- events

struct Fix {
  int field;
  std::u16string kind, oldText, newText;
};

struct Event {
  int year = 0;  // 0: not known; written "★"
  MonthDay date;
  int kind = 0;  // 分類 0..5
  std::u16string text, link, sysNo, bangou;
  int klass = -1;            // C; -1 leaves it empty
  int source = 0;            // 史料番号
  int honKey = 0;            // 尊基礎No
  std::u16string newEra;     // 改元: the era this event begins
  std::u16string formerEra;  // 年号2: the era still running before the change
  int priority = kKeep;
  std::vector<Fix> fixes;
  int seq = 0;
  int key = 0, number = 0;  // 年基礎No, 年表No
};

// Events known from history, in the chronology's own words. A fact may
// carry an error of the export that a correction repairs.
struct Fact {
  int year;
  MonthDay date;
  int kind;
  std::u16string_view text;
  std::u16string_view wrong = {};  // in the export instead of `right`
  std::u16string_view right = {};
  int strayClass = -1;  // a class the export holds where none belongs
};

constexpr MonthDay D(int month, int day) {
  return {month, day, false};
}
constexpr MonthDay M(int month) {
  return {month, 0, false};
}
constexpr MonthDay kYear = {0, 0, false};

constexpr Fact kFacts[] = {
    {1200, D(1, 20), 0, u"梶原景時、駿河にて一族と共に討たる"},
    {1203, D(9, 2), 0, u"比企能員、北条時政に謀殺され、比企一族滅ぶ"},
    {1204, D(7, 18), 0, u"源頼家、伊豆修禅寺にて殺さる"},
    {1205, D(6, 22), 0, u"畠山重忠、武蔵二俣川にて討たる"},
    {1205, {7, 19, true}, 0, u"北条時政、謀議露見して出家し、伊豆に退く"},
    {1207, D(2, 18), 1, u"専修念仏を停止し、法然を讃岐に配す"},
    {1212, D(1, 25), 1, u"法然没す"},
    {1213, D(5, 2), 0, u"和田義盛、鎌倉にて挙兵し、敗死す"},
    {1215, D(7, 5), 1, u"栄西没す"},
    {1219, D(1, 27), 0, u"源実朝、鶴岡八幡宮にて殺さる"},
    {1221, D(5, 15), 0, u"後鳥羽上皇、北条義時追討の宣旨を下す"},
    {1221, D(6, 15), 0, u"幕府の軍勢、京都に入る"},
    {1221, D(7, 13), 0, u"後鳥羽上皇、隠岐に遷さる"},
    {1221, kYear, 0, u"京都に六波羅探題を置く"},
    {1222, D(2, 16), 5, u"聖人、安房国東修郷の漁村に生まる", u"東修郷", u"東条郷"},
    {1224, kYear, 1, u"親鸞、教行信証を著すと伝う"},
    {1225, D(7, 11), 0, u"北条政子没す"},
    {1225, kYear, 0, u"幕府、評定衆を置く"},
    {1227, M(6), 1, u"延暦寺の衆徒、法然の墓所を破却す"},
    {1227, kYear, 1, u"道元、宋より帰朝す"},
    {1232, D(1, 19), 1, u"明恵没す"},
    {1232, D(8, 10), 0, u"幕府、御成敗式目を定む"},
    {1233, kYear, 5, u"聖人、安房清澄寺に登り、道善房に就いて学ぶ"},
    {1233, kYear, 5, u"聖人、清澄寺の虚空蔵菩薩に智慧を祈ると伝う"},
    {1233, kYear, 1, u"道元、山城深草に興聖寺を開く"},
    {1237, kYear, 5, u"聖人、道善房を師として出家す"},
    {1239, kYear, 5, u"聖人、鎌倉に遊学すと伝う"},
    {1242, kYear, 5, u"聖人、比叡山に登り、諸宗を学ぶと伝う"},
    {1244, kYear, 1, u"道元、越前に大仏寺を開く"},
    {1246, kYear, 1, u"宋僧蘭渓道隆、来朝す"},
    {1247, D(6, 5), 0, u"三浦康村、一族と共に滅ぶ", u"三浦康村", u"三浦泰村"},
    {1249, kYear, 0, u"幕府、引付衆を置く"},
    {1253, D(4, 28), 5, u"聖人、清澄寺にて初めて題目を唱え、立教すと伝う"},
    {1253, D(8, 28), 1, u"道元没す", {}, {}, 7},
    {1253, D(11, 25), 1, u"鎌倉に建長寺成り、供養を行う"},
    {1253, kYear, 5, u"聖人、鎌倉名越に草庵を結ぶ"},
    {1257, D(8, 23), 0, u"鎌倉に大地震あり、社寺多く倒る"},
    {1258, kYear, 0, u"諸国に飢饉と疫病広がる"},
    {1260, D(8, 27), 5, u"聖人の松葉ヶ谷の草庵、念仏者らに襲わる"},
    {1261, D(5, 12), 5, u"聖人、伊豆伊東に流さる"},
    {1262, D(2, 27), 1, u"叡尊、鎌倉に下向す"},
    {1262, D(11, 28), 1, u"親鸞没す"},
    {1263, D(2, 22), 5, u"聖人、伊豆流罪を赦さる"},
    {1263, D(11, 22), 0, u"北条時頼没す"},
    {1264, D(11, 11), 5, u"聖人、安房小松原にて東条景信に襲わる"},
    {1267, kYear, 1, u"忍性、鎌倉極楽寺に入る"},
    {1268, {1, 0, true}, 0, u"蒙古の国書、鎌倉に届く"},
    {1268, D(10, 11), 5, u"聖人、書状十一通を幕府の要人と諸大寺に送る"},
    {1271, D(9, 12), 5, u"聖人、竜口の刑場に引かるるも、斬られずして難を免る"},
    {1271, D(10, 10), 5, u"聖人、相模依智を発して佐渡に向かう"},
    {1271, D(11, 1), 5, u"聖人、佐渡塚原の三昧堂に入る"},
    {1272, D(1, 16), 5, u"聖人、塚原にて諸宗の僧と問答す"},
    {1272, D(2, 11), 0, u"二月騒動起こり、北条時輔ら討たる"},
    {1272, M(4), 5, u"聖人、佐渡一谷に移る"},
    {1274, D(2, 14), 5, u"聖人の佐渡流罪、赦免となる"},
    {1274, D(3, 26), 5, u"聖人、鎌倉に帰る"},
    {1274, D(4, 8), 5, u"聖人、平頼綱と対面し、蒙古の襲来近しと説く"},
    {1274, D(5, 17), 5, u"聖人、甲斐身延に入る"},
    {1274, D(10, 5), 0, u"蒙古と高麗の軍、対馬に襲来す"},
    {1274, D(10, 20), 0, u"蒙古の軍、博多に上陸し、のち退く"},
    {1274, kYear, 1, u"一遍、熊野に参籠し、念仏の札を配り始むと伝う"},
    {1275, D(9, 7), 0, u"幕府、蒙古の使者を竜口にて斬る"},
    {1276, M(3), 0, u"幕府、博多湾の沿岸に石築地を築かしむ"},
    {1279, D(9, 21), 4, u"熱原の農民ら、捕らえられて鎌倉に送らる"},
    {1279, D(10, 15), 4, u"熱原の農民のうち三人、斬らる"},
    {1279, kYear, 1, u"宋僧無学祖元、来朝す"},
    {1281, D(5, 21), 0, u"蒙古の軍、再び対馬に来る"},
    {1281, {7, 1, true}, 0, u"大風吹き、蒙古の船多く覆る"},
    {1282, D(9, 8), 5, u"聖人、身延を発つ"},
    {1282, D(9, 18), 5, u"聖人、武蔵池上に着く"},
    {1282, D(10, 8), 5, u"聖人、本弟子六人を定む"},
    {1282, D(10, 13), 5, u"聖人、武蔵池上にて入滅す"},
    {1282, D(12, 8), 1, u"鎌倉に円覚寺成り、供養を行う"},
    {1284, D(4, 4), 0, u"北条時宗没す"},
    {1285, D(11, 17), 0, u"安達泰盛、一族と共に討たる"},
    {1289, D(8, 23), 1, u"一遍没す"},
    {1293, D(4, 13), 0, u"鎌倉に大地震あり"},
    {1293, D(4, 22), 0, u"平頼綱、誅さる"},
    {1297, D(3, 6), 0, u"幕府、御家人の所領の質入れと売買を禁じ、徳政を行う"},
};

// Memorials of the saint's death, by the count of years as they are named.
constexpr std::array<int, 16> kMemorials = {1,  3,   7,   13,  17,  23,  27,  33,
                                            50, 100, 150, 200, 250, 300, 350, 400};

std::u16string MemorialName(int n) {
  if (n == 1) return u"一周忌";
  if (n < 100) return KanjiNumber(n) + u"回忌";
  const std::u16string hundreds = n / 100 == 1 ? u"百" : KanjiNumber(n / 100) + u"百";
  return hundreds + (n % 100 == 0 ? u"" : KanjiNumber(n % 100)) + u"回遠忌";
}

// Words for the composed events, by kind.
constexpr std::array<std::u16string_view, 12> kRegions = {
    u"鎌倉", u"京都",   u"諸国",   u"畿内",   u"関東",   u"鎮西",
    u"奥州", u"北陸道", u"東海道", u"山陽道", u"南海道", u"坂東"};
constexpr std::array<std::u16string_view, 12> kCalamities = {
    u"大風吹く", u"大地震あり", u"大火あり",   u"洪水あり",   u"疫病流行す", u"飢饉起こる",
    u"旱魃続く", u"大雪降る",   u"群盗横行す", u"雷雨甚だし", u"霖雨やまず", u"虫害あり"};
constexpr std::array<std::u16string_view, 2> kCourt = {u"朝廷", u"院"};
constexpr std::array<std::u16string_view, 4> kCourtMeasures = {u"新制を下す", u"諸社に奉幣す",
                                                               u"諸寺に祈祷を命ず", u"除目を行う"};
constexpr std::array<std::u16string_view, 5> kWarriorAuthorities = {u"幕府", u"六波羅", u"評定衆",
                                                                    u"鎮西奉行", u"諸国の守護"};
constexpr std::array<std::u16string_view, 8> kWarriorMeasures = {
    u"諸国に令を下す",       u"寺社の訴訟を裁く",   u"鎌倉中の禁制を定む", u"関所を改む",
    u"御家人の所領を安堵す", u"訴訟の手続きを改む", u"倹約の令を出す",     u"田文を作らしむ"};
constexpr std::array<std::u16string_view, 5> kSkies = {u"彗星、東方に見ゆ", u"日蝕あり",
                                                       u"月蝕あり", u"客星現る", u"白虹、日を貫く"};
constexpr std::array<std::u16string_view, 8> kTemples = {
    u"山門",       u"南都",       u"寺門", u"鶴岡八幡宮",
    u"鎌倉の諸寺", u"京都の諸寺", u"東寺", u"諸国の国分寺"};
constexpr std::array<std::u16string_view, 10> kRites = {
    u"仁王会", u"最勝講",   u"大般若経の転読", u"五壇法", u"祈雨の法",
    u"薬師法", u"法華八講", u"一切経会",       u"放生会", u"逆修の仏事"};
constexpr std::array<std::u16string_view, 12> kClergyDeeds = {
    u"山門の大衆、強訴す",       u"山門の大衆、神輿を奉じて入洛す",
    u"南都の衆徒、蜂起す",       u"南都の衆徒、神木を奉じて入洛す",
    u"念仏の停止を諸国に命ず",   u"律僧、非人に施行す",
    u"勧進の聖、諸国に橋を架く", u"禅僧、宋より帰朝す",
    u"諸寺の堂舎、修造成る",     u"一切経を書写して供養す",
    u"戒壇を整え、授戒を行う",   u"大仏殿の修理を始む"};
constexpr std::array<std::u16string_view, 4> kProvinces = {u"上総", u"武蔵", u"相模", u"京都"};
constexpr std::array<std::u16string_view, 8> kFollowerDeeds = {
    u"聖人に帰依す",           u"{}にて弘教す",
    u"{}の地頭より迫害を受く", u"聖人の書状を携えて{}に赴く",
    u"聖人に供養の品を送る",   u"{}にて念仏者と問答す",
    u"所領を没収さる",         u"{}に草庵を結ぶ"};
constexpr std::array<std::u16string_view, 8> kHeirDeeds = {
    u"{}に一寺を建つ",   u"聖人の御書を書写す", u"{}に下向して弘教す", u"門流の置文を定む",
    u"聖人の遺跡を守る", u"{}にて法華経を講ず", u"幕府に申状を奉る",   u"{}にて入寂す"};
constexpr std::array<std::u16string_view, 8> kSaintDeeds = {
    u"{}にて説法す",         u"{}にて法華経を講ず",     u"{}にて弟子らに法門を談ず",
    u"{}の草庵にて病に臥す", u"{}にて檀越の供養を受く", u"{}にて諸経の要文を抄す",
    u"{}に来訪の僧と問答す", u"{}にて門下の安否を案ず"};
constexpr std::array<std::u16string_view, 6> kYouthDeeds = {
    u"清澄寺にて学問に励む", u"経蔵に籠もり一切経を閲す",
    u"京畿の諸寺を巡る",     u"園城寺に学ぶ",
    u"高野山を訪う",         u"天王寺に参る"};
constexpr std::array<std::u16string_view, 5> kWritingVerbs = {u"著す", u"認む", u"書き送る",
                                                              u"述作す", u"送る"};
constexpr std::array<std::u16string_view, 4> kPurposes = {
    u"法門の大綱を示す", u"門下の信心を励ます", u"国の安危を論ず", u"末法の行者の心得を説く"};
constexpr std::array<std::u16string_view, 6> kTopics = {u"末法の行",   u"信心の要",   u"供養の功徳",
                                                        u"法華の肝要", u"看病の心得", u"孝養の道"};
constexpr std::array<std::u16string_view, 6> kKindLabels = {u"国史", u"仏教", u"本尊",
                                                            u"消息", u"門下", u"事跡"};

std::u16string Fill(std::u16string_view pattern, std::u16string_view place) {
  return text::ReplaceAll(pattern, u"{}", place);
}

class Chronicle {
 public:
  Chronicle(const Sizes& sizes, Registry& registry, Span span)
      : sizes_(sizes), registry_(registry), span_(span), c_(sizes.seed ^ 0xC4A0), rng_(c_.rng()) {
    for (std::size_t o = 0; o < kOffices.size(); ++o) {
      timelines_[o] = Timeline(kOffices[o], span.first, span.last, rng_);
    }
    years_ = YearTable(span, timelines_, rng_);
    mandalas_ = ComposeMandalas(sizes.honRows, span, c_);
  }

  const std::vector<YearInfo>& years() const { return years_; }
  const std::vector<Mandala>& mandalas() const { return mandalas_; }
  Composer& composer() { return c_; }

  // Everything in the order the export lists it, numbered and keyed.
  std::vector<Event> Compose() {
    AddFacts();
    AddMemorials();
    AddAccessions();
    AddEraChanges();
    AddDocuments();
    AddMandalaEvents();
    AddSources();
    AddFiller();
    AddEventsBeforeAccessions();
    AddUndated();
    FitAndNumber();
    MarkFormerEras();
    return std::move(events_);
  }

 private:
  bool InSpan(int year) const { return year >= span_.first && year <= span_.last; }
  const YearInfo& Year(int year) const {
    return years_[static_cast<std::size_t>(year - span_.first)];
  }

  Event& Add(int year, MonthDay date, int kind, std::u16string text, int priority) {
    Event e;
    e.year = year;
    e.date = date;
    e.kind = kind;
    e.text = std::move(text);
    e.priority = priority;
    e.seq = static_cast<int>(events_.size());
    events_.push_back(std::move(e));
    return events_.back();
  }

  void AddFacts() {
    for (const Fact& f : kFacts) {
      if (!InSpan(f.year)) continue;
      Event& e = Add(f.year, f.date, f.kind, std::u16string(f.text), kKeep);
      if (!f.wrong.empty()) {
        e.fixes.push_back({14, u"replace", std::u16string(f.wrong), std::u16string(f.right)});
      }
      if (f.strayClass >= 0) {
        e.klass = f.strayClass;
        e.fixes.push_back({17, u"set", u"", u"0"});
      }
    }
  }

  void AddMemorials() {
    for (const int n : kMemorials) {
      const int year = kDeathYear + (n == 1 ? 1 : n - 1);
      if (!InSpan(year)) continue;
      Add(year, D(10, 13), 4, u"門下、聖人の" + MemorialName(n) + u"を修す",
          year <= kRealLastYear ? kKeep : kInvented);
    }
  }

  static std::u16string AccessionText(Office office, const Holding& h) {
    switch (office) {
      case Office::Emperor:
        return h.name + u"天皇、践祚す";
      case Office::Cloister:
        return h.name + u"上皇、院政を始む";
      case Office::Regent: {
        const auto colon = h.name.find(u':');
        return h.name.substr(colon + 1) + u"、" + h.name.substr(0, colon) + u"となる";
      }
      case Office::Shogun:
        return h.name + u"、征夷大将軍に任ぜらる";
      case Office::Shikken:
        return h.name + u"、執権となる";
    }
    return {};
  }

  // The day each office changed hands, on that very day, so that the event
  // shows the new holder.
  void AddAccessions() {
    for (std::size_t o = 0; o < kOffices.size(); ++o) {
      for (const Holding& h : timelines_[o]) {
        if (!InSpan(h.year) || h.name.empty()) continue;
        const bool real = h.year >= kRealFirstYear && h.year <= kRealLastYear;
        Add(h.year, h.date, 0, AccessionText(kOffices[o], h), real ? kKeep : kInvented);
      }
    }
  }

  void AddEraChanges() {
    for (const YearInfo& y : years_) {
      if (y.eraChange.month == 0) continue;
      const bool real = y.year >= kRealFirstYear && y.year <= kRealLastYear;
      Event& e = Add(y.year, y.eraChange, 0, y.era.era + u"と改元す", real ? kKeep : kInvented);
      e.newEra = y.era.era;
    }
  }

  // The writings: each document once, as a letter (kind 3) or, for the
  // major works, a deed (kind 5); now and then a second event that cites a
  // document by its key alone and so opens the reader, not the record.
  void AddDocuments() {
    const auto& docs = registry_.documents;
    bool missingKey = false;
    for (std::size_t i = 0; i < docs.size(); ++i) {
      const DocumentRef& d = docs[i];
      if (!InSpan(d.year)) continue;
      const MonthDay date = DocumentDay(d);
      const bool major = i % 10 == 0;
      Event& e = Add(
          d.year, date, major ? 5 : 3,
          major ? u"聖人、「" + d.title + u"」を著し、" + std::u16string(rng_.Pick(Pool(kPurposes)))
                : u"「" + d.title + u"」を" + std::u16string(rng_.Pick(Pool(kWritingVerbs))),
          kKeep);
      e.link = d.bangou.starts_with(u"新加") ? d.bangou : u"番号" + d.bangou;
      e.bangou = d.bangou;
      e.sysNo = d.sysNo;
      e.klass = d.klass;
      if (!missingKey && !major && i >= 2) {
        // The export lost this link; a correction puts it back.
        missingKey = true;
        e.sysNo.clear();
        e.klass = -1;
        e.fixes.push_back({20, u"set", u"", d.sysNo});
      }
      if (i % 6 == 3) {
        const bool follower = i % 12 == 9 && d.year > kBirthYear + 30;
        Event& x =
            Add(d.year, date.month == 0 ? date : MonthDay{date.month, 0, false}, follower ? 4 : 5,
                follower ? Disciple(rng_) + u"、「" + d.title + u"」を拝受す"
                         : u"聖人、「" + d.title + u"」に" +
                               std::u16string(rng_.Pick(Pool(kTopics))) + u"を記す",
                kLink);
        x.link = d.title;
        x.sysNo = d.sysNo;
        x.klass = d.klass;
      }
    }
  }

  // The day of a document's date "1260.07.16"; the whole year where the
  // date is not one.
  static MonthDay DocumentDay(const DocumentRef& d) {
    const std::u16string& t = d.date;
    if (t.size() < 10 || t.substr(0, 4) != IntText(d.year) || t[4] != u'.' || t[7] != u'.')
      return kYear;
    const auto number = [&](std::size_t at) {
      const char16_t a = t[at], b = t[at + 1];
      if (a < u'0' || a > u'9' || b < u'0' || b > u'9') return -1;
      return (a - u'0') * 10 + (b - u'0');
    };
    const int month = number(5), day = number(8);
    if (month < 1 || month > 12 || day < 0 || day > 30) return kYear;
    return {month, day, false};
  }

  void AddMandalaEvents() {
    const int linkEvery = sizes_.honRows < 100 ? 4 : 2;
    int made = 0;
    for (std::size_t i = 0; i < mandalas_.size(); i += 2) {
      const Mandala& m = mandalas_[i];
      if (!InSpan(m.year)) continue;
      const std::u16string deed = m.copy
                                      ? Disciple(rng_) + u"、聖人の本尊を" + m.place + u"にて書写"
                                      : u"聖人、" + m.place + u"にて本尊を図顕";
      Event& e =
          Add(m.year, m.date, 2,
              deed + (m.recipient.empty() ? u"す" : u"し、" + m.recipient + u"に授く"), kKeep);
      e.honKey = m.key;
      // The import links an event to a mandala only through a field no
      // column fills, so the link is a correction.
      if (made++ % linkEvery == 0) e.fixes.push_back({24, u"set", u"", IntText(m.key)});
    }
  }

  void AddSources() {
    for (std::size_t i = 0; i < registry_.sources.size(); ++i) {
      const SourceRef& s = registry_.sources[i];
      if (!InSpan(s.year)) continue;
      const int kind = FillerKind(s.year);
      const MonthDay date = RandomDay(rng_);
      Event& e = Add(s.year, date, kind, FillerText(kind, s.year, date.month), kLink);
      e.source = s.number;
      if (i % 2 == 1) e.link = s.title;
    }
  }

  int FillerKind(int year) {
    const int roll = rng_.Between(0, 99);
    if (year < kBirthYear + 11) return roll < 60 ? 0 : 1;
    if (year <= kDeathYear && year < 1253) return roll < 40 ? 0 : (roll < 70 ? 1 : 5);
    if (year <= kDeathYear) return roll < 30 ? 0 : (roll < 45 ? 1 : (roll < 70 ? 4 : 5));
    return roll < 45 ? 0 : (roll < 70 ? 1 : 4);
  }

  std::u16string FillerText(int kind, int year, int month) {
    std::u16string t;
    switch (kind) {
      case 0: {
        const int form = rng_.Between(0, 9);
        if (form < 5) {
          t = rng_.Pick(Pool(kRegions));
          t += u"に";
          t += rng_.Pick(Pool(kCalamities));
        } else if (form < 7) {
          t = rng_.Pick(Pool(kCourt));
          t += u"、";
          t += rng_.Pick(Pool(kCourtMeasures));
        } else if (form < 9) {
          t = rng_.Pick(Pool(kWarriorAuthorities));
          t += u"、";
          t += rng_.Pick(Pool(kWarriorMeasures));
        } else {
          t = std::u16string(rng_.Pick(Pool(kSkies)));
        }
        return t;
      }
      case 1:
        if (rng_.Percent(50)) {
          t = rng_.Pick(Pool(kTemples));
          t += u"にて";
          t += rng_.Pick(Pool(kRites));
          t += u"を修す";
        } else {
          t = rng_.Pick(Pool(kClergyDeeds));
        }
        break;
      case 4: {
        const auto deeds = year <= kDeathYear ? Pool(kFollowerDeeds) : Pool(kHeirDeeds);
        const std::u16string where =
            rng_.Percent(60) ? c_.Place() : std::u16string(rng_.Pick(Pool(kProvinces)));
        t = Disciple(rng_) + u"、";
        t += Fill(rng_.Pick(deeds), where);
        break;
      }
      case 5:
        t = year < 1253 ? u"聖人、" + std::u16string(rng_.Pick(Pool(kYouthDeeds)))
                        : u"聖人、" + Fill(rng_.Pick(Pool(kSaintDeeds)), SaintPlace(year, month));
        break;
    }
    if (rng_.Percent(8)) t += u"と伝う";
    return t;
  }

  MonthDay FillerDay() {
    const int roll = rng_.Between(0, 99);
    if (roll < 5) return kYear;
    MonthDay d = RandomDay(rng_);
    if (roll < 15) d.day = 0;
    return d;
  }

  Event& AddFillerIn(int year, MonthDay date) {
    const int kind = FillerKind(year);
    Event& e = Add(year, date, kind, FillerText(kind, year, std::max(1, date.month)), kFiller);
    if (rng_.Percent(15)) e.link = c_.SourceTitle();
    return e;
  }

  struct Band {
    int first, last;  // years
    int firstNo, lastNo;
  };

  std::array<Band, 3> Bands() const {
    return {{{span_.first, std::min(span_.last, kBirthYear - 1), 1, kBeforeLastNo},
             {std::max(span_.first, kBirthYear), std::min(span_.last, kDeathYear), kLifeFirstNo,
              kLifeLastNo},
             {std::max(span_.first, kDeathYear + 1), span_.last, kAfterFirstNo, 0}}};
  }

  int CountIn(const Band& b) const {
    return static_cast<int>(std::count_if(events_.begin(), events_.end(), [&](const Event& e) {
      return e.year >= b.first && e.year <= b.last;
    }));
  }

  // What a band will hold once filled and fitted to its numbers.
  int Held(const Band& b, int budget) const {
    return std::min(b.lastNo - b.firstNo + 1, std::max(budget, CountIn(b)));
  }

  // About sizes.eventsPerYear a year, fewer before the saint's birth, more
  // in his lifetime; the years after take the rest of the table's room.
  void AddFiller() {
    const auto bands = Bands();
    const int perYear = sizes_.eventsPerYear;
    const int capacity = corpus::SchemaOf(corpus::TableId::Nen).rowCapacity - kUndatedEvents;
    const int total = std::min(capacity - 100, span_.years() * perYear);
    std::array<int, 3> budget{};
    for (std::size_t b = 0; b < 3; ++b) {
      const int years = std::max(0, bands[b].last - bands[b].first + 1);
      const int fixed = CountIn(bands[b]);
      const int room = bands[b].lastNo - bands[b].firstNo + 1 - 4;
      if (b == 0) budget[b] = std::min(room, years * perYear);
      if (b == 1) budget[b] = std::min(room, years * (perYear + 1));
      if (b == 2)
        budget[b] = std::max(years * perYear,
                             total - Held(bands[0], budget[0]) - Held(bands[1], budget[1]));
      if (years == 0) continue;
      for (int n = fixed; n < budget[b]; ++n) {
        const int year = rng_.Between(bands[b].first, bands[b].last);
        AddFillerIn(year, FillerDay());
      }
    }
  }

  // In a year an office changed hands, an event before the day shows the
  // former holder; make sure each such year has one.
  void AddEventsBeforeAccessions() {
    for (const YearInfo& y : years_) {
      const std::u16string last = LastAccession(y);
      if (last.empty() || last <= u"01/01") continue;
      const bool has = std::any_of(events_.begin(), events_.end(), [&](const Event& e) {
        return e.year == y.year && e.date.month > 0 && DayKey(e.date) < last;
      });
      if (has) continue;
      const MonthDay limit{std::stoi(text::ToUtf8(last.substr(0, 2))),
                           std::stoi(text::ToUtf8(last.substr(3, 2))), false};
      AddFillerIn(y.year, RandomDayBefore(rng_, limit)).priority = kLink;
    }
  }

  // Events of no known year, read as year 0: they come last, after the
  // 年表関連 walk has passed every year.
  void AddUndated() {
    Add(0, kYear, 4, Disciple(rng_) + u"、聖人の遺文を携えて諸国を巡ると伝う", kKeep);
    Add(0, kYear, 1, u"諸山の古記に、聖人の名を記す断簡あり", kKeep);
  }

  // Keeps what each band of numbers holds, the most wanted events first,
  // puts the rest in date order and numbers them.
  void FitAndNumber() {
    const auto bands = Bands();
    const int capacity = corpus::SchemaOf(corpus::TableId::Nen).rowCapacity - kUndatedEvents;
    std::vector<Event> kept;
    for (std::size_t b = 0; b < bands.size(); ++b) {
      std::vector<Event> in;
      for (Event& e : events_) {
        if (e.year >= bands[b].first && e.year <= bands[b].last) in.push_back(std::move(e));
      }
      std::stable_sort(in.begin(), in.end(),
                       [](const Event& a, const Event& z) { return a.priority < z.priority; });
      const int room =
          b < 2 ? bands[b].lastNo - bands[b].firstNo + 1 : capacity - static_cast<int>(kept.size());
      if (static_cast<int>(in.size()) > room) in.resize(static_cast<std::size_t>(room));
      std::stable_sort(in.begin(), in.end(), [](const Event& a, const Event& z) {
        if (a.year != z.year) return a.year < z.year;
        if (DayOrder(a.date) != DayOrder(z.date)) return DayOrder(a.date) < DayOrder(z.date);
        return a.seq < z.seq;
      });
      const int n = static_cast<int>(in.size());
      for (int i = 0; i < n; ++i) {
        const int width = bands[b].lastNo - bands[b].firstNo + 1;
        in[static_cast<std::size_t>(i)].number =
            b < 2 ? bands[b].firstNo + static_cast<int>(static_cast<long>(i) * width / n)
                  : bands[b].firstNo + 2 * i;
      }
      for (Event& e : in) kept.push_back(std::move(e));
    }
    int next = kept.empty() ? kAfterFirstNo : kept.back().number + 10;
    for (Event& e : events_) {
      if (e.year == 0) {
        e.number = next;
        next += 10;
        kept.push_back(std::move(e));
      }
    }
    // 年基礎No in the order the events were entered, not the order of dates.
    std::vector<Event*> entered;
    for (Event& e : kept) entered.push_back(&e);
    std::stable_sort(entered.begin(), entered.end(),
                     [](const Event* a, const Event* z) { return a->seq < z->seq; });
    for (std::size_t i = 0; i < entered.size(); ++i) entered[i]->key = static_cast<int>(i) + 1;
    events_ = std::move(kept);
  }

  // Before the day of a change of era the year still bore the old name.
  void MarkFormerEras() {
    for (Event& e : events_) {
      if (e.year == 0 || e.date.month == 0) continue;
      const YearInfo& y = Year(e.year);
      if (y.eraChange.month == 0 || DayKey(e.date) >= DayKey(y.eraChange)) continue;
      const EraYear before = EraOf(e.year - 1);
      e.formerEra = before.era + KanjiNumber(before.number + 1) + u"年";
    }
  }

  const Sizes& sizes_;
  Registry& registry_;
  Span span_;
  Composer c_;
  Rng& rng_;
  std::array<std::vector<Holding>, 5> timelines_;
  std::vector<YearInfo> years_;
  std::vector<Mandala> mandalas_;
  std::vector<Event> events_;
};

// ---------------------------------------------------------------- writing

constexpr std::array<std::u16string_view, 5> kOfficeLabels = {u"天皇", u"院政", u"摂関", u"将軍",
                                                              u"執権"};
constexpr std::array<std::array<std::u16string_view, 3>, 5> kOfficeColumns = {{
    {u"天皇", u"前天皇", u"天皇即位"},
    {u"院政", u"前院政", u"院政就任"},
    {u"摂関", u"前摂関", u"摂関就任"},
    {u"将軍", u"前将軍", u"将軍就任"},
    {u"執権", u"前執権", u"執権就任"},
}};

std::u16string YearRemark(const YearInfo& y) {
  std::u16string remark;
  const auto add = [&](std::u16string part) { remark += (remark.empty() ? u"" : u"／") + part; };
  for (std::size_t o = 0; o < kOffices.size(); ++o) {
    const OfficeYear& office = y.offices[o];
    if (office.changes > 1)
      add(std::u16string(kOfficeLabels[o]) + u"、年内に" + KanjiNumber(office.changes) +
          u"度替わる");
    if (office.leap) add(std::u16string(kOfficeLabels[o]) + u"の交代は閏月");
  }
  return remark;
}

std::u16string Age(int year) {
  if (year >= kBirthYear && year <= kDeathYear) return u"聖寿" + IntText(year - kBirthYear + 1);
  if (year > kDeathYear) return u"滅後" + IntText(year - kDeathYear + 1);
  return u"";
}

void WriteNek(const std::vector<YearInfo>& years, const std::filesystem::path& path) {
  DatWriter nek(ExportColumns(corpus::TableId::Nek));
  for (const YearInfo& y : years) {
    auto r = nek.Blank();
    const auto text = [&](std::u16string_view column, const std::u16string& value) {
      if (!value.empty()) nek.Set(r, column, Value::Text(value));
    };
    nek.Set(r, u"西暦", Value::Number(y.year));
    text(u"年号", y.era.era);
    text(u"前年号", y.previousEra);
    nek.Set(r, u"年数", Value::Number(y.era.number));
    text(u"干支", Sexagenary(y.year));
    if (y.eraChange.month > 0) text(u"改元", DayKey(y.eraChange));
    for (std::size_t o = 0; o < kOffices.size(); ++o) {
      const OfficeYear& office = y.offices[o];
      text(kOfficeColumns[o][0], office.holder);
      if (office.changes > 0) {
        text(kOfficeColumns[o][1], office.previous);
        text(kOfficeColumns[o][2], office.since);
      }
    }
    text(u"聖寿・聖滅", Age(y.year));
    const int ordinal = y.offices[0].ordinal;
    if (ordinal > 0) text(u"歴代", u"第" + IntText(ordinal) + u"代");
    text(u"備考", YearRemark(y));
    nek.Add(std::move(r));
  }
  // The row the walk stops at for the undated events, which read as year 0.
  auto last = nek.Blank();
  nek.Set(last, u"備考", Value::Text(u"年次不詳の事項の行"));
  nek.Add(std::move(last));
  nek.Write(path);
}

void WriteNen(const std::vector<Event>& events, const std::filesystem::path& path) {
  DatWriter nen(ExportColumns(corpus::TableId::Nen));
  for (const Event& e : events) {
    auto r = nen.Blank();
    const auto text = [&](std::u16string_view column, const std::u16string& value) {
      if (!value.empty()) nen.Set(r, column, Value::Text(value));
    };
    const auto number = [&](std::u16string_view column, long value) {
      if (value > 0) nen.Set(r, column, Value::Number(value));
    };
    number(u"年基礎No", e.key);
    number(u"年表No", e.number);
    if (e.year > 0) {
      text(u"年号", EraLabel(e.year));
      text(u"年号2", e.formerEra);
      text(u"月日", DayLabel(e.date));
      text(u"年月日", DateText(e.year, e.date.month, e.date.day));
      text(u"系年", Keinen(e.year, e.date));
      text(u"月日2", DayKey(e.date));
      number(u"日", e.date.day);
      number(u"西暦", e.year);
    } else {
      text(u"年号", u"年未詳");
      text(u"年月日", u"★");
    }
    text(u"事項", e.text);
    nen.Set(r, u"分類", Value::Number(e.kind));
    text(u"事類", std::u16string(kKindLabels[static_cast<std::size_t>(e.kind)]));
    if (e.klass >= 0) nen.Set(r, u"C", Value::Number(e.klass));
    text(u"改元", e.newEra);
    text(u"関連ﾃﾞｰﾀ", e.link);
    if (!e.sysNo.empty()) nen.Set(r, u"ｼｽﾃﾑNo.", Value::Number(e.sysNo));
    text(u"番号", e.bangou);
    number(u"史料番号", e.source);
    number(u"尊基礎No", e.honKey);
    nen.Add(std::move(r));
  }
  nen.Write(path);
}

void RegisterCorrections(const std::vector<Event>& events, Registry& registry) {
  for (const Event& e : events) {
    for (const Fix& f : e.fixes) {
      registry.corrections.push_back(
          {u"Nen", IntText(e.key), f.field, f.kind, f.oldText, f.newText});
    }
  }
}

}  // namespace

void WriteChronology(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder) {
  // 年表関連 holds one row a year and one for the undated events.
  const int nekRows = corpus::SchemaOf(corpus::TableId::Nek).rowCapacity;
  const Span span{sizes.firstYear, std::min(sizes.lastYear, sizes.firstYear + nekRows - 2)};
  Chronicle chronicle(sizes, registry, span);
  const std::vector<Event> events = chronicle.Compose();

  WriteNek(chronicle.years(), folder / "年表関連.dat");
  WriteNen(events, folder / "年表.dat");
  WriteHon(chronicle.mandalas(), chronicle.composer(), folder / "本尊資料.dat");
  for (const Mandala& m : chronicle.mandalas()) registry.honKeys.push_back(m.key);
  RegisterCorrections(events, registry);
}

}  // namespace suizo::gen
