// The import: every .dat export read, converted and written as the store
// (.dax) that later starts load without parsing. It runs once per version of
// the program, and leaves the converted tables in memory.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/corrections.h"

namespace suizo::corpus {

class StagedStore;

struct ImportOptions {
  std::vector<Correction> corrections;
  std::filesystem::path classTable;  // add.csv; empty when there is none
  int itaiji = 1;                    // the `Itaiji` setting, which shapes the dictionary's keys
  MessageSink message;               // messages shown on the way; the work goes on
  // One call per step of the work ("*" on the splash), with the table at work.
  std::function<void(TableId)> progress;
  // Where the new stores go until they are committed together; none: the
  // import stages and commits them itself.
  StagedStore* stage = nullptr;
};

// The options a data folder gives: its corrections.tsv and add.csv when present.
ImportOptions ImportOptionsFor(const std::filesystem::path& dataPath);

// `ReadDataFirst`: reads the twelve .dat files of the corpus's data folder,
// converts them and writes the twelve .dax files, each whole, all beside the
// old ones until every one is written (see StagedStore).
void ReadDataFirst(Corpus& corpus, const ImportOptions& options);

// The steps of the import, for the tests and for the pieces that run again.
void ImportWritings(Corpus& corpus, const ImportOptions& options);    // Dat, Mok
void ImportDictionary(Corpus& corpus, const ImportOptions& options);  // Dic
void ImportSutra(Corpus& corpus, const ImportOptions& options);       // Hok, Sok, Kam, Hon, Tyu
void ImportSources(Corpus& corpus, const ImportOptions& options);     // SDat, SMok
void ImportChronology(Corpus& corpus, const ImportOptions& options);  // Nek, Nen

// `ConvDat` for one collection: its reading order computed from the rows
// (`SortDatSuiten`), stored in the collection's order column with its count in
// row 0.
void ConvDat(Corpus& corpus, const Collection& collection);
// `ConvSDat`: the sources' order (`SortDatSiryo`), stored in column 1.
void ConvSDat(Corpus& corpus);

// The recipient classing of one `Mok` 対告: marks that let the contents find
// letters to women ("/女人女性") and couples ("☆").
std::u16string ClassRecipient(std::u16string_view recipient, const RecipientNames& names);

}  // namespace suizo::corpus
