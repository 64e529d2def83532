#include <array>

#include "core/corpus/import_support.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using import::ReadRows;
using import::Step;
using import::WriteStore;

// The first row of each of the eight fascicles of the sutra.
constexpr std::array<int, 8> kFascicleStarts = {212, 577, 989, 1350, 1640, 1961, 2289, 2514};
constexpr std::u16string_view kFascicleNumerals = u"一二三四五六七八";

// Each row of the sutra proper is labelled with its fascicle; the label
// replaces whatever the export held there.
void LabelFascicles(Table& hok) {
  std::size_t fascicle = 0;  // carried from row to row
  for (int row = 1; row <= hok.rows(); ++row) {
    hok.Set(row, hok::kFascicle, u"");
    if (!text::Contains(hok.Get(row, hok::kSutraName), u"妙法")) continue;
    for (std::size_t k = 0; k < kFascicleStarts.size(); ++k) {
      if (kFascicleStarts[k] <= row) fascicle = k + 1;
    }
    if (fascicle > 0) {
      hok.Set(row, hok::kFascicle, u"巻第" + std::u16string(1, kFascicleNumerals[fascicle - 1]));
    }
  }
}

// An outline row without a heading is not kept: the next record takes its place.
void ReadOutline(Corpus& corpus, TableId id) {
  Table& table = corpus.table(id);
  ReadRows(corpus, id, [&](int row) { return !table.Get(row, outline::kHeading).empty(); });
}

}  // namespace

void ImportSutra(Corpus& corpus, const ImportOptions& options) {
  ReadRows(corpus, TableId::Hok);
  LabelFascicles(corpus.Hok());
  WriteStore(corpus, options, TableId::Hok);
  Step(options, TableId::Hok);
  for (const TableId outline : {TableId::Sok, TableId::Kam}) {
    ReadOutline(corpus, outline);
    WriteStore(corpus, options, outline);
    Step(options, outline);
  }
  for (const TableId plain : {TableId::Hon, TableId::Tyu}) {
    ReadRows(corpus, plain);
    WriteStore(corpus, options, plain);
    Step(options, plain);
  }
}

}  // namespace suizo::corpus
