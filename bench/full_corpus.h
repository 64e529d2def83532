// The full-scale corpus the benchmarks run on: generated once per program
// into a temporary folder, converted to the store on first use.
#pragma once

#include <cstdint>
#include <filesystem>

#include "core/corpus/corpus.h"

namespace suizo::bench {

// Writes the exports of the full-scale corpus, or of `percent` of it.
void WriteCorpus(const std::filesystem::path& folder, int percent);

// The folder of .dat exports; removed by RemoveFullCorpus.
const std::filesystem::path& FullCorpus();
void RemoveFullCorpus();
std::int64_t ExportBytes();

// The benchmark programs' main: the corpus made first, so that no benchmark
// times its making, and removed at the end.
int RunBenchmarks(int argc, char** argv);

// The store converted from the exports, with `groups` loaded (0 to 6),
// shared by the benchmarks of one program.
corpus::Corpus& ConvertedStore(std::initializer_list<int> groups);

}  // namespace suizo::bench
