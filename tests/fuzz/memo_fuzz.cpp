// Any bytes as one of the four memo files that carry the notes across a
// rebuild (the first byte picks which): the restore puts each line it can
// read into its note column, refuses a line it cannot with the file and the
// line, and never writes outside the note columns. The sample's store is
// loaded once.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

#include "core/corpus/errors.h"
#include "core/corpus/notes.h"
#include "fuzz_support.h"

using namespace suizo;

namespace {

constexpr const char* kFiles[] = {"memo2.dat", "memo3.dat", "memoh.dat", "memos.dat"};

corpus::Corpus& Store() {
  static corpus::Corpus* store = [] {
    auto* c = new corpus::Corpus(fuzzing::SampleStore());
    for (const int group : {0, 2, 6}) c->ReadData(group);
    return c;
  }();
  return *store;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  corpus::Corpus& c = Store();
  for (const char* name : kFiles) std::filesystem::remove(fuzzing::SampleStore() / name);
  const std::string name = kFiles[data[0] % 4];
  fuzzing::WriteInput("sample/" + name, data + 1, size - 1);
  const std::u16string title(c.Dat().Get(1, 10)), sutra(c.table(corpus::TableId::Hok).Get(1, 2));
  const int rows = c.Dat().rows();
  try {
    corpus::RestoreNotes(c);
  } catch (const corpus::CorpusError& e) {
    if (std::string(e.what()).find(name) == std::string::npos) std::abort();
    return 0;
  }
  // Notes only: the texts and the row count stay as the store has them.
  if (c.Dat().Get(1, 10) != title || c.table(corpus::TableId::Hok).Get(1, 2) != sutra ||
      c.Dat().rows() != rows) {
    std::abort();
  }
  return 0;
}
