#include "core/corpus/corrections.h"

#include <array>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using text::Contains;
using text::ReplaceAll;

struct KindName {
  std::u16string_view name;
  CorrectionKind kind;
};
constexpr std::array<KindName, 8> kKinds = {{{u"set", CorrectionKind::Set},
                                             {u"replace", CorrectionKind::Replace},
                                             {u"head", CorrectionKind::Head},
                                             {u"link", CorrectionKind::Link},
                                             {u"pass", CorrectionKind::Pass},
                                             {u"append", CorrectionKind::Append},
                                             {u"exempt", CorrectionKind::Exempt},
                                             {u"couple", CorrectionKind::Couple}}};

constexpr std::array<std::u16string_view, 6> kColumns = {u"table", u"key",      u"field",
                                                         u"kind",  u"old text", u"new text"};

int FindByText(const Table& table, int field, int lastRow, std::u16string_view key) {
  for (int row = 1; row <= lastRow; ++row) {
    if (table.Get(row, field) == key) return row;
  }
  return lastRow + 1;
}

// The row a keyed entry works on.
int RowOf(Corpus& corpus, const Correction& c, const MessageSink& message) {
  switch (c.table) {
    case TableId::Dat:
      return FindDat(corpus, c.key);
    case TableId::Mok:
      return FindMok(corpus, c.key);
    case TableId::Dic:
      return FindDic(corpus, c.key, message);
    case TableId::Nen:
      return FindNen(corpus, c.key, message);
    default:
      return corpus.table(c.table).rows() + 1;
  }
}

// Where `old` stands in a row's field, the field of the next row follows
// after the rule, and so on while the appended row holds `old` too.
void AppendFollowing(Table& table, const Correction& c) {
  for (int row = 1; row < table.rows(); ++row) {
    if (c.oldText.empty() || !Contains(table.Get(row, c.field), c.oldText)) continue;
    std::u16string merged(table.Get(row, c.field));
    int next = row + 1;
    while (next <= table.rows()) {
      const std::u16string_view following = table.Get(next, c.field);
      merged += kMergeRule;
      merged += following;
      if (!Contains(following, c.oldText) || next == table.rows()) break;
      ++next;
    }
    table.Set(row, c.field, merged);
  }
}

}  // namespace

std::vector<Correction> ReadCorrections(const std::filesystem::path& path) {
  const std::string file = DisplayPath(path);
  const std::u16string text = text::FromUtf8(ReadFileBytes(path));
  std::vector<Correction> list;
  long lineNumber = 0;
  for (auto line : text::Split(text, u"\n")) {
    ++lineNumber;
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    if (line.empty() || line.front() == u'#') continue;
    const auto parts = text::Split(line, u"\t");
    const auto fail = [&](std::size_t column, const std::string& detail) {
      throw CorpusError(
          {file, lineNumber, -1, -1, text::ToUtf8(kColumns[std::min(column, kColumns.size() - 1)])},
          detail);
    };
    if (parts.size() != kColumns.size()) {
      fail(std::min(parts.size(), kColumns.size() - 1),
           "a correction has six fields separated by tabs; this line has " +
               std::to_string(parts.size()));
    }
    Correction c;
    c.line = lineNumber;
    bool known = false;
    for (const TableId id : {TableId::Dat, TableId::Mok, TableId::Dic, TableId::Nen}) {
      if (text::ToUtf8(parts[0]) == SchemaOf(id).name) {
        c.table = id;
        known = true;
      }
    }
    if (!known)
      fail(0, "the table must be Dat, Mok, Dic or Nen, not \"" + text::ToUtf8(parts[0]) + "\"");
    c.key = parts[1];
    const auto field = text::ToInt(parts[2]);
    if (!field || *field < 1 || *field > SchemaOf(c.table).FieldMax()) {
      fail(2,
           "the field must be a number from 1 to " + std::to_string(SchemaOf(c.table).FieldMax()));
    }
    c.field = *field;
    known = false;
    for (const KindName& k : kKinds) {
      if (parts[3] == k.name) {
        c.kind = k.kind;
        known = true;
      }
    }
    if (!known) fail(3, "unknown kind \"" + text::ToUtf8(parts[3]) + "\"");
    c.oldText = parts[4];
    c.newText = parts[5];
    const bool keyed = c.kind != CorrectionKind::Pass && c.kind != CorrectionKind::Append &&
                       c.kind != CorrectionKind::Exempt && c.kind != CorrectionKind::Couple;
    if (keyed && c.key.empty() && c.kind != CorrectionKind::Set) {
      fail(1, "this kind works on one row and needs its key");
    }
    if (c.kind == CorrectionKind::Link && c.table != TableId::Dic) {
      fail(3, "a link correction belongs to the dictionary");
    }
    list.push_back(std::move(c));
  }
  return list;
}

