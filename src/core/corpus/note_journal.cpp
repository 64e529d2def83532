#include "core/corpus/note_journal.h"

#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr int kNeutralCollection = 29;

// Notes are found again by the row's stable key; the sutra's rows are fixed.
std::u16string KeyOf(const Corpus& corpus, TableId table, int row) {
  switch (table) {
    case TableId::Dat:
      return std::u16string(corpus.Dat().Get(row, dat::kSysNo));
    case TableId::SDat:
      return std::u16string(corpus.SDat().Get(row, sdat::kSysNo));
    default:
      return text::IntText(row);
  }
}

int RowOf(const Corpus& corpus, TableId table, std::u16string_view key) {
  switch (table) {
    case TableId::Dat:
      return SysNo(corpus, key);
    case TableId::SDat:
      return SysNoS(corpus, key);
    default:
      return text::ToInt(key).value_or(0);
  }
}

std::u16string Escape(std::u16string_view text) {
  std::u16string out;
  for (const char16_t c : text) {
    switch (c) {
      case u'\\':
        out += u"\\\\";
        break;
      case u'\t':
        out += u"\\t";
        break;
      case u'\n':
        out += u"\\n";
        break;
      case u'\r':
        out += u"\\r";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::u16string Unescape(std::u16string_view text) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char16_t next = text[++i];
    out += next == u't' ? u'\t' : next == u'n' ? u'\n' : next == u'r' ? u'\r' : next;
  }
  return out;
}

int& DirtyFlag(Corpus& corpus, TableId table) {
  return table == TableId::Dat   ? corpus.DatDirty
         : table == TableId::Hok ? corpus.HokDirty
                                 : corpus.SDatDirty;
}

}  // namespace

bool IsNoteColumn(TableId table, int field) {
  return std::any_of(std::begin(kNoteColumns), std::end(kNoteColumns),
                     [&](const NoteColumn& c) { return c.table == table && c.field == field; });
}

NoteJournal::NoteJournal(const std::filesystem::path& dataPath)
    : path_(dataPath / "notes.journal") {}

void NoteJournal::Record(const Corpus& corpus, TableId table, int row, int field,
                         std::u16string_view text) {
  const std::string line = std::string(SchemaOf(table).name) + "\t" +
                           text::ToUtf8(KeyOf(corpus, table, row)) + "\t" + std::to_string(field) +
                           "\t" + text::ToUtf8(Escape(text)) + "\n";
  AppendFileFlushed(path_, line);
}

int NoteJournal::Replay(Corpus& corpus) const {
  if (!Exists()) return 0;
  const std::string bytes = ReadFileBytes(path_);
  // A line a crash cut short is dropped from the file too, or the next
  // edit's line would be appended to it and read as one with it.
  if (!bytes.empty() && bytes.back() != '\n') {
    const std::size_t whole = bytes.rfind('\n');
    TruncateFile(path_, whole == std::string::npos ? 0 : whole + 1);
  }
  int applied = 0;
  std::size_t start = 0;
  // Only whole lines count: a crash in the middle of one leaves it without its end.
  for (std::size_t end = bytes.find('\n'); end != std::string::npos;
       start = end + 1, end = bytes.find('\n', start)) {
    const std::u16string line = text::FromUtf8(std::string_view(bytes).substr(start, end - start));
    const auto parts = text::Split(line, u"\t");
    if (parts.size() != 4) continue;
    std::optional<TableId> table;
    for (const TableId id : {TableId::Dat, TableId::Hok, TableId::SDat}) {
      if (text::ToUtf8(parts[0]) == SchemaOf(id).name) table = id;
    }
    const int field = text::ToInt(parts[2]).value_or(-1);
    if (!table || !IsNoteColumn(*table, field)) continue;
    const int row = RowOf(corpus, *table, parts[1]);
    if (row < 1 || row > corpus.table(*table).rows()) continue;
    corpus.table(*table).Set(row, field, Unescape(parts[3]));
    DirtyFlag(corpus, *table) = 1;
    ++applied;
  }
  return applied;
}

void NoteJournal::Remove() const {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

void EditNote(Corpus& corpus, NoteJournal& journal, TableId table, int row, int field,
              std::u16string_view text) {
  if (!IsNoteColumn(table, field)) {
    throw CorpusError({std::string(SchemaOf(table).stem), 0, row, field}, "not a note column");
  }
  // The note is kept first: if the journal cannot take it, the exit still
  // writes it into the store.
  corpus.table(table).Set(row, field, text);
  DirtyFlag(corpus, table) = 1;
  journal.Record(corpus, table, row, field, text);
}

void WriteBackNotes(Corpus& corpus, Selection& selection) {
  if (corpus.DatDirty == 1) {
    selection.Gk = kNeutralCollection;
    selection.MokRedo = 1;
    ApplySelection(corpus, selection);
    WriteDax(corpus.FilePath(TableId::Dat, ".dax"), corpus.Dat());
    corpus.DatDirty = 0;
  }
  if (corpus.HokDirty == 1) {
    WriteDax(corpus.FilePath(TableId::Hok, ".dax"), corpus.Hok());
    corpus.HokDirty = 0;
  }
  if (corpus.SDatDirty == 1) {
    WriteDax(corpus.FilePath(TableId::SDat, ".dax"), corpus.SDat());
    corpus.SDatDirty = 0;
  }
}

void CloseStore(Corpus& corpus, Selection& selection, const NoteJournal& journal) {
  WriteBackNotes(corpus, selection);
  journal.Remove();
}

std::u16string WriteBackFailure(const CorpusError& error, const NoteJournal& journal) {
  std::u16string out =
      u"ノートをデータに保存できませんでした。データは保存前のまま残っています。\n";
  out += journal.Exists() ? u"ノートは notes.journal に残り、次回の起動時に戻されます。\n"
                          : u"記録ファイルも書けなかったため、今回のノートは失われます。\n";
  return out + text::FromUtf8(error.what());
}

}  // namespace suizo::corpus
