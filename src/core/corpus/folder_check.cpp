#include "core/corpus/folder_check.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "core/corpus/bookmarks.h"
#include "core/corpus/conversion.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/export_check.h"
#include "core/corpus/file_io.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/profile.h"
#include "core/corpus/table.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;

bool ReadAtStart(TableId id) {
  const int group = SchemaOf(id).loadGroup;
  return std::find(std::begin(kStartGroups), std::end(kStartGroups), group) !=
         std::end(kStartGroups);
}

bool IsFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

// Reads one store whole and counts its notes.
StoreFinding ReadStoreFinding(const fs::path& dataPath, TableId id,
                              std::vector<NoteFinding>& notes) {
  StoreFinding found;
  found.id = id;
  const fs::path file = TableFile(dataPath, id, ".dax");
  std::error_code error;
  found.present = fs::exists(fs::symlink_status(file, error));
  if (!found.present) return found;
  Table table(SchemaOf(id));
  try {
    ReadStore(file, table);
  } catch (const CorpusError& e) {
    found.fault = e.what();
    return found;
  }
  found.fields = table.cols();
  found.rows = table.rows();
  for (const NoteColumn& column : kNoteColumns) {
    if (column.table != id) continue;
    int count = 0;
    for (int row = 1; row <= table.rows(); ++row)
      count += table.Get(row, column.field).empty() ? 0 : 1;
    notes.push_back({id, column.field, count});
  }
  return found;
}

int JournalEntries(const fs::path& dataPath) {
  const fs::path journal = dataPath / "notes.journal";
  if (!IsFile(journal)) return 0;
  const std::string bytes = ReadFileBytes(journal);
  return static_cast<int>(std::count(bytes.begin(), bytes.end(), '\n'));
}

int SetBookmarks(const fs::path& dataPath) {
  const fs::path ini = dataPath / "suiten.ini";
  return IsFile(ini) ? CountSetBookmarks(ProfileFile(ini)) : 0;
}

std::string StoreName(TableId id) {
  return std::string(SchemaOf(id).stem) + ".dax";
}

// The first store the start cannot read, with why.
std::optional<std::string> StartStoreFault(const FolderFindings& found) {
  for (const StoreFinding& store : found.stores) {
    if (!ReadAtStart(store.id)) continue;
    if (!store.present) return StoreName(store.id) + " is missing";
    if (!store.fault.empty()) return store.fault;
  }
  return std::nullopt;
}

void Decide(FolderFindings& found) {
  const StartupPath path = found.decision.path;
  if (path == StartupPath::Current || path == StartupPath::AsItIs) {
    if (const auto fault = StartStoreFault(found)) {
      found.verdict = FolderVerdict::Refused;
      found.reason = "the store cannot be read: " + *fault;
      return;
    }
    found.verdict =
        path == StartupPath::Current ? FolderVerdict::OpensDirectly : FolderVerdict::AsksFirst;
    found.reason = path == StartupPath::Current
                       ? "ver.dax holds this program's version"
                       : (found.decision.versionRecorded
                              ? "another version (" + text::ToUtf8(found.decision.storedVersion) +
                                    ") wrote the store"
                              : std::string("the store has no ver.dax")) +
                             ", and there are no exports to convert: the viewer asks whether to "
                             "read it as it is";
    for (const StoreFinding& store : found.stores) {
      if (ReadAtStart(store.id) || store.fault.empty()) continue;
      found.warnings.push_back(store.id == TableId::Nen
                                   ? "the chronology will not open: " + store.fault
                                   : "no window reads it, but it is faulty: " + store.fault);
    }
    return;
  }
  if (found.exports.empty()) {
    found.verdict = FolderVerdict::Refused;
    const auto fault = StartStoreFault(found);
    found.reason = "there are no exports (.dat) to convert" +
                   (fault ? ", and the store is not whole: " + *fault : std::string()) + " (" +
                   text::ToUtf8(kNoProductMessage) + ")";
    return;
  }
  if (!found.exportFault.empty()) {
    found.verdict = FolderVerdict::Refused;
    found.reason = "the exports cannot be converted: " + found.exportFault;
    return;
  }
  found.verdict = FolderVerdict::Converts;
  found.reason = found.decision.versionRecorded
                     ? "ver.dax holds another version (" +
                           text::ToUtf8(found.decision.storedVersion) +
                           "): the exports are converted again, the store's notes carried across"
                     : "there is no ver.dax: the exports are converted for the first time";
}

}  // namespace

namespace {

// Each verdict as a sentence and as one word, in the enum's order.
constexpr std::string_view kVerdicts[][2] = {{"opens directly", "opens"},
                                             {"converts", "converts"},
                                             {"opens as it is after asking", "asks"},
                                             {"refused", "refused"}};

}  // namespace

std::string_view VerdictText(FolderVerdict verdict) {
  return kVerdicts[static_cast<std::size_t>(verdict)][0];
}

std::string_view VerdictWord(FolderVerdict verdict) {
  return kVerdicts[static_cast<std::size_t>(verdict)][1];
}

std::optional<fs::path> FindCorpusFont(const fs::path& folder) {
  std::vector<fs::path> fonts;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (!IsFile(entry.path())) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    char head[4] = {};
    if (!in.read(head, sizeof head)) continue;
    const std::string_view tag(head, sizeof head);
    if (tag == std::string_view("\0\1\0\0", 4) || tag == "OTTO" || tag == "true" || tag == "ttcf") {
      fonts.push_back(entry.path());
    }
  }
  if (fonts.empty()) return std::nullopt;
  return *std::min_element(fonts.begin(), fonts.end());
}

FolderFindings CheckFolder(const fs::path& dataPath, std::u16string_view programVersion) {
  FolderFindings found;
  found.folder = dataPath;
  found.ourVersion = StoreVersion(programVersion);
  if (!fs::is_directory(dataPath)) {
    found.reason = "there is no folder at " + DisplayPath(dataPath);
    return found;
  }
  std::string versionFault;
  try {
    found.decision = DecideStartup(dataPath, programVersion);
  } catch (const CorpusError& e) {
    versionFault = e.what();
  }
  for (const TableSchema& schema : Schemas()) {
    found.stores.push_back(ReadStoreFinding(dataPath, schema.id, found.notes));
    if (IsFile(TableFile(dataPath, schema.id, ".dat"))) found.exports.push_back(schema.id);
  }
  if (Converts(found.decision.path) && !found.exports.empty()) {
    try {
      CheckExports(dataPath, [](const std::u16string&) {});
    } catch (const CorpusError& e) {
      found.exportFault = e.what();
    }
  }
  found.journalEntries = JournalEntries(dataPath);
  found.notesPending = IsFile(dataPath / kNotesPending);
  try {
    found.bookmarks = SetBookmarks(dataPath);
  } catch (const CorpusError& e) {
    found.warnings.push_back(std::string("the bookmarks cannot be read: ") + e.what());
  }
  for (const fs::path& left : ConversionLeftovers(dataPath))
    found.leftovers.push_back(DisplayPath(left.filename()));
  found.commitUnderway = CommitUnderway(dataPath);
  found.font = FindCorpusFont(dataPath);
  if (versionFault.empty()) {
    Decide(found);
  } else {
    found.reason = "ver.dax cannot be read: " + versionFault;
  }
  if (found.commitUnderway) {
    found.warnings.push_back(
        "a conversion was cut after its commit: the next start puts its new stores in place first, "
        "so check again after that");
  }
  return found;
}

}  // namespace suizo::corpus
