#include <string>

#include "core/corpus/file_io.h"
#include "core/text/utf16.h"
#include "modules.h"

namespace suizo::gen {

// One entry a line, tab-separated, UTF-8: table, key, field, kind, old, new.
// Lines starting with "#" are comments.
void WriteCorrections(const Registry& registry, const std::filesystem::path& folder) {
  std::string out =
      "# Corrections the import applies in order, after reading each table.\n"
      "# table\tkey\tfield\tkind\told\tnew\n";
  for (const Correction& c : registry.corrections) {
    for (const auto& part :
         {c.table, c.key, text::IntText(c.field), c.kind, c.oldText, c.newText}) {
      if (part.find_first_of(u"\t\r\n") != std::u16string::npos) {
        throw std::logic_error("a correction holds a tab or a line end: " + text::ToUtf8(part));
      }
    }
    out += text::ToUtf8(c.table) + "\t" + text::ToUtf8(c.key) + "\t" + std::to_string(c.field) +
           "\t" + text::ToUtf8(c.kind) + "\t" + text::ToUtf8(c.oldText) + "\t" +
           text::ToUtf8(c.newText) + "\n";
  }
  corpus::WriteFileWhole(folder / "corrections.tsv", out);
}

}  // namespace suizo::gen
