#include "core/corpus/notes.h"

#include <array>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

enum class KeyKind { SystemNumber, RowNumber };

struct NoteFile {
  const char* name;
  TableId table;
  int field;
  KeyKind key;
};

constexpr std::array<NoteFile, 4> kNoteFiles = {{
    {"memo2.dat", TableId::Dat, 48, KeyKind::SystemNumber},
    {"memo3.dat", TableId::Dat, 49, KeyKind::SystemNumber},
    {"memoh.dat", TableId::Hok, 36, KeyKind::RowNumber},
    {"memos.dat", TableId::SDat, 8, KeyKind::SystemNumber},
}};

int KeyField(TableId table) {
  return table == TableId::SDat ? sdat::kSysNo : dat::kSysNo;
}

void Export(const Corpus& corpus, const NoteFile& file, bool write) {
  const auto path = corpus.dataPath() / file.name;
  const Table& table = corpus.table(file.table);
  std::u16string out;
  for (int row = 1; write && row <= table.rows(); ++row) {
    const std::u16string_view note = table.Get(row, file.field);
    if (note.empty()) continue;
    if (note.find(u'"') != std::u16string_view::npos) {
      throw CorpusError({DisplayPath(path), 0, row, file.field},
                        "a note holds a double quote, which the note file cannot carry");
    }
    const std::u16string key =
        file.key == KeyKind::RowNumber
            ? text::IntText(row)
            : text::NumberText(text::Val(table.Get(row, KeyField(file.table))));
    out += key + u",\"" + std::u16string(note) + u"\"\r\n";
  }
  std::string bytes;
  try {
    bytes = text::EncodeSjis(out);
  } catch (const text::SjisEncodeError& e) {
    throw CorpusError({DisplayPath(path)}, std::string("a note cannot be written: ") + e.what());
  }
  WriteFileWhole(path, bytes);
}

int Restore(Corpus& corpus, const NoteFile& file) {
  const auto path = corpus.dataPath() / file.name;
  if (!std::filesystem::exists(path)) return 0;
  const std::string name = DisplayPath(path);
  const std::u16string text = ReadShiftJisFile(path);
  Table& table = corpus.table(file.table);
  long line = 0;
  int notes = 0;
  for (auto record : text::Split(text, u"\n")) {
    ++line;
    if (!record.empty() && record.back() == u'\r') record.remove_suffix(1);
    if (record.empty()) continue;
    const auto comma = record.find(u',');
    const auto open = comma == record.npos ? record.npos : record.find(u'"', comma);
    if (comma == record.npos || open == record.npos || record.back() != u'"' ||
        open + 1 > record.size() - 1) {
      throw CorpusError({name, line},
                        "a note line is a number, a comma and the text in double quotes");
    }
    const std::u16string_view keyText = text::TrimSpace(record.substr(0, comma));
    const std::u16string_view note = record.substr(open + 1, record.size() - open - 2);
    int row = 0;
    if (file.key == KeyKind::RowNumber) {
      row = text::ValInt(keyText);
      if (row < 1 || row > table.rows()) row = table.rows() + 1;
    } else {
      const std::u16string key = text::NumberText(text::Val(keyText));
      row = file.table == TableId::SDat ? SysNoS(corpus, key) : SysNo(corpus, key);
    }
    if (row <= table.schema().rowCapacity) table.Set(row, file.field, note);
    ++notes;
  }
  return notes;
}

}  // namespace

void ExportNotes(const Corpus& corpus, bool withSources) {
  for (const NoteFile& file : kNoteFiles)
    Export(corpus, file, file.table != TableId::SDat || withSources);
}

int RestoreNotes(Corpus& corpus) {
  int notes = 0;
  for (const NoteFile& file : kNoteFiles) notes += Restore(corpus, file);
  return notes;
}

}  // namespace suizo::corpus
