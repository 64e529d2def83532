#include "core/corpus/conversion.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>

#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/export_check.h"
#include "core/corpus/file_io.h"
#include "core/corpus/notes.h"
#include "core/corpus/startup.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr std::u16string_view kOwnTag = u"+suizo";
// The one version string our stores carried before they were tagged.
constexpr std::u16string_view kFirstOwnVersion = u"0.1.0";
// A version line longer than this is no version: the mark is not trusted.
constexpr std::size_t kMaxVersionUnits = 64;

std::filesystem::path StorePath(const std::filesystem::path& dataPath, const TableSchema& schema) {
  return dataPath / std::filesystem::u8path(std::string(schema.stem) + ".dax");
}

// The kind of file at a path without following it into a read: nothing, a
// regular file, or something else (a folder, a FIFO...).
enum class Kind { Absent, Regular, Other };

Kind KindAt(const std::filesystem::path& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return Kind::Absent;
  return S_ISREG(info.st_mode) ? Kind::Regular : Kind::Other;
}

// A store may replace only a file or nothing: a rename over anything else
// fails half-way through the commit.
void RequireReplaceable(const std::filesystem::path& path) {
  if (KindAt(path) == Kind::Other) {
    throw CorpusError({DisplayPath(path)},
                      "something that is not a file stands in the store's place");
  }
}

// Keeps the notes of the store about to be replaced in the memo files, once:
// a mark left by an earlier conversion says they are there already, taken
// before that conversion could have touched the store.
// Returns whether it wrote the mark.
bool KeepNotes(Corpus& corpus, const std::optional<std::u16string>& storedVersion) {
  const auto pending = corpus.dataPath() / kNotesPending;
  if (std::filesystem::exists(pending)) return false;
  corpus.ReadData(0);
  corpus.ReadData(2);
  // A store without its version tells by its files whether it has sources.
  const bool sources = storedVersion
                           ? CarriesSourceNotes(*storedVersion)
                           : std::filesystem::exists(corpus.FilePath(TableId::SDat, ".dax"));
  if (sources) corpus.ReadData(6);
  ExportNotes(corpus, sources);
  WriteFileWhole(pending, "");
  return true;
}

// The version a commit mark asks for: one short line of Shift-JIS text, or
// nothing when the mark is no such thing.
std::optional<std::u16string> MarkedVersion(const std::filesystem::path& mark) {
  try {
    std::u16string text = ReadShiftJisFile(mark);
    if (!text.empty() && text.back() == u'\n') text.pop_back();
    if (!text.empty() && text.back() == u'\r') text.pop_back();
    if (text.size() > kMaxVersionUnits || text.find_first_of(u"\r\n") != std::u16string::npos)
      return std::nullopt;
    return text;
  } catch (const CorpusError&) {
    return std::nullopt;
  }
}

// Files of a conversion that never reached its mark.
bool IsStagedLeftover(const std::filesystem::path& path) {
  const std::string name = DisplayPath(path.filename());
  return name.ends_with(".dax.new") || name.ends_with(".dax.new.tmp") ||
         name == std::string(kCommitMark) + ".tmp" || name == std::string(kNotesPending) + ".tmp";
}

}  // namespace

std::u16string StoreVersion(std::u16string_view programVersion) {
  return std::u16string(programVersion) + std::u16string(kOwnTag);
}

bool CarriesSourceNotes(std::u16string_view storedVersion) {
  if (storedVersion.ends_with(kOwnTag) || storedVersion == kFirstOwnVersion) return true;
  return text::Val(storedVersion) >= 0.8;
}

bool HasExports(const std::filesystem::path& dataPath) {
  for (const TableSchema& schema : Schemas()) {
    if (std::filesystem::exists(TableFile(dataPath, schema.id, ".dat"))) return true;
  }
  return false;
}

std::filesystem::path StagedPath(const std::filesystem::path& dataPath, TableId id) {
  return TableFile(dataPath, id, ".dax.new");
}

StagedStore::StagedStore(std::filesystem::path dataPath) : dataPath_(std::move(dataPath)) {}

StagedStore::~StagedStore() {
  if (committed_) return;
  for (const TableSchema& schema : Schemas()) {
    if (!written_[static_cast<std::size_t>(schema.id)]) continue;
    std::error_code ignored;
    std::filesystem::remove(StagedPath(dataPath_, schema.id), ignored);
  }
}

void StagedStore::Write(const Corpus& corpus, TableId id) {
  written_[static_cast<std::size_t>(id)] = true;
  WriteDax(StagedPath(dataPath_, id), corpus.table(id));
}

