// A conversion of the exports into the store, as one transaction over the
// data folder. Every export is read and converted before any store is
// replaced: the new stores are written beside the old ones as
// "<stem>.dax.new", and only when all twelve are whole does a commit mark
// ("convert.commit") say so. Then they are renamed into place, ver.dax last,
// and the mark goes. A failure or a kill before the mark leaves the old store
// as it was; after it, the next program to open the folder finishes the
// renames. So a folder never holds a mix of old and new stores.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/import.h"

namespace suizo::corpus {

// The version string our stores carry in ver.dax: the program's version with
// "+suizo" after it. The leading number stays the program's, so the 0.8 rule
// on source notes reads it as before; the tag tells our stores from those of
// an existing installation, which always had source notes.
std::u16string StoreVersion(std::u16string_view programVersion);

// Whether the store recorded as `storedVersion` holds source notes worth
// carrying: ours always do (tagged, or the untagged "0.1.0" our first builds
// wrote); another installation's from 0.8 on.
bool CarriesSourceNotes(std::u16string_view storedVersion);

// The new store while it is written: each table's file beside the old one.
// Dropped without a commit, it removes what it wrote.
class StagedStore {
 public:
  explicit StagedStore(std::filesystem::path dataPath);
  ~StagedStore();
  StagedStore(const StagedStore&) = delete;
  StagedStore& operator=(const StagedStore&) = delete;

  void Write(const Corpus& corpus, TableId id);

  // Puts every written table in place together; `version`, when not empty,
  // goes into ver.dax after them. The places are checked before the commit
  // mark, so that a folder in a store's place is refused with the old store
  // untouched.
  void Commit(std::u16string_view version);
  // Whether the commit mark was written: from then on the new store is the one.
  bool committed() const { return committed_; }

 private:
  std::filesystem::path dataPath_;
  bool written_[kTableCount] = {};
  bool committed_ = false;
};

// The staged file of a table, and the commit mark.
std::filesystem::path StagedPath(const std::filesystem::path& dataPath, TableId id);
inline constexpr char kCommitMark[] = "convert.commit";

// Set while the user's notes are only sure to be in the memo files.
inline constexpr char kNotesPending[] = "notes.pending";

enum class Leftovers { None, RolledBack, RolledForward };

// What a killed conversion left, made whole: with the commit mark the staged
// stores go into place and the version is written; without it they are
// removed. Call it holding the folder's lock.
Leftovers FinishInterruptedConversion(const std::filesystem::path& dataPath);

// Whether a conversion left anything behind, temporary files of a cut write
// included; and whether it got as far as its commit mark, when the stores on
// disk are a mix until the renames are finished.
bool HasConversionLeftovers(const std::filesystem::path& dataPath);
// The files themselves, by name.
std::vector<std::filesystem::path> ConversionLeftovers(const std::filesystem::path& dataPath);
bool CommitUnderway(const std::filesystem::path& dataPath);

// Whether the folder holds any export (.dat) at all.
bool HasExports(const std::filesystem::path& dataPath);

struct ConversionReport {
  bool notesCarried = false;  // a store was there and its notes crossed
  int notes = 0;              // how many
};

// The whole conversion of the folder's exports: every export checked first;
// the notes of a store already there carried out to the memo files and back
// into the new tables; the new store committed with `StoreVersion(version)`.
// The version the old store records decides whether its source notes are
// carried. The converted tables are left in memory, those whose notes were
// exported flagged as loaded.
ConversionReport ConvertFolder(Corpus& corpus, std::u16string_view version,
                               const ImportOptions& options);

}  // namespace suizo::corpus
