// The parts of the corpus, each writing its own files into the output folder.
// They run in this order, each reading what the ones before it registered.
#pragma once

#include <filesystem>

#include "registry.h"
#include "scale.h"

namespace suizo::gen {

// 翠典本文.dat and 翠典資料.dat: documents, their rows in eleven orders.
void WriteWritings(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder);

// 史料本文.dat and 史料目次.dat.
void WriteSources(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder);

// 法華経.dat, 法華経総科.dat, 法華経科文.dat and 注経本文.dat.
void WriteSutra(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder);

// 年表.dat, 年表関連.dat and 本尊資料.dat.
void WriteChronology(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder);

// 辞書事典.dat and add.csv, the class of each entry.
void WriteDictionary(const Sizes& sizes, Registry& registry, const std::filesystem::path& folder);

// corrections.tsv: what the parts registered, in order.
void WriteCorrections(const Registry& registry, const std::filesystem::path& folder);

}  // namespace suizo::gen
