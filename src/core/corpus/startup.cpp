#include "core/corpus/startup.h"

#include <optional>

#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/notes.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr int kStartGroups[] = {0, 1, 2, 6};

// Set while the notes of a store being rebuilt are only in the memo files:
// a start that finds it takes the notes from them rather than exporting
// them again from a store the rebuild may already have replaced.
constexpr char kNotesPending[] = "notes.pending";

// A rebuild needs every table's export: with none there is nothing to
// convert, and one missing is named before anything is written.
void RequireExports(const std::filesystem::path& dataPath) {
  std::optional<std::filesystem::path> missing;
  bool any = false;
  for (const TableSchema& schema : Schemas()) {
    std::u8string name(schema.stem.begin(), schema.stem.end());
    name += u8".dat";
    if (std::filesystem::exists(dataPath / name)) {
      any = true;
    } else if (!missing) {
      missing = dataPath / name;
    }
  }
  if (!any) throw CorpusError({DisplayPath(dataPath)}, text::ToUtf8(kNoProductMessage));
  if (missing) throw CorpusError({DisplayPath(*missing)}, "the export is missing; the store is rebuilt from all twelve");
}

// Keeps the notes of the store about to be rebuilt in the memo files, once.
void KeepNotes(Corpus& corpus, const StartupDecision& decision) {
  const auto pending = corpus.dataPath() / kNotesPending;
  if (std::filesystem::exists(pending)) return;
  corpus.ReadData(0);
  corpus.ReadData(2);
  // Stores older than 0.8 had no source notes; one without its version
  // tells by its files.
  const bool sources = decision.path == StartupPath::FirstRun
                           ? std::filesystem::exists(corpus.FilePath(TableId::SDat, ".dax"))
                           : text::Val(decision.storedVersion) >= 0.8;
  if (sources) corpus.ReadData(6);
  ExportNotes(corpus, sources);
  WriteFileWhole(pending, "");
}

}  // namespace

std::u16string VersionString(int major, int minor, int revision) {
  return text::IntText(major) + u"." + text::IntText(minor) + u"." + text::IntText(revision);
}

StartupDecision DecideStartup(const std::filesystem::path& dataPath, std::u16string_view version) {
  const auto path = dataPath / "ver.dax";
  StartupDecision decision;
  if (!std::filesystem::exists(path)) return decision;
  const std::u16string text = ReadShiftJisFile(path);
  // A line ends at CR, as the original's line reader has it: a bare LF stays
  // in the text, so a store written with other line ends is another version.
  const auto end = text.find(u'\r');
  decision.storedVersion = text.substr(0, end == std::u16string::npos ? text.size() : end);
  decision.path = decision.storedVersion == version ? StartupPath::Current : StartupPath::Reconvert;
  return decision;
}

void WriteVersion(const std::filesystem::path& dataPath, std::u16string_view version) {
  WriteFileWhole(dataPath / "ver.dax", text::EncodeSjis(std::u16string(version) + u"\r\n"));
}

std::u16string K3Line(std::u16string_view line) {
  const bool marked = line.find_first_of(u"“”") != std::u16string_view::npos ||
                      line.find(u"\"\"") != std::u16string_view::npos;
  if (!marked) return std::u16string(line);
  std::u16string out(line);
  for (const std::u16string_view mark : {u"““", u"””", u"“", u"”", u"\"\""}) {
    out = text::ReplaceAll(out, mark, u"´");
  }
  return out;
}

void K3Dat(const std::filesystem::path& exportFile, const std::filesystem::path& datFile) {
  std::u16string text;
  if (exportFile.extension() == ".k3x") {
    const std::string bytes = ReadFileBytes(exportFile);
    std::size_t start = bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE' ? 2 : 0;
    for (std::size_t i = start; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                    static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
  } else {
    text = ReadShiftJisFile(exportFile);
  }
  std::u16string out;
  for (auto line : text::Split(text, u"\n")) {
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    out += K3Line(line);
    out += u"\r\n";
  }
  if (!text.empty() && text.back() == u'\n') out.resize(out.size() - 2);  // no extra last line
  try {
    WriteFileWhole(datFile, text::EncodeSjis(out));
  } catch (const text::SjisEncodeError& e) {
    throw CorpusError({DisplayPath(exportFile)}, e.what());
  }
}

StartupReport OpenStore(Corpus& corpus, std::u16string_view version, const ImportOptions& options,
                        OutsideDatabase& outside) {
  StartupReport report;
  const auto& dataPath = corpus.dataPath();
  RemoveLeftoverTemporaries(dataPath);
  report.decision = DecideStartup(dataPath, version);
  switch (report.decision.path) {
    case StartupPath::Current:
      // A rebuild that got as far as the version had its notes stored.
      RemoveFile(dataPath / kNotesPending);
      break;
    case StartupPath::Reconvert:
    case StartupPath::FirstRun:
      if (report.decision.path == StartupPath::FirstRun) outside.ExportTo(dataPath);
      RequireExports(dataPath);
      // A store left without its version still holds the user's notes.
      if (report.decision.path == StartupPath::Reconvert ||
          std::filesystem::exists(corpus.FilePath(TableId::Dat, ".dax"))) {
        KeepNotes(corpus, report.decision);
        report.notesRestored = true;
      }
      ReadDataFirst(corpus, options);
      if (!report.notesRestored) WriteVersion(dataPath, version);
      break;
  }
  for (const int group : kStartGroups) corpus.ReadData(group);
  if (report.notesRestored) {
    RestoreNotes(corpus);
    corpus.DatDirty = corpus.HokDirty = corpus.SDatDirty = 1;
    // The notes are in the new store before it counts as current.
    for (const TableId id : {TableId::Dat, TableId::Hok, TableId::SDat}) {
      WriteDax(corpus.FilePath(id, ".dax"), corpus.table(id));
    }
    WriteVersion(dataPath, version);
    RemoveFile(dataPath / kNotesPending);
  }
  // Edits of a run that did not end cleanly.
  report.journalEntries = NoteJournal(dataPath).Replay(corpus);
  return report;
}

}  // namespace suizo::corpus
