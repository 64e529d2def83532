// A store of about the corpus's full size, made up on the spot so that the
// benchmarks need no corpus on disk. Deterministic: the same bytes each run.
#pragma once

#include <filesystem>

namespace suizo::bench {

// Writes the .dax files of every table into `folder`.
void WriteSyntheticStore(const std::filesystem::path& folder);

}  // namespace suizo::bench
