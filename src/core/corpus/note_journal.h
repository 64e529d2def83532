// The user's notes: edited in the readers, written into the store at exit
// when a table changed. Each edit is also appended to a journal beside the
// store and flushed to disk at once, so that a crash loses no note: the next
// start replays what the journal holds, and a clean exit removes it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/errors.h"
#include "core/corpus/selection.h"

namespace suizo::corpus {

// Whether a table's field is edited in the readers: the notes of `Dat` 48
// and 49, `Hok` 36 and `SDat` 8, and the writings' quotation index, 52.
bool IsNoteColumn(TableId table, int field);

// The columns the user writes notes in.
struct NoteColumn {
  TableId table;
  int field;
};
inline constexpr NoteColumn kNoteColumns[] = {
    {TableId::Dat, dat::kNote2}, {TableId::Dat, dat::kNote3},  {TableId::Dat, dat::kQuotations},
    {TableId::Hok, hok::kNote},  {TableId::SDat, sdat::kNote},
};

class NoteJournal {
 public:
  explicit NoteJournal(const std::filesystem::path& dataPath);

  // Appends an edit and flushes it to disk before returning.
  void Record(const Corpus& corpus, TableId table, int row, int field, std::u16string_view text);

  // Applies the edits of a run that did not end cleanly, marking their tables
  // dirty. Returns how many were applied; an edit whose row is gone is skipped.
  // A last line a crash cut short is dropped from the file.
  int Replay(Corpus& corpus) const;

  bool Exists() const { return std::filesystem::exists(path_); }
  void Remove() const;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// A note edited: the cell takes the text, the table is marked dirty and the
// journal records it. When the journal cannot be written the CorpusError
// comes after the cell and the flag are set, so the exit still stores it.
void EditNote(Corpus& corpus, NoteJournal& journal, TableId table, int row, int field,
              std::u16string_view text);

// The exit's write-back: each table whose notes changed is written into the
// store; `Dat` is first returned to its neutral head marks by placing the
// documents in 新修. Nothing is written when nothing changed.
void WriteBackNotes(Corpus& corpus, Selection& selection);

// The clean end: the write-back, then the journal is no longer needed. A
// failed write throws with the journal left in place.
void CloseStore(Corpus& corpus, Selection& selection, const NoteJournal& journal);

// Told when an edit could not be journalled; the reason follows.
inline constexpr std::u16string_view kNoteNotJournaled =
    u"ノートを記録ファイルに書き込めませんでした。ノートは画面に保たれ、終了時の保存を待ちます。\n";

// Told when the exit's write-back fails. Each store file is whole, old or
// new; the notes wait in the journal, if it could be kept, for the next start.
std::u16string WriteBackFailure(const CorpusError& error, const NoteJournal& journal);

}  // namespace suizo::corpus
