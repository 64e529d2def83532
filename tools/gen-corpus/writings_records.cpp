#include <algorithm>
#include <string>

#include "core/corpus/schema.h"
#include "core/text/utf16.h"
#include "dat_writer.h"
#include "history.h"
#include "modules.h"
#include "writings.h"

namespace suizo::gen {
namespace {

using text::IntText;

// Recipients as the editors write them; the import classes them by what they
// hold (女, 尼, 夫妻, 兄弟, 及/並), and two names are data of the corrections.
constexpr std::array<std::u16string_view, 14> kRecipients = {
    u"妙心尼", u"光明女",         u"某殿夫妻",         u"日向兄弟", u"松野殿",     u"上原入道",
    u"窪の尼", u"富木殿並びに尼", u"阿仏房及び千日尼", u"大田殿.",  u"妙法女兄弟", u"南条殿御夫婦",
    u"浄蓮房", u"新池殿"};
constexpr std::u16string_view kExemptName = u"阿仏房";
constexpr std::u16string_view kCouplePhrase = u"南条殿御夫婦";

// The record view's notes, with the references its link maker reads.
std::u16string Introduction(const Writings& w, std::size_t d, Composer& c) {
  const Document& doc = w.documents[d];
  std::u16string t = doc.title + u"は" + c.Remark() + u"。／";
  const Document& other = w.documents[(d + 5) % w.documents.size()];
  const auto& key = w.rows[static_cast<std::size_t>(other.firstRow)].f[2];
  switch (d % 6) {
    case 0:
      t += u"同じ年の書に番号" + other.bangou + u"あり。本文は(" + key + u")に始まる。";
      break;
    case 1:
      t += u"№" + other.bangou + u"と対をなす。№" + key + u"参照。";
      break;
    case 2:
      t += u"旧目録の番号№" + other.bangou + u"に当たる。（" + key + u"）以下を見よ。";
      break;
    case 3:
      t += u"追而書は番号４－追Ⅳに収める。番号1-999は欠番。" + key + u"は本文の首。";
      break;
    case 4:
      t += u"番号新加-36と同筆。人々の伝へし所なり。";
      break;
    default:
      t += u"番号" + other.bangou.substr(other.bangou.find(u'-') + 1) + u"と内容相通ず。";
      break;
  }
  if (d % 8 == 7) t += u"次頁";
  return t;
}

}  // namespace

void ComposeRecords(Writings& w, Composer& c, Registry& registry) {
  Rng& rng = c.rng();
  for (std::size_t d = 0; d < w.documents.size(); ++d) {
    const Document& doc = w.documents[d];
    if (doc.crossReference) continue;
    const auto& head = w.rows[static_cast<std::size_t>(doc.firstRow)].f;
    std::array<std::u16string, kMokFields> m;
    m[2] = IntText(static_cast<long>(d) + 1);
    m[3] = head[2];
    m[4] = doc.bangou;
    m[5] = IntText(static_cast<long>(d) + 1);
    if (!head[31].empty()) m[6] = IntText(static_cast<long>(d) + 1);
    m[7] = IntText(static_cast<long>(d) + 2);
    m[9] = IntText(doc.klass);
    m[10] = d % 9 == 2 ? doc.title + u"＜" + c.Title() + u"とも＞" : doc.title;
    m[11] = rng.Percent(60) ? u"有" : (rng.Percent(50) ? u"抄" : u"無");
    if (d % 5 != 4) m[12] = head[20];  // the others are filled from the text at run time
    const std::u16string recipient(kRecipients[d % kRecipients.size()]);
    m[13] = recipient;
    m[14] = Introduction(w, d, c);
    if (rng.Percent(50)) m[15] = u"題号は古写本による。";
    if (rng.Percent(40)) m[16] = u"別題あり／" + c.Title();
    if (rng.Percent(40)) m[17] = u"系年は内容による推定。";
    if (rng.Percent(30)) m[18] = u"異説あり。";
    m[19] = d % 4 == 0 ? recipient + u"御前" : recipient;
    if (d % 13 == 6) m[19] += u"/旧表記";
    if (rng.Percent(30)) m[20] = u"宛所の人物は不詳。";
    if (doc.autograph) m[21] = u"真蹟" + IntText(rng.Between(1, 9)) + u"紙。";
    if (doc.autograph) m[22] = c.Place() + u"の寺";
    if (doc.manuscript)
      m[23] = u"写本は" + c.Place() + u"に伝はる。" + (d % 8 == 7 ? u"次頁" : u"");
    if (rng.Percent(25)) m[24] = c.Remark();
    m[25] = c.TitleKana() + u"しょ";
    m[26] = d == 9 ? u"??" : DateText(doc.year, doc.month, doc.day);
    m[28] = EraOf(doc.year).era;
    m[29] = head[20];
    if (rng.Percent(30)) m[30] = EraLabel(doc.year + 1);
    m[31] = head[20];
    m[33] = IntText(doc.month) + u"月" + IntText(doc.day) + u"日";
    m[34] = IntText(doc.day);
    m[35] = IntText(doc.year - 1221);
    m[36] = c.Place();
    m[37] = head[21];
    m[41] = u"0";
    for (int g = 0; g < 8; ++g)
      m[static_cast<std::size_t>(42 + g)] = head[static_cast<std::size_t>(22 + g)];
    m[50] = head[32];
    m[51] = head[36];
    w.records.push_back(m);
    registry.documents.push_back({head[2], doc.bangou, doc.title, doc.klass, doc.year, m[26]});

    // A part that is a document of its own only in the system order.
    if (doc.splitRow > 0) {
      const auto& part = w.rows[static_cast<std::size_t>(doc.firstRow + doc.splitRow)].f;
      std::array<std::u16string, kMokFields> p = m;
      p[2] = IntText(static_cast<long>(w.documents.size() + d) + 1);
      p[3] = part[2];
      p[4] = doc.bangou + u"別";
      p[10] = doc.title + u"　別紙";
      p[14] = u"もと" + doc.title + u"の後半。システム版では別の書として扱ふ。";
      for (int g = 42; g <= 51; ++g) p[static_cast<std::size_t>(g)].clear();
      w.records.push_back(p);
    }
  }
  for (const DatRow& row : w.rows) {
    if (!row.f[8].empty()) registry.rowSysNos.push_back(row.f[2]);
  }

  // What the editors corrected after the export.
  const auto& docs = registry.documents;
  registry.corrections.push_back({u"Mok", u"", 13, u"exempt", u"", std::u16string(kExemptName)});
  registry.corrections.push_back({u"Mok", u"", 13, u"couple", u"", std::u16string(kCouplePhrase)});
  registry.corrections.push_back({u"Mok", u"", 14, u"append", u"次頁", u""});
  registry.corrections.push_back({u"Mok", u"", 23, u"append", u"次頁", u""});
  registry.corrections.push_back(
      {u"Mok", docs[3].sysNo, 14, u"replace", u"番号1-999は欠番", u"番号1-999は欠番(旧番号)"});
  registry.corrections.push_back({u"Mok", docs[4].sysNo, 12, u"set", u"", u"系年未詳"});
  registry.corrections.push_back({u"Mok", u"", 41, u"set", u"", u"0"});
  registry.corrections.push_back({u"Dat", docs[6].sysNo, 20, u"set", u"", u"系年未詳"});
}

void WriteWritings(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder) {
  Composer composer(sizes.seed ^ 0x5A17);
  Writings w = ComposeWritings(sizes, composer, registry);
  PlaceInCollections(w, composer.rng());
  ComposeRecords(w, composer, registry);

  // Numbers go out bare, as the database writes numeric columns.
  const auto isNumber = [](int field, std::initializer_list<int> numbers) {
    return std::find(numbers.begin(), numbers.end(), field) != numbers.end();
  };
  const auto& datSchema = corpus::SchemaOf(corpus::TableId::Dat);
  std::vector<std::u16string> datColumns = ExportColumns(corpus::TableId::Dat);
  datColumns.insert(datColumns.begin() + 6, u"更新日");  // after 書名: a column no table has
  DatWriter dat(datColumns);
  for (const DatRow& row : w.rows) {
    std::vector<Value> record = dat.Blank();
    for (int f = 1; f <= datSchema.FieldMax(); ++f) {
      const auto& v = row.f[static_cast<std::size_t>(f)];
      if (v.empty()) continue;
      const bool number = isNumber(f, {2, 3, 7, 18, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 35});
      dat.Set(record, datSchema.fields[static_cast<std::size_t>(f)],
              number ? Value::Number(v) : Value::Text(v));
    }
    dat.Set(record, u"更新日", Value::Text(u"2020/04/01"));
    dat.Add(std::move(record));
  }
  dat.Write(folder / "翠典本文.dat");

  const auto& mokSchema = corpus::SchemaOf(corpus::TableId::Mok);
  DatWriter mok(ExportColumns(corpus::TableId::Mok));
  for (const auto& m : w.records) {
    std::vector<Value> record = mok.Blank();
    for (int f = 1; f <= mokSchema.FieldMax(); ++f) {
      const auto& v = m[static_cast<std::size_t>(f)];
      if (v.empty()) continue;
      const bool number =
          isNumber(f, {2, 3, 5, 6, 7, 9, 34, 35, 41, 42, 43, 44, 45, 46, 47, 48, 49});
      mok.Set(record, mokSchema.fields[static_cast<std::size_t>(f)],
              number ? Value::Number(v) : Value::Text(v));
    }
    mok.Add(std::move(record));
  }
  mok.Write(folder / "翠典資料.dat");
}

}  // namespace suizo::gen
