// Composes the sample's text: letters in a classical epistolary register,
// modern renderings with notes, pseudo-classical Chinese for the sutra and the
// sources, titles and names. Every phrase is written for this project; the
// combinations come from a seeded generator, so the same seed gives the same
// text.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rng.h"

namespace suizo::gen {

class Composer {
 public:
  explicit Composer(std::uint64_t seed) : rng_(seed) {}
  Rng& rng() { return rng_; }

  // One line of a letter, `min` to `max` characters, ending in "。".
  std::u16string LetterLine(int min, int max);
  // A modern rendering of a line, with a "＜…＞" note now and then.
  std::u16string Rendering(int min, int max, int notePercent);
  // Classical Chinese in the manner of a scripture or a chronicle.
  std::u16string Kanbun(int min, int max);
  // A reading of the same in Japanese word order, in kana and kanji.
  std::u16string Kundoku(int min, int max);
  // A short remark for a note column.
  std::u16string Remark();

  std::u16string Title();      // a document title, "春雨御書"
  std::u16string TitleKana();  // a reading in kana
  std::u16string Recipient();  // "妙心尼", "某殿夫妻"
  std::u16string Place();
  std::u16string SourceTitle();  // a source document, "古記抄"

 private:
  std::u16string Clause();
  Rng rng_;
};

// Terms that stand in the letters, the sutra and the sources alike, so that
// one selection can be looked up in every view and in the dictionary.
std::span<const std::u16string_view> SharedTerms();

// Some new kanji forms replaced by their old forms (学 by 學, 仏 by 佛), about
// `percent` of those present, so that searches must bridge both.
std::u16string WithOldForms(std::u16string_view text, Rng& rng, int percent);

// Some historical kana spellings replaced by the later ones (ひ by い after a
// kana, ゐ by い, ゑ by え), the other way of bridging.
std::u16string WithModernKana(std::u16string_view text, Rng& rng, int percent);

}  // namespace suizo::gen