int FindDat(const Corpus& corpus, std::u16string_view key) {
  return FindByText(corpus.Dat(), dat::kSysNo, corpus.Dat().rows(), key);
}

int FindMok(const Corpus& corpus, std::u16string_view key) {
  return FindByText(corpus.Mok(), mok::kSysNo, corpus.Mok().rows(), key);
}

int FindDic(const Corpus& corpus, std::u16string_view key, const MessageSink& message) {
  const int row = FindByText(corpus.Dic(), dic::kKey, corpus.DisMaxY, key);
  if (row > corpus.DisMaxY && message) message(u"not found");
  return row;
}

int FindNen(const Corpus& corpus, std::u16string_view key, const MessageSink& message) {
  const Table& nen = corpus.Nen();
  const double wanted = text::Val(key);
  for (int row = 1; row <= nen.rows(); ++row) {
    if (text::Val(nen.Get(row, nen::kBaseNo)) == wanted) return row;
  }
  if (message) message(std::u16string(key) + u"年表№見つからない");
  return nen.rows() + 1;
}

void FixDicText(Corpus& corpus, std::u16string_view key, std::u16string old,
                std::u16string replacement) {
  if (!old.empty() && old[0] >= u'1' && old[0] <= u'9') {
    old = u"〔" + old + u"〕";
    replacement = u"〔" + replacement + u"〕";
  }
  Table& dic = corpus.Dic();
  for (int row = 1; row <= corpus.DisMaxY; ++row) {
    if (dic.Get(row, dic::kKey) != key) continue;
    dic.Set(row, dic::kExplanation, ReplaceAll(dic.Get(row, dic::kExplanation), old, replacement));
  }
}

void ApplyCorrections(Corpus& corpus, TableId table, const std::vector<Correction>& list,
                      const MessageSink& message) {
  Table& t = corpus.table(table);
  for (const Correction& c : list) {
    if (c.table != table) continue;
    switch (c.kind) {
      case CorrectionKind::Set:
        if (c.key.empty()) {
          for (int row = 1; row <= t.rows(); ++row) t.Set(row, c.field, c.newText);
        } else {
          t.Set(RowOf(corpus, c, message), c.field, c.newText);
        }
        break;
      case CorrectionKind::Replace: {
        const int row = RowOf(corpus, c, message);
        t.Set(row, c.field, ReplaceAll(t.Get(row, c.field), c.oldText, c.newText));
        break;
      }
      case CorrectionKind::Head: {
        const int row = RowOf(corpus, c, message);
        if (!c.newText.empty()) {
          t.Set(row, c.field, c.newText);
        } else {
          for (const int f : {dat::kMain, dat::kMain2})
            t.Set(row, f, u"◆" + std::u16string(t.Get(row, f)));
        }
        break;
      }
      case CorrectionKind::Link:
        FixDicText(corpus, c.key, c.oldText, c.newText);
        break;
      case CorrectionKind::Pass:
        for (int row = 1; row <= t.rows(); ++row) {
          const std::u16string_view v = t.Get(row, c.field);
          if (Contains(v, c.oldText)) t.Set(row, c.field, ReplaceAll(v, c.oldText, c.newText));
        }
        break;
      case CorrectionKind::Append:
        AppendFollowing(t, c);
        break;
      case CorrectionKind::Exempt:
      case CorrectionKind::Couple:
        break;
    }
  }
}

RecipientNames RecipientNamesOf(const std::vector<Correction>& list) {
  RecipientNames names;
  for (const Correction& c : list) {
    if (c.kind == CorrectionKind::Exempt) names.exempt.push_back(c.newText);
    if (c.kind == CorrectionKind::Couple) names.couples.push_back(c.newText);
  }
  return names;
}

}  // namespace suizo::corpus
