#include <array>
#include <vector>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/import_support.h"
#include "core/text/like.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/sorting.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::corpus {
namespace {

using import::ReadRows;
using import::Step;
using import::WriteStore;

constexpr int kClassTableSize = 40001;  // by 辞基本No, 0..40000
constexpr int kClassSample = 25;        // the row whose 事類 tells whether the export has classes
constexpr std::size_t kReadingWidth = 70;

constexpr std::array<std::u16string_view, 9> kClassLabels = {
    u"", u"翠典", u"解題", u"ｼｽﾃﾑ", u"法華", u"史料", u"大論", u"止観", u"眼蔵"};

// The class table beside the exports: a header, then "辞基本No,分類" lines.
// The header lands in entry 0, as the sequential reader leaves it.
std::vector<std::u16string> ReadClassTable(const std::filesystem::path& path) {
  const std::string file = DisplayPath(path);
  const std::u16string text = ReadShiftJisFile(path);
  std::vector<std::u16string> classes(kClassTableSize);
  long line = 0;
  for (auto record : text::Split(text, u"\n")) {
    ++line;
    if (!record.empty() && record.back() == u'\r') record.remove_suffix(1);
    if (record.empty() || record.front() == u'\0') continue;
    const auto values = text::Split(record, u",");
    if (values.size() != 2)
      throw CorpusError({file, line}, "a line holds an entry's key and its class");
    const auto key = text::ValWhole(values[0]);
    if (key < 0 || key >= kClassTableSize) {
      throw CorpusError({file, line, -1, -1, "辞基本No"}, "the key is outside 0 to 40000");
    }
    classes[static_cast<std::size_t>(key)] = values[1];
  }
  return classes;
}

void ApplyClassTable(Table& dic, const std::filesystem::path& path) {
  if (path.empty()) {
    throw CorpusError({"add.csv"},
                      "the dictionary's export has no classes and there is no class "
                      "table (add.csv) beside it");
  }
  const std::vector<std::u16string> classes = ReadClassTable(path);
  for (int row = 1; row <= dic.rows(); ++row) {
    const auto key = text::ValWhole(dic.Get(row, dic::kKey));
    if (key < 0 || key >= kClassTableSize) {
      throw CorpusError({DisplayPath(path), 0, row, dic::kKey, "辞基本No"},
                        "the dictionary's key is outside the class table's 0 to 40000");
    }
    const std::u16string& klass = classes[static_cast<std::size_t>(key)];
    dic.Set(row, dic::kClass, klass);
    const auto label = static_cast<std::size_t>(text::Val(klass));
    dic.Set(row, dic::kClassLabel, label < kClassLabels.size() ? kClassLabels[label] : u"");
  }
}

bool IsHiragana(char16_t c) {
  const int code = static_cast<std::uint16_t>(text::SjisCode(c));
  return code >= 0x829F && code <= 0x82F1;
}

// `印`: the head word as the lookup's pattern. A word wholly in kana is
// rewritten whole; any other keeps its first character literal; a single
// character that is not kana keeps the key its source gave it.
void LookupKeys(Table& dic, int itaiji) {
  for (int row = 1; row <= dic.rows(); ++row) {
    const std::u16string_view word = dic.Get(row, dic::kHeadWord);
    std::size_t kana = 0;
    for (const char16_t c : word) kana += IsHiragana(c) ? 1 : 0;
    if (kana == word.size()) {
      dic.Set(row, dic::kLookupKey, text::ItaijiPattern(word, itaiji));
    } else if (word.size() > 1) {
      dic.Set(row, dic::kLookupKey,
              std::u16string(1, word[0]) + text::ItaijiPattern(word.substr(1), itaiji));
    }
  }
}

// `SortDic`: the reading order over the entries kept.
std::vector<int> SortDic(const Table& dic, const std::vector<int>& kept) {
  const int n = static_cast<int>(kept.size()) - 1;
  std::vector<int> elements(kept.size());
  std::vector<std::u16string> keys(kept.size());
  for (int m = 1; m <= n; ++m) {
    const int row = kept[static_cast<std::size_t>(m)];
    std::u16string key(dic.Get(row, dic::kReading));
    if (key.size() < kReadingWidth) key.append(kReadingWidth - key.size(), u' ');
    key += dic.Get(row, dic::kHeadNo);
    elements[static_cast<std::size_t>(m)] = m;
    keys[static_cast<std::size_t>(m)] = std::move(key);
  }
  if (n > 1) text::QuickSort2(elements, keys, 1, n);
  return elements;
}

// `ConvDic`: continuation rows merge into the row before them (or the one
// before that, when that too continues) and join no order; a row that says
// "続き" without brackets is dropped; the rest are the entries, sorted by
// reading, with both orders stored.
void ConvDic(Corpus& corpus) {
  Table& dic = corpus.Dic();
  static const text::LikePattern continuation(u"*([つづ]づき*)*");
  std::vector<int> kept(1, 0);
  std::vector<bool> continues(static_cast<std::size_t>(dic.rows()) + 1, false);
  for (int row = 1; row <= dic.rows(); ++row) {
    const std::u16string_view word = dic.Get(row, dic::kHeadWord);
    if (continuation.Matches(word)) {
      continues[static_cast<std::size_t>(row)] = true;
      const int into = row >= 2 && continues[static_cast<std::size_t>(row - 1)] ? row - 2 : row - 1;
      if (into >= 1) {
        dic.Set(into, dic::kExplanation,
                std::u16string(dic.Get(into, dic::kExplanation)) + std::u16string(kMergeRule) +
                    std::u16string(dic.Get(row, dic::kExplanation)));
      }
    } else if (!text::Contains(word, u"続き")) {
      kept.push_back(row);
    }
  }
  const std::vector<int> yomi = SortDic(dic, kept);
  const int count = static_cast<int>(kept.size()) - 1;
  corpus.DisMaxY = count;
  corpus.DicOrder = kept;
  corpus.DicYomi = yomi;
  if (dic.rows() >= dic::kCountRow) dic.Set(dic::kCountRow, dic::kHeadWord, text::IntText(count));
  for (int m = 1; m <= count; ++m) {
    dic.Set(m, dic::kKeptColumn, text::IntText(kept[static_cast<std::size_t>(m)]));
    dic.Set(m, dic::kReadingColumn, text::IntText(yomi[static_cast<std::size_t>(m)]));
  }
}

}  // namespace

void ImportDictionary(Corpus& corpus, const ImportOptions& options) {
  Table& dic = corpus.Dic();
  ReadRows(corpus, TableId::Dic);
  if (dic.Get(kClassSample, dic::kClassLabel).empty()) ApplyClassTable(dic, options.classTable);
  LookupKeys(dic, options.itaiji);
  ConvDic(corpus);
  ApplyCorrections(corpus, TableId::Dic, options.corrections, options.message);
  WriteStore(corpus, options, TableId::Dic);
  Step(options, TableId::Dic);
}

}  // namespace suizo::corpus
