// Any selection through the dictionary's lookup over the bundled sample's
// dictionary: nothing fails, the choice is one of the hits, and the walk
// that passes over entries finds what the walk over every entry finds.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/views/dictionary_lookup.h"
#include "fuzz_support.h"

using namespace suizo;

namespace {

struct Sample {
  corpus::Corpus corpus{fuzzing::SampleStore()};
  views::DictionaryLookup filtered{corpus, 1};
  views::DictionaryLookup every{corpus, 1};
  Sample() {
    corpus.ReadData(1);
    every.filterEntries = false;
  }
};

Sample& Loaded() {
  static Sample* sample = new Sample;
  return *sample;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Sample& s = Loaded();
  const std::u16string selection = fuzzing::Units(data, size).substr(0, 40);
  for (const int target : {views::kDicTargetHeadword, views::kDicTargetExplanation}) {
    const views::DicLookupResult a = s.filtered.KensakuDic(selection, target);
    if (a.SrnPos < 0 || a.SrnPos > a.Srn || static_cast<int>(a.Sr.size()) != a.Srn + 1)
      std::abort();
    if (target == views::kDicTargetHeadword) {
      const views::DicLookupResult b = s.every.KensakuDic(selection, target);
      if (a.Sr != b.Sr || a.SrnPos != b.SrnPos || a.log != b.log) std::abort();
    }
  }
  return 0;
}
