#include <cstdio>

#include "composer.h"
#include "core/corpus/schema.h"
#include "core/text/utf16.h"
#include "dat_writer.h"
#include "modules.h"

namespace suizo::gen {
namespace {

using text::IntText;

struct Chapter {
  std::u16string_view sutra;
  std::u16string_view name;
  int firstRow;
};

// The opening sutra, the 28 chapters and the closing sutra, each starting at
// a row chosen so that every fascicle of the sutra begins where the reader
// expects it (212, 577, 989, 1350, 1640, 1961, 2289, 2514).
constexpr std::array<Chapter, 32> kChapters = {{
    {u"無量義経", u"徳行品第一", 1},
    {u"無量義経", u"説法品第二", 71},
    {u"無量義経", u"十功徳品第三", 141},
    {u"妙法蓮華経", u"序品第一", 212},
    {u"妙法蓮華経", u"方便品第二", 381},
    {u"妙法蓮華経", u"譬喩品第三", 577},
    {u"妙法蓮華経", u"信解品第四", 801},
    {u"妙法蓮華経", u"薬草喩品第五", 989},
    {u"妙法蓮華経", u"授記品第六", 1081},
    {u"妙法蓮華経", u"化城喩品第七", 1181},
    {u"妙法蓮華経", u"五百弟子受記品第八", 1350},
    {u"妙法蓮華経", u"授学無学人記品第九", 1431},
    {u"妙法蓮華経", u"法師品第十", 1481},
    {u"妙法蓮華経", u"見宝塔品第十一", 1561},
    {u"妙法蓮華経", u"提婆達多品第十二", 1640},
    {u"妙法蓮華経", u"勧持品第十三", 1711},
    {u"妙法蓮華経", u"安楽行品第十四", 1771},
    {u"妙法蓮華経", u"従地涌出品第十五", 1871},
    {u"妙法蓮華経", u"如来寿量品第十六", 1961},
    {u"妙法蓮華経", u"分別功徳品第十七", 2061},
    {u"妙法蓮華経", u"随喜功徳品第十八", 2151},
    {u"妙法蓮華経", u"法師功徳品第十九", 2211},
    {u"妙法蓮華経", u"常不軽菩薩品第二十", 2289},
    {u"妙法蓮華経", u"如来神力品第二十一", 2341},
    {u"妙法蓮華経", u"嘱累品第二十二", 2381},
    {u"妙法蓮華経", u"薬王菩薩本事品第二十三", 2401},
    {u"妙法蓮華経", u"妙音菩薩品第二十四", 2461},
    {u"妙法蓮華経", u"観世音菩薩普門品第二十五", 2514},
    {u"妙法蓮華経", u"陀羅尼品第二十六", 2581},
    {u"妙法蓮華経", u"妙荘厳王本事品第二十七", 2611},
    {u"妙法蓮華経", u"普賢菩薩勧発品第二十八", 2651},
    {u"仏説観普賢菩薩行法経", u"仏説観普賢菩薩行法経", 2701},
}};

// Classical phrases with their readings, composed so that a reading typed in
// kana finds the classical text: ず and 不, べし and 可, より and 従, られ and
// 見, これ and 是, なし and 無, となす and 為, しむ and 令.
struct Phrase {
  std::u16string_view kanbun;
  std::u16string_view kundoku;
};
constexpr std::array<Phrase, 24> kPhrases = {{
    {u"諸仏不可見", u"諸仏は見るべからず"},
    {u"従地涌出", u"地より涌出す"},
    {u"従是以来", u"これより以来"},
    {u"世尊知之", u"世尊これを知ろしめす"},
    {u"衆生少福", u"衆生は福少なし"},
    {u"為衆生説", u"衆生の為に説く"},
    {u"無量無辺", u"無量無辺なり"},
    {u"令衆生入", u"衆生をして入らしむ"},
    {u"所説之法", u"説く所の法"},
    {u"是法微妙", u"この法は微妙なり"},
    {u"莫作是念", u"この念をなすことなかれ"},
    {u"可得聞", u"聞くことを得べし"},
    {u"不可称計", u"称計すべからず"},
    {u"使得安穏", u"安穏を得しむ"},
    {u"菩薩供養", u"菩薩供養す"},
    {u"如来功徳", u"如来の功徳"},
    {u"浄土荘厳", u"浄土の荘厳"},
    {u"見宝塔", u"宝塔を見る"},
    {u"不退転", u"退転せず"},
    {u"為説法", u"為に法を説く"},
    {u"無有疑", u"疑ひ有ること無し"},
    {u"所見諸仏", u"見らるる所の諸仏"},
    {u"勿生疑", u"疑ひを生ずることなかれ"},
    {u"作是言", u"この言をなす"},
}};

constexpr std::array<std::u16string_view, 8> kRenderings = {u"仏はこのように説かれた",
                                                            u"衆生は皆この教えを聞くことができる",
                                                            u"菩薩たちは喜んで供養した",
                                                            u"その功徳ははかり知れない",
                                                            u"大地が震え、空から花が降った",
                                                            u"この法は聞きがたく、信じがたい",
                                                            u"疑ってはならない",
                                                            u"宝の塔が地からわき出た"};

std::u16string Fixed(const char* format, double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, format, value);
  return std::u16string(buffer, buffer + std::char_traits<char>::length(buffer));
}

std::u16string PageLine(int page, int line) {
  return Fixed("%.0f", page) + u"." + (line < 10 ? u"0" : u"") + IntText(line);
}

const Chapter& ChapterOf(int row) {
  const Chapter* found = &kChapters[0];
  for (const Chapter& c : kChapters) {
    if (c.firstRow <= row) found = &c;
  }
  return *found;
}

struct HokRow {
  std::u16string zokyo;  // 蔵経頁行
  std::u16string kaiketsu;
  std::u16string taiyaku;
};

std::vector<HokRow> WriteHok(const Sizes& sizes, Composer& c, const std::filesystem::path& folder) {
  Rng& rng = c.rng();
  DatWriter hok(ExportColumns(corpus::TableId::Hok));
  std::vector<HokRow> pages(1);
  const int rows = sizes.hokRows;
  int lastPage = 0;
  int line = 0;
  for (int r = 1; r <= rows; ++r) {
    const Chapter& chapter = ChapterOf(r);
    std::u16string kanbun, kundoku;
    const int parts = rng.Between(1, 3);
    for (int p = 0; p < parts; ++p) {
      const Phrase& phrase =
          kPhrases[static_cast<std::size_t>(rng.Between(0, kPhrases.size() - 1))];
      kanbun += phrase.kanbun;
      kundoku += std::u16string(phrase.kundoku) + (p + 1 < parts ? u"、" : u"。");
    }
    if (r % 97 == 5) kundoku += u"衆生・菩薩ことごとく歓喜す。";
    if (r % 83 == 11) kanbun.insert(0, u"  ");
    if (r % 89 == 13) kundoku.insert(0, u"  ");
    // Pages of the edition run from 66 to 721 across the sutra.
    const int page = 66 + (r - 1) * 656 / rows;
    line = page == lastPage ? line + 1 : 1;
    lastPage = page;
    // 蔵経 pages are in the form "12a.05": page, register, line.
    const std::u16string_view registers[] = {u"a", u"b", u"c"};
    const HokRow where{IntText(1 + r / 30) + std::u16string(registers[r % 3]) + u"." +
                           (r % 28 + 1 < 10 ? u"0" : u"") + IntText(r % 28 + 1),
                       PageLine(page, line), PageLine(1 + r / 3, r % 3 + 1)};
    std::u16string rendering(kRenderings[static_cast<std::size_t>(r) % kRenderings.size()]);
    if (r % 61 == 7) rendering.insert(0, u" ");
    if (r % 47 == 3)
      rendering +=
          u"／" + std::u16string(kRenderings[static_cast<std::size_t>(r + 1) % kRenderings.size()]);

    std::vector<Value> v = hok.Blank();
    hok.Set(v, u"法華No.", Value::Number(r));
    hok.Set(v, u"注経No.", Value::Number((r + 1) / 2));
    hok.Set(v, u"経名", Value::Text(chapter.sutra));
    hok.Set(v, u"品名", Value::Text(chapter.name));
    hok.Set(v, u"蔵経頁行", Value::Text(where.zokyo));
    hok.Set(v, u"開結頁行", Value::Number(where.kaiketsu));
    hok.Set(v, u"対訳頁行", Value::Number(where.taiyaku));
    hok.Set(v, u"行頭句", Value::Text(kanbun.substr(0, 2)));
    hok.Set(v, u"開結真読", Value::Text(kanbun));
    hok.Set(v, u"開結真読(元)", Value::Text(kanbun));
    hok.Set(v, u"開結訓読", Value::Text(kundoku));
    hok.Set(v, u"開結訓読(元)", Value::Text(kundoku));
    hok.Set(v, u"現代語訳", Value::Text(rendering + u"。"));
    hok.Set(v, u"蔵経真読", Value::Text(WithOldForms(kanbun, rng, 40)));
    hok.Set(v, u"検索経文", Value::Text(kanbun));
    hok.Set(v, u"備考", Value::Text(u"旧巻"));  // replaced by the fascicle at import
    hok.Set(v, u"真読字数", Value::Number(static_cast<long>(kanbun.size())));
    if (r % 41 == 9) hok.Set(v, u"文字列1", Value::Text(u"読み合はせ済み／要再考"));
    hok.Add(std::move(v));
    pages.push_back(where);
  }
  hok.Write(folder / "法華経.dat");
  return pages;
}

// An outline row shows where its phrase stands in the three editions.
void SetPages(const DatWriter& writer, std::vector<Value>& row, const HokRow& h) {
  writer.Set(row, u"蔵経頁行", Value::Text(h.zokyo));
  writer.Set(row, u"開結頁行", Value::Number(h.kaiketsu));
  writer.Set(row, u"対訳頁行", Value::Number(h.taiyaku));
}

// The broad outline: two sections a chapter, and rows without a heading that
// the import drops.
void WriteSok(const std::vector<HokRow>& hok, const std::filesystem::path& folder) {
  DatWriter sok(ExportColumns(corpus::TableId::Sok));
  int number = 0;
  const int rows = static_cast<int>(hok.size()) - 1;
  for (std::size_t ch = 0; ch < kChapters.size(); ++ch) {
    const Chapter& c = kChapters[ch];
    const int next = ch + 1 < kChapters.size() ? kChapters[ch + 1].firstRow : rows + 1;
    for (int part = 0; part < 2; ++part) {
      const int row = part == 0 ? c.firstRow : (c.firstRow + next) / 2;
      std::vector<Value> v = sok.Blank();
      sok.Set(v, u"經名", Value::Text(c.sutra));
      sok.Set(v, u"品名", Value::Text(c.name));
      const bool dropped = ch % 11 == 4 && part == 1;
      if (!dropped) sok.Set(v, u"科文", Value::Text(part == 0 ? u"序分" : u"正宗分"));
      sok.Set(v, u"法華No.", Value::Number(row));
      sok.Set(v, u"総科No.", Value::Number(++number));
      SetPages(sok, v, hok[static_cast<std::size_t>(row)]);
      sok.Add(std::move(v));
    }
  }
  sok.Write(folder / "法華経総科.dat");
}

// The fine outline: headings every few rows, nested headings that start at one
// phrase (one group longer than the thirteen rows painted either way).
void WriteKam(const Sizes& sizes, const std::vector<HokRow>& hok, Composer& c,
              const std::filesystem::path& folder) {
  Rng& rng = c.rng();
  DatWriter kam(ExportColumns(corpus::TableId::Kam));
  const int rows = static_cast<int>(hok.size()) - 1;
  static constexpr std::array<std::u16string_view, 4> kLevels = {u"一、", u"　（一）", u"　　１、",
                                                                 u"　　　ア、"};
  static constexpr std::array<std::u16string_view, 8> kTopics = {
      u"仏の説法を明かす", u"衆生の機を示す", u"譬へを挙ぐ", u"功徳を讃ず",
      u"菩薩の誓ひ",       u"疑ひを断ず",     u"宝塔の出現", u"流通を勧む"};
  const int step = std::max(1, rows * 10 / (sizes.kamRows * 8));
  int written = 0;
  int number = 0;
  for (int r = 5; r <= rows && written < sizes.kamRows; r += rng.Between(1, 2 * step)) {
    int nested = rng.Percent(12) ? rng.Between(2, 3) : 1;
    if (r >= 212 && r < 230 && written < 200)
      nested = 15;  // a long group at the opening of the sutra
    for (int n = 0; n < nested && written < sizes.kamRows; ++n, ++written) {
      std::vector<Value> v = kam.Blank();
      kam.Set(v, u"經名", Value::Text(ChapterOf(r).sutra));
      kam.Set(v, u"品名", Value::Text(ChapterOf(r).name));
      if (written % 173 != 100) {
        kam.Set(v, u"科文",
                Value::Text(std::u16string(kLevels[static_cast<std::size_t>(n) % kLevels.size()]) +
                            std::u16string(kTopics[static_cast<std::size_t>(rng.Between(0, 7))])));
      }
      kam.Set(v, u"法華No.", Value::Number(r));
      kam.Set(v, u"科文No.", Value::Number(++number));
      SetPages(kam, v, hok[static_cast<std::size_t>(r)]);
      kam.Add(std::move(v));
    }
    if (nested == 15) r = 230;
  }
  kam.Write(folder / "法華経科文.dat");
}

void WriteTyu(const Sizes& sizes, Composer& c, const std::filesystem::path& folder) {
  DatWriter tyu(ExportColumns(corpus::TableId::Tyu));
  for (int r = 1; r <= sizes.tyuRows; ++r) {
    const int hokRow = 1 + (r - 1) * sizes.hokRows / sizes.tyuRows;
    std::vector<Value> v = tyu.Blank();
    tyu.Set(v, u"注経No.", Value::Number(r));
    tyu.Set(v, u"通読注経No.", Value::Number(r));
    tyu.Set(v, u"法華No.", Value::Number(hokRow));
    tyu.Set(v, u"品名", Value::Text(ChapterOf(hokRow).name));
    tyu.Set(v, u"巻紙", Value::Text(u"第" + IntText(1 + r / 40) + u"紙"));
    tyu.Set(v, u"経文", Value::Text(c.Kanbun(6, 16)));
    tyu.Set(v, u"訓下本文", Value::Text(c.Kundoku(10, 40)));
    tyu.Set(v, u"原文漢文", Value::Text(c.Kanbun(10, 30)));
    tyu.Set(v, u"出典", Value::Text(r % 3 == 0 ? u"玄義" : u"文句"));
    tyu.Add(std::move(v));
  }
  tyu.Write(folder / "注経本文.dat");
}

}  // namespace

void WriteSutra(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder) {
  Composer c(sizes.seed ^ 0x4F0C);
  const std::vector<HokRow> hok = WriteHok(sizes, c, folder);
  WriteSok(hok, folder);
  WriteKam(sizes, hok, c, folder);
  WriteTyu(sizes, c, folder);
  registry.hokRows = sizes.hokRows;
}

}  // namespace suizo::gen
