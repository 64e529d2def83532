// Any bytes as the note journal left by a run that did not end: the replay
// applies the edits it can read, skips what it cannot, and only ever writes
// note columns. The sample's store is loaded once.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/corpus/errors.h"
#include "core/corpus/note_journal.h"
#include "fuzz_support.h"

using namespace suizo;

namespace {

corpus::Corpus& Store() {
  static corpus::Corpus* store = [] {
    auto* c = new corpus::Corpus(fuzzing::SampleStore());
    for (const int group : {0, 1, 2, 3, 4, 5, 6}) c->ReadData(group);
    return c;
  }();
  return *store;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corpus::Corpus& c = Store();
  const corpus::NoteJournal journal(fuzzing::SampleStore());
  fuzzing::WriteInput("sample/notes.journal", data, size);
  const std::u16string title(c.Dat().Get(1, 10));
  try {
    journal.Replay(c);
  } catch (const corpus::CorpusError&) {
    return 0;
  }
  // A replay touches notes only: a text field stays as the store has it.
  if (c.Dat().Get(1, 10) != title) std::abort();
  return 0;
}
