// What a start does with the data folder before the first window: use the
// store as it is, rebuild it from new exports keeping the user's notes, or
// build it for the first time.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/corpus/conversion.h"
#include "core/corpus/corpus.h"
#include "core/corpus/import.h"

namespace suizo::corpus {

enum class StartupPath {
  Current,    // ver.dax holds this version: load the store
  Reconvert,  // another version wrote the store: carry the notes over a new import
  FirstRun,   // no ver.dax: export from the outside database, then import
  // Another version's store, or one without ver.dax, and no exports to
  // convert: the store is read as it stands once the user agrees, and
  // nothing is written until a note is edited.
  AsItIs,
};

struct StartupDecision {
  StartupPath path = StartupPath::FirstRun;
  std::u16string storedVersion;  // the first line of ver.dax, when there is one
  bool versionRecorded = false;  // whether there is a ver.dax
};

// The load groups a start reads, in this order.
inline constexpr int kStartGroups[] = {0, 1, 2, 6};

// Whether the path converts the exports before the store is read.
inline bool Converts(StartupPath path) {
  return path == StartupPath::Reconvert || path == StartupPath::FirstRun;
}

// Whether every store the start reads (load groups 0, 1, 2 and 6) is there.
bool HasStartStores(const std::filesystem::path& dataPath);

// The version as the store records it: "major.minor.revision".
std::u16string VersionString(int major, int minor, int revision);

// The first line of ver.dax; nothing when there is no ver.dax.
std::optional<std::u16string> ReadStoredVersion(const std::filesystem::path& dataPath);

// Compares the first line of ver.dax with the version a store of this
// program records (`StoreVersion`) as exact text: a trailing blank or any
// other difference counts as another version. Another version's store with
// no exports beside it is read as it is (`AsItIs`), as is a store without
// ver.dax and without exports.
StartupDecision DecideStartup(const std::filesystem::path& dataPath, std::u16string_view version);

// Writes `version` as the only line of ver.dax, as it stands.
void WriteVersion(const std::filesystem::path& dataPath, std::u16string_view version);

// The outside database the first run exports from. This platform has none,
// so `Find` says so and the start converts the exports already in the folder.
class OutsideDatabase {
 public:
  virtual ~OutsideDatabase() = default;
  // True when the product is installed and its corpus could be exported.
  virtual bool ExportTo(const std::filesystem::path& dataPath) = 0;
};

class NoOutsideDatabase : public OutsideDatabase {
 public:
  bool ExportTo(const std::filesystem::path&) override { return false; }
};

// The message of a first run that finds neither the product nor exports.
inline constexpr std::u16string_view kNoProductMessage = u"『桐』がインストールされていません";

// An export line made readable by the sequential reader: the typographic
// quotation marks and doubled quotes become "´" (`K3Dat`).
std::u16string K3Line(std::u16string_view line);

// `K3Dat`: one export (.k3 in Shift-JIS, or .k3x in UTF-16) made a .dat.
void K3Dat(const std::filesystem::path& exportFile, const std::filesystem::path& datFile);

// The question put before a store is read as it is (`Form10`): what was
// found, and what reading it as it is means.
std::u16string AsItIsQuestion(const StartupDecision& decision);

// The user's answer to `AsItIsQuestion`: true opens the store as it is.
using AskAsItIs = std::function<bool(const StartupDecision&)>;

// The user chose not to open a store as it is: the start ends without
// writing anything and without another message.
class StartDeclined : public std::exception {
 public:
  const char* what() const noexcept override { return "the store was not opened"; }
};

struct StartupReport {
  StartupDecision decision;
  bool openedAsItIs = false;              // read without converting, the user having agreed
  Leftovers leftovers = Leftovers::None;  // what a killed conversion had left
  bool notesRestored = false;
  int journalEntries = 0;  // note edits replayed from a run that did not end cleanly
};

// The whole start before the first window: finishes what a killed
// conversion left, decides, converts the exports if it must (ConvertFolder,
// with the notes carried across), loads groups 0, 1, 2 and 6, and replays
// the journal of a run that did not end cleanly. After a conversion that
// carried notes the tables are marked dirty, so that the exit writes them
// again. A store to be read as it is is loaded first, so that one that
// cannot be read is refused before anything is asked; then `ask` decides,
// and without it, or with "no", the start ends with `StartDeclined`. The
// caller holds the folder's lock.
StartupReport OpenStore(Corpus& corpus, std::u16string_view version, const ImportOptions& options,
                        OutsideDatabase& outside, const AskAsItIs& ask = {});

}  // namespace suizo::corpus
