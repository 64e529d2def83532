// What a data folder holds and what a start will do with it, found by reading
// alone: for a scholar who brings a folder from another installation, and for
// `suizo check`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/schema.h"
#include "core/corpus/startup.h"

namespace suizo::corpus {

enum class FolderVerdict {
  OpensDirectly,  // our store, of this version
  Converts,       // exports to convert, the notes of a store carried across
  AsksFirst,      // another version's store without exports: opened as it is once the user agrees
  Refused,        // the start stops, and `reason` says why
};

// "opens directly", "converts", "opens as it is after asking", "refused".
std::string_view VerdictText(FolderVerdict verdict);
// The same as one word for scripts: "opens", "converts", "asks", "refused".
std::string_view VerdictWord(FolderVerdict verdict);

struct StoreFinding {
  TableId id;
  bool present = false;
  int fields = 0;  // as the store says; 0 when it could not be read
  int rows = 0;
  std::string fault;  // why it cannot be read; empty when it can
};

struct NoteFinding {
  TableId table;
  int field;
  int count;  // rows whose note is not empty
};

struct FolderFindings {
  std::filesystem::path folder;
  StartupDecision decision;          // what a start decides, before it asks anything
  std::u16string ourVersion;         // what ver.dax holds for a store of this program
  std::vector<StoreFinding> stores;  // all twelve, in the tables' order
  std::vector<TableId> exports;      // the exports (.dat) present
  std::string exportFault;           // why the exports cannot be converted, when they would be
  std::vector<NoteFinding> notes;    // one per note column, of the stores that read
  int journalEntries = 0;            // note edits in notes.journal, put back at the next start
  bool notesPending = false;
  int bookmarks = 0;  // bookmarks the user set in suiten.ini, of 30
  // What a killed write or conversion left: the next start removes the
  // temporary files, and finishes or rolls back the conversion.
  std::vector<std::string> leftovers;
  bool commitUnderway = false;
  std::optional<std::filesystem::path> font;  // the corpus's own characters, in the folder
  FolderVerdict verdict = FolderVerdict::Refused;
  std::string reason;
  std::vector<std::string> warnings;  // what will fail later, though the start goes well
};

// A TrueType or OpenType font among the folder's files (not its subfolders),
// whatever its name: an existing installation's font of the corpus's own
// characters. The first by name when there are several.
std::optional<std::filesystem::path> FindCorpusFont(const std::filesystem::path& folder);

// Reads the folder (every store whole, the exports' headers when they would
// be converted) and writes nothing.
FolderFindings CheckFolder(const std::filesystem::path& dataPath,
                           std::u16string_view programVersion);

}  // namespace suizo::corpus
