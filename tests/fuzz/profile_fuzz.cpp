// Any bytes as suiten.ini: a file that is no Shift-JIS text is refused with
// the error naming its line; any other reads, and a key written to it is
// read back as written while the file keeps its other keys.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/corpus/errors.h"
#include "core/corpus/profile.h"
#include "fuzz_support.h"

using namespace suizo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto path = fuzzing::WriteInput("suiten.ini", data, size);
  std::u16string before;
  try {
    const corpus::ProfileFile file(path);
    // Names the sample's bookmarks use.
    (void)file.Read(u"BMark01", u"Lpos", u"");
    (void)file.Read(u"@設定", u"Helper", u"1");
    before = file.Read(u"BMark02", u"Title", u"-");
  } catch (const corpus::CorpusError&) {
    return 0;
  }
  {
    corpus::ProfileFile file(path);
    try {
      file.Write(u"@fuzz", u"key", u"値 value");
    } catch (const std::exception&) {
      return 0;  // a file that cannot be written is reported, not lost
    }
  }
  const corpus::ProfileFile after(path);
  if (after.Read(u"@fuzz", u"key", u"") != u"値 value") std::abort();
  if (after.Read(u"BMark02", u"Title", u"-") != before) std::abort();
  return 0;
}
