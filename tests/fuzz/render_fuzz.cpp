// Any text through the link makers and the hit marks, over the bundled
// sample: the links leave the text itself as it was, each opened link and
// mark is closed, and nothing fails. The input's first unit says how many of
// the rest are a search box; the next chooses method, pane and line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <regex>
#include <string>

#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/reader/highlight.h"
#include "core/reader/links.h"
#include "core/reader/texts.h"
#include "core/search/driver.h"
#include "core/text/utf16.h"
#include "core/views/record.h"
#include "fuzz_support.h"

using namespace suizo;

namespace {

struct Sample {
  corpus::Corpus corpus{fuzzing::SampleStore()};
  corpus::Selection selection;
  corpus::Settings settings;
  Sample() {
    for (const int group : {0, 1, 2, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }
};

Sample& Loaded() {
  static Sample* sample = new Sample;
  return *sample;
}

std::size_t Count(const std::string& s, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = s.find(part); at != std::string::npos; at = s.find(part, at + part.size()))
    ++n;
  return n;
}

// The text without the links a maker added.
std::string WithoutLinks(const std::string& html) {
  static const std::regex link("<a href='[^'<>]*'>|</a>");
  return std::regex_replace(html, link, "");
}

void Links(const std::u16string& text, const std::u16string& made) {
  const std::string in = text::ToUtf8(text), out = text::ToUtf8(made);
  if (Count(out, "<a ") != Count(out, "</a>")) std::abort();
  if (WithoutLinks(out) != in) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Sample& s = Loaded();
  std::u16string units = fuzzing::Units(data, size);
  if (units.size() < 2) return 0;
  // The text holds no markup of its own, as the corpus's texts hold none.
  for (char16_t& c : units) {
    if (c == u'<') c = u'＜';
    if (c == u'>') c = u'＞';
    if (c == u'\'') c = u'’';
  }
  const std::size_t n = std::min<std::size_t>(units[0] % 17, units.size() - 2);
  const char16_t choice = units[1];
  const std::u16string box = units.substr(2, n);
  const std::u16string text = units.substr(2 + n, 400);

  Links(text, reader::LinkLines(text));
  Links(text, reader::LinkRefs(text, s.corpus));
  Links(text, views::LinkPane(text, s.corpus));

  search::SearchEngine engine(search::TextTable::Writings(s.corpus, s.selection), s.settings);
  engine.Combo1 = box;
  engine.SrMethod = static_cast<search::Method>(choice % 3);
  engine.Tab = 0;
  engine.DivMode = (choice >> 2) % 3;
  engine.Kensaku(0);
  reader::Highlighter marks(engine, s.settings.Itaiji);
  const int lpos = 1 + (choice >> 4) % std::max(1, s.corpus.DasMaxY);
  const int pane = (choice >> 8) % 11;
  const std::string out = text::ToUtf8(marks.HiLight(text, pane, lpos));
  if (Count(out, "<span>") != Count(out, "</span>")) std::abort();
  return 0;
}
