#include "core/corpus/dic_orders.h"

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {

void ConvDic2(Corpus& corpus) {
  const Table& dic = corpus.Dic();
  const std::string file = DisplayPath(corpus.FilePath(TableId::Dic, ".dax"));
  // Whole numbers within [low, high] or a fault naming the cell.
  const auto read = [&](int row, int field, int low, int high, const char* what) {
    const std::u16string_view cell = dic.Get(row, field);
    const auto value = text::ToInt(cell);
    if (!value || *value < low || *value > high) {
      throw CorpusError({file, 0, row, field, text::ToUtf8(dic.schema().fields[field])},
                        std::string(what) + " should be a whole number from " +
                            std::to_string(low) + " to " + std::to_string(high) + ", not \"" +
                            text::ToUtf8(cell) + "\"");
    }
    return *value;
  };
  const int count = dic.rows() < dic::kCountRow ? 0
                                                : read(dic::kCountRow, dic::kHeadWord, 0,
                                                       dic.rows(), "the count of entries");
  corpus.DisMaxY = count;
  corpus.DicOrder.assign(static_cast<std::size_t>(count) + 1, 0);
  corpus.DicYomi.assign(static_cast<std::size_t>(count) + 1, 0);
  for (int m = 1; m <= count; ++m) {
    corpus.DicOrder[static_cast<std::size_t>(m)] =
        read(m, dic::kKeptColumn, 1, dic.rows(), "an entry's row");
    corpus.DicYomi[static_cast<std::size_t>(m)] =
        read(m, dic::kReadingColumn, 1, count, "an entry's place in reading order");
  }
}

}  // namespace suizo::corpus
