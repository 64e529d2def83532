#include "composer.h"
#include "core/corpus/schema.h"
#include "core/text/utf16.h"
#include "dat_writer.h"
#include "history.h"
#include "modules.h"

namespace suizo::gen {
namespace {

using text::IntText;

constexpr std::array<std::u16string_view, 10> kAuthors = {
    u"慈観", u"良遍", u"覚心", u"浄恵", u"信阿", u"明照", u"道源", u"円智", u"寂然", u"宗印"};
constexpr std::array<std::u16string_view, 6> kKeepers = {u"東寺",     u"醍醐寺", u"仁和寺",
                                                         u"金沢文庫", u"高山寺", u"個人蔵"};

}  // namespace

void WriteSources(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder) {
  Composer c(sizes.seed ^ 0x51E0);
  Rng& rng = c.rng();
  const auto& sdatSchema = corpus::SchemaOf(corpus::TableId::SDat);
  DatWriter sdat(ExportColumns(corpus::TableId::SDat));
  DatWriter smok(ExportColumns(corpus::TableId::SMok));

  // Rows stay within the table; row 0 is the store's own.
  const int rowBudget = sdatSchema.rowCapacity - 200;
  long key = 50001;
  int rows = 0;
  for (int s = 0; s < sizes.sources && rows < rowBudget; ++s) {
    const int number = s + 1;
    // Dates are not in the order of the numbers, so that the other order differs.
    const int year = 1200 + (s * 37) % 100;
    const int month = rng.Between(1, 12);
    const int day = rng.Between(1, 28);
    std::u16string title =
        c.SourceTitle() + (s % 4 == 1 ? u" 巻" + IntText(s % 3 + 1) : u"第" + IntText(number));
    const std::u16string author(kAuthors[static_cast<std::size_t>(s) % kAuthors.size()]);
    int count = rng.Between(sizes.sourceRowsMin, sizes.sourceRowsMax);
    if (s == 2) count = std::max(count, 40);  // longer than a vertical page
    count = std::min(count, rowBudget - rows);
    const long head = key;
    for (int k = 0; k < count; ++k, ++key, ++rows) {
      std::vector<Value> r = sdat.Blank();
      const std::u16string kanbun = c.Kanbun(12, 60);
      std::u16string reading = k == 0 ? u"◆" + title : c.Kundoku(16, 70);
      if (k > 0 && k % 9 == 4) reading.insert(0, u"  ");
      if (k > 0 && k % 11 == 6) reading += u"／" + c.Kundoku(10, 20);
      sdat.Set(r, u"ｼｽﾃﾑNo.", Value::Number(key));
      sdat.Set(r, u"ｼｽﾃﾑ番号", Value::Number(number));
      sdat.Set(r, u"史料番号", Value::Number(number));
      sdat.Set(r, u"書名", Value::Text(title));
      sdat.Set(r, u"著者", Value::Text(author));
      if (k > 0 && rng.Percent(6)) sdat.Set(r, u"備考", Value::Text(u"翻刻の覚え／" + c.Remark()));
      sdat.Set(r, u"読下本文", Value::Text(reading));
      sdat.Set(r, u"原型活用", Value::Text(k == 0 ? title : WithOldForms(kanbun, rng, 30)));
      // A row without the shaped text stands in no order.
      if (k == 0 || k % 13 != 7)
        sdat.Set(r, u"漢文成形",
                 Value::Text(k % 10 == 3 ? u" " + kanbun : (k == 0 ? title : kanbun)));
      sdat.Set(r, u"年月日", Value::Text(DateText(year, month, day)));
      sdat.Set(r, u"系年", Value::Text(EraLabel(year)));
      sdat.Add(std::move(r));
      registry.sourceRowSysNos.push_back(IntText(key));
    }
    key += rng.Between(1, 20);

    std::vector<Value> m = smok.Blank();
    smok.Set(m, u"ｼｽﾃﾑ番号", Value::Number(number));
    smok.Set(m, u"史料番号", Value::Number(number));
    smok.Set(m, u"ｼｽﾃﾑNo.", Value::Number(head));
    smok.Set(m, u"書名", Value::Text(title));
    smok.Set(m, u"書名よみ", Value::Text(c.TitleKana() + u"のき"));
    smok.Set(m, u"系年", Value::Text(EraLabel(year)));
    smok.Set(m, u"年号", Value::Text(EraOf(year).era));
    smok.Set(m, u"年月日", Value::Text(DateText(year, month, day)));
    smok.Set(m, u"著者", Value::Text(author));
    smok.Set(m, u"蔵所",
             Value::Text(std::u16string(kKeepers[static_cast<std::size_t>(s) % kKeepers.size()])));
    smok.Set(m, u"刊行本", Value::Text(s % 3 == 0 ? u"大日本史料／第五編" : u"続群書類従"));
    smok.Add(std::move(m));
    registry.sources.push_back({number, IntText(head), title, year});
  }
  sdat.Write(folder / "史料本文.dat");
  smok.Write(folder / "史料目次.dat");
}

}  // namespace suizo::gen
