// The editors' corrections: repairs the import applies to freshly read tables
// before their stores are written, so that they cost nothing at run time and
// a new export needs no repairs by hand. The list is data, read from
// corrections.tsv beside the exports; an empty list leaves the tables as the
// export has them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"

namespace suizo::corpus {

enum class CorrectionKind { Set, Replace, Head, Link, Pass, Append, Exempt, Couple };

struct Correction {
  TableId table;
  std::u16string key;  // the row's key; empty for every row
  int field = 0;
  CorrectionKind kind = CorrectionKind::Set;
  std::u16string oldText;
  std::u16string newText;
  long line = 0;  // where it stands in its file, for messages
};

// Reads a list: tab-separated lines of table, key, field, kind, old, new;
// "#" starts a comment line. A line that is not such an entry is a
// CorpusError naming the file, the line and the field.
std::vector<Correction> ReadCorrections(const std::filesystem::path& path);

// Messages the import shows and goes on (message boxes in the viewer).
using MessageSink = std::function<void(const std::u16string&)>;

// The lookups of the corrections; each gives the row after the last when the
// key is absent. `FindDic` searches the entries kept (1..`DisMaxY`) and says
// "not found"; `FindNen` says the key and "年表№見つからない".
int FindDat(const Corpus& corpus, std::u16string_view key);
int FindMok(const Corpus& corpus, std::u16string_view key);
int FindDic(const Corpus& corpus, std::u16string_view key, const MessageSink& message);
int FindNen(const Corpus& corpus, std::u16string_view key, const MessageSink& message);

// In every kept `Dic` row with that 辞基本No, `old` becomes `new` in the
// explanation; a bare number (not starting with 0) is first bracketed as a
// reference, "〔…〕", on both sides.
void FixDicText(Corpus& corpus, std::u16string_view key, std::u16string old,
                std::u16string replacement);

// Applies the entries of one table, in list order, each seeing what the ones
// before it did. Entries of the recipient classing are not applied here.
void ApplyCorrections(Corpus& corpus, TableId table, const std::vector<Correction>& list,
                      const MessageSink& message);

// The names the recipient classing needs: people whose name keeps a recipient
// with 及 or 並 unmarked, and phrases that mark a couple.
struct RecipientNames {
  std::vector<std::u16string> exempt;
  std::vector<std::u16string> couples;
};
RecipientNames RecipientNamesOf(const std::vector<Correction>& list);

// The rule set between two merged texts.
inline constexpr std::u16string_view kMergeRule =
    u"<BR>－－－－－－－－－－－－－－－－－－－－<BR>";

}  // namespace suizo::corpus
