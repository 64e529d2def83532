// The exports checked as a whole before a conversion does any work, so that
// a damaged folder is refused before a single store is written.
#pragma once

#include <filesystem>

#include "core/corpus/corrections.h"

namespace suizo::corpus {

// Checks the twelve <stem>.dat files of the folder: each must be there and
// be a regular file (anything else is refused without being opened), decode
// as Shift-JIS and have a header that DatReader takes. A header naming a
// column twice is told to `warn` and let through: the last one is read.
// Every faulty file is named: one fault is thrown as it is, several as one
// CorpusError naming the folder and listing each on a line of its own.
void CheckExports(const std::filesystem::path& dataPath, const MessageSink& warn);

}  // namespace suizo::corpus
