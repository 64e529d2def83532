#include "synthetic_store.h"

#include <cstdint>
#include <string>

#include "core/corpus/dax_file.h"
#include "core/corpus/schema.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::bench {
namespace {

using corpus::Table;
using corpus::TableId;

class Words {
 public:
  // A line of `min` to `max` characters drawn from kana and common kanji.
  std::u16string Line(int min, int max) {
    static constexpr std::u16string_view kPool =
        u"あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわ"
        u"をん"
        u"法華経仏道心念衆生世間如来菩薩聞説是時諸天人山寺春秋雨風月日年書状文字学體學謹言恐々、。";
    const int length = min + static_cast<int>(Next() % static_cast<std::uint32_t>(max - min + 1));
    std::u16string out;
    for (int i = 0; i < length; ++i) out += kPool[Next() % kPool.size()];
    return out;
  }
  bool Chance(int percent) { return static_cast<int>(Next() % 100) < percent; }
  std::u16string PageLine() {
    return text::NumberText(static_cast<double>(Next() % 2000) + (Next() % 20 + 1) / 100.0);
  }

 private:
  std::uint32_t Next() {
    state_ = state_ * 1664525u + 1013904223u;
    return state_ >> 8;
  }
  std::uint32_t state_ = 12345;
};

void Finish(Table& table, int rows, const std::filesystem::path& folder) {
  table.set_cols(table.schema().FieldMax());
  table.set_rows(rows);
  corpus::WriteDax(folder / (std::string(table.schema().stem) + ".dax"), table);
}

// Order columns with their count in row `countRow`.
void Orders(Table& table, int countRow, std::initializer_list<int> columns, int count) {
  for (const int column : columns) {
    table.Set(countRow, column, text::IntText(count));
    for (int m = 1; m <= count; ++m) table.Set(m, column, text::IntText(m));
  }
}

}  // namespace

void WriteSyntheticStore(const std::filesystem::path& folder) {
  Words w;
  {
    Table dat(corpus::SchemaOf(TableId::Dat));
    const int rows = 34000;
    for (int r = 1; r <= rows; ++r) {
      dat.Set(r, 2, text::IntText(10000 + r));
      dat.Set(r, 3, text::IntText(r / 34));
      dat.Set(r, 4, text::IntText(r / 34));
      dat.Set(r, 6, w.Line(3, 10));
      dat.Set(r, 7, text::IntText(r % 10));
      dat.Set(r, 8, w.Line(20, 120));
      dat.Set(r, 9, dat.Get(r, 8));
      for (int f = 10; f <= 13; ++f) {
        if (w.Chance(30)) dat.Set(r, f, w.Line(20, 120));
      }
      dat.Set(r, 15, w.Line(40, 240));
      for (int f = 22; f <= 35; ++f) dat.Set(r, f, w.PageLine());
      if (w.Chance(5)) dat.Set(r, 52, w.Line(10, 60));
    }
    Orders(dat, 0, {1, 5, 16, 17, 41, 42, 43, 44, 45, 46, 47}, rows);
    Finish(dat, rows, folder);
  }
  {
    Table mok(corpus::SchemaOf(TableId::Mok));
    for (int r = 1; r <= 1000; ++r) {
      mok.Set(r, 3, text::IntText(10000 + r * 34));
      mok.Set(r, 4, text::IntText(r));
      mok.Set(r, 10, w.Line(3, 10));
      mok.Set(r, 13, w.Line(2, 6));
      mok.Set(r, 14, w.Line(100, 600));
      mok.Set(r, 25, w.Line(5, 15));
      mok.Set(r, 26, u"1260/03/01");
      for (int f = 42; f <= 51; ++f) mok.Set(r, f, w.PageLine());
    }
    Finish(mok, 1000, folder);
  }
  {
    Table dic(corpus::SchemaOf(TableId::Dic));
    const int rows = 36000;
    for (int r = 1; r <= rows; ++r) {
      dic.Set(r, 1, text::IntText(r));
      dic.Set(r, 2, u"1");
      dic.Set(r, 3, w.Line(1, 6));
      dic.Set(r, 6, w.Line(2, 10));
      dic.Set(r, 7, w.Line(30, 300));
      dic.Set(r, 8, dic.Get(r, 3));
      dic.Set(r, 11, u"1");
    }
    Orders(dic, 1, {4, 5}, rows);
    dic.Set(1, 3, text::IntText(rows));
    Finish(dic, rows, folder);
  }
  {
    Table hok(corpus::SchemaOf(TableId::Hok));
    for (int r = 1; r <= 3000; ++r) {
      hok.Set(r, 1, text::IntText(r));
      hok.Set(r, 8, u"妙法蓮華経");
      for (int f = 10; f <= 12; ++f) hok.Set(r, f, w.PageLine());
      for (int f = 13; f <= 23; ++f) hok.Set(r, f, w.Line(10, 60));
    }
    Finish(hok, 3000, folder);
  }
  for (const auto& [id, rows] : {std::pair{TableId::Sok, 80}, std::pair{TableId::Kam, 1360}}) {
    Table outline(corpus::SchemaOf(id));
    for (int r = 1; r <= rows; ++r) {
      outline.Set(r, 1, u"妙法蓮華経");
      outline.Set(r, 4, w.Line(2, 12));
      outline.Set(r, 5, text::IntText(r * 2));
    }
    Finish(outline, rows, folder);
  }
  {
    Table sdat(corpus::SchemaOf(TableId::SDat));
    const int rows = 36000;
    for (int r = 1; r <= rows; ++r) {
      sdat.Set(r, 2, text::IntText(30000 + r));
      sdat.Set(r, 4, text::IntText(r / 40));
      sdat.Set(r, 6, w.Line(3, 10));
      sdat.Set(r, 9, w.Line(20, 120));
      sdat.Set(r, 11, w.Line(20, 120));
      sdat.Set(r, 12, u"1262/01/01");
    }
    Orders(sdat, 0, {1}, rows);
    Finish(sdat, rows, folder);
  }
  {
    Table smok(corpus::SchemaOf(TableId::SMok));
    for (int r = 1; r <= 900; ++r) {
      smok.Set(r, 2, text::IntText(r));
      smok.Set(r, 3, text::IntText(30000 + r * 40));
      smok.Set(r, 4, w.Line(3, 10));
      smok.Set(r, 12, u"0");
    }
    Finish(smok, 900, folder);
  }
  {
    Table nen(corpus::SchemaOf(TableId::Nen));
    for (int r = 1; r <= 7000; ++r) {
      nen.Set(r, 2, text::IntText(r));
      nen.Set(r, 7, u"1260/03/01");
      nen.Set(r, 14, w.Line(10, 60));
      for (const int f : corpus::nen::kOfficeFields) nen.Set(r, f, u"亀@山");
    }
    Finish(nen, 7000, folder);
  }
  for (const auto& [id, rows] : {std::pair{TableId::Nek, 700}, std::pair{TableId::Tyu, 3000},
                                 std::pair{TableId::Hon, 190}}) {
    Table table(corpus::SchemaOf(id));
    for (int r = 1; r <= rows; ++r) {
      table.Set(r, 1, text::IntText(r));
      table.Set(r, 3, w.Line(5, 40));
    }
    Finish(table, rows, folder);
  }
}

}  // namespace suizo::bench