void StagedStore::Commit(std::u16string_view version) {
  for (const TableSchema& schema : Schemas()) {
    if (written_[static_cast<std::size_t>(schema.id)])
      RequireReplaceable(StorePath(dataPath_, schema));
  }
  if (!version.empty()) RequireReplaceable(dataPath_ / "ver.dax");
  // From the mark on, the new store is the one: a kill is finished forward.
  WriteFileWhole(dataPath_ / kCommitMark, text::EncodeSjis(std::u16string(version) + u"\r\n"));
  committed_ = true;
  for (const TableSchema& schema : Schemas()) {
    if (!written_[static_cast<std::size_t>(schema.id)]) continue;
    ReplaceFile(StagedPath(dataPath_, schema.id), StorePath(dataPath_, schema));
  }
  if (!version.empty()) WriteVersion(dataPath_, version);
  RemoveFile(dataPath_ / kCommitMark);
}

Leftovers FinishInterruptedConversion(const std::filesystem::path& dataPath) {
  const auto mark = dataPath / kCommitMark;
  if (KindAt(mark) == Kind::Regular) {
    const std::optional<std::u16string> version = MarkedVersion(mark);
    if (version) {
      for (const TableSchema& schema : Schemas()) {
        const auto staged = StagedPath(dataPath, schema.id);
        if (KindAt(staged) == Kind::Regular) ReplaceFile(staged, StorePath(dataPath, schema));
      }
      if (!version->empty()) WriteVersion(dataPath, *version);
      // The new store holds the notes the memo files were keeping.
      RemoveFile(dataPath / kNotesPending);
      RemoveFile(mark);
      return Leftovers::RolledForward;
    }
    // A mark that is not ours proves nothing: what it would commit is dropped.
    RemoveFile(mark);
  }
  bool removed = false;
  std::error_code error;
  std::vector<std::filesystem::path> staged;
  for (const auto& entry : std::filesystem::directory_iterator(dataPath, error)) {
    if (IsStagedLeftover(entry.path()) && entry.is_regular_file(error))
      staged.push_back(entry.path());
  }
  for (const auto& path : staged) {
    RemoveFile(path);
    removed = true;
  }
  return removed ? Leftovers::RolledBack : Leftovers::None;
}

std::vector<std::filesystem::path> ConversionLeftovers(const std::filesystem::path& dataPath) {
  std::vector<std::filesystem::path> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(dataPath, error)) {
    const std::filesystem::path& path = entry.path();
    if (IsStagedLeftover(path) || IsLeftoverTemporary(path) || path.filename() == kCommitMark)
      found.push_back(path);
  }
  std::sort(found.begin(), found.end());
  return found;
}

bool HasConversionLeftovers(const std::filesystem::path& dataPath) {
  return !ConversionLeftovers(dataPath).empty();
}

bool CommitUnderway(const std::filesystem::path& dataPath) {
  return KindAt(dataPath / kCommitMark) != Kind::Absent;
}

ConversionReport ConvertFolder(Corpus& corpus, std::u16string_view version,
                               const ImportOptions& options) {
  const std::filesystem::path& dataPath = corpus.dataPath();
  // With no export at all there is nothing to convert; anything else wrong
  // with them is named before any work.
  if (!HasExports(dataPath))
    throw CorpusError({DisplayPath(dataPath)}, "the folder holds no exports (.dat) to convert");
  CheckExports(dataPath, options.message);
  ConversionReport report;
  // A store left without its version still holds the user's notes.
  const std::optional<std::u16string> stored = ReadStoredVersion(dataPath);
  report.notesCarried = stored || std::filesystem::exists(corpus.FilePath(TableId::Dat, ".dax"));
  const bool marked = report.notesCarried && KeepNotes(corpus, stored);

  StagedStore stage(dataPath);
  try {
    ImportOptions staged = options;
    staged.stage = &stage;
    ReadDataFirst(corpus, staged);
    if (report.notesCarried) {
      report.notes = RestoreNotes(corpus);
      for (const TableId id : {TableId::Dat, TableId::Hok, TableId::SDat}) stage.Write(corpus, id);
    }
    stage.Commit(StoreVersion(version));
  } catch (...) {
    // Short of its mark the old store is whole, notes and all.
    if (marked && !stage.committed()) {
      std::error_code ignored;
      std::filesystem::remove(dataPath / kNotesPending, ignored);
    }
    throw;
  }
  RemoveFile(dataPath / kNotesPending);
  return report;
}

}  // namespace suizo::corpus
