// The dictionary (`Form6`): one entry at a time, found by the ranked lookup
// of a reader's selection. The explanation's references to documents,
// lines, sources and sutra rows become links, and the related terms after
// "⇒" become buttons. The model decides; the window copies what `Hyouji`
// returns into its controls.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/navigation.h"
#include "core/search/driver.h"
#include "core/views/dictionary_lookup.h"

namespace suizo::views {

inline constexpr std::u16string_view kDictionaryCaption = u"辞書辞典";
// An explanation that sends the reader to a document's record: its numbers
// are documents, not lines, and the button 資料 opens the record.
inline constexpr std::u16string_view kSeeRecord = u"資料の解題をご覧";
// The related term that stands for the entry after the present one.
inline constexpr std::u16string_view kNextEntry = u"《次参考》";
inline constexpr int kKanrenCount = 8;
inline constexpr std::uint32_t kDictionaryHitColour = 0xFFFFC0;

// `CleanE`: the explanation without the notes meant for the printed form,
// its line marks as "<BR>".
std::u16string CleanE(std::u16string_view explanation);

// The related terms of a cleaned explanation: `Kanren(1..8)`, index 0
// unused; an empty text leaves the button disabled.
std::array<std::u16string, kKanrenCount + 1> RelatedTerms(std::u16string_view cleaned);

// `LinkDic`: numbers that name a source document, a source line, a line of
// the writings (or, with `seeRecord`, a document) become links; then the
// sutra references "〔h12〕" and "[h12]".
std::u16string LinkDic(std::u16string_view text, bool seeRecord, const corpus::Corpus& corpus,
                       const corpus::Selection& selection);

struct KanrenButton {
  std::u16string caption;
  bool enabled = false;
};

// What the window shows.
struct DictionaryDisplay {
  std::u16string caption{kDictionaryCaption};
  std::u16string Text4;   // the head word
  std::u16string Label1;  // its reading
  std::u16string Text2;   // 見出No
  std::u16string Text3;   // 事類
  std::u16string Text3Balloon;
  std::array<KanrenButton, kKanrenCount + 1> Kanren{};
  std::optional<std::u16string> frame{};  // written when the layout is (re)built
  std::u16string zoom{};                  // with the frame
  std::u16string body;
  bool toStart = false;
  int selDown = 0;  // `Sel(0)` head word, `Sel(1)` explanation
  std::u16string Label3Text;
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  bool Command3Enabled = false;  // 資料
  // The family the window was opened from, set by the navigation.
  std::uint32_t Command4Colour = 0xC0FFFF;
  std::u16string Command2Caption;
};

// What an action asks beyond a new render. A jump is a request that
// `DictionaryWindow` runs through the navigation.
struct DictionaryOutcome {
  bool redraw = false;
  bool toast = false;  // "** 見つかりません **"
  bool openSettings = false;
  bool focusSearchBox = false;
  enum class Jump {
    None,
    Reader,
    Record,
    Sutra,
    Sources,
    Dictionary,
    Contents,
    Back
  } jump = Jump::None;
  std::u16string text{};  // the jump's search text
  int mpos = 0;           // a list position
  int lpos = 0;           // a reading position (the sutra's: its row)
};

class Dictionary {
 public:
  // `lookup` is shared by every dictionary window of the program.
  Dictionary(const corpus::Corpus& corpus, const corpus::Selection& selection,
             const corpus::Settings& settings, const DictionaryLookup& lookup);

  // --- state, under the window's names ---
  int Dpos = 1;  // a position in `DicOrder`
  int SrTarget = 0;
  std::u16string Combo1;
  std::vector<std::u16string> Combo;

  // --- the hit state ---
  int Srn = 0, SrnPos = 0, Swn = 0;
  int getSr(int i) const;  // the `DicOrder` position of hit i (from 1)
  const std::vector<std::u16string>& getSw() const { return Sw_; }
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;

  // --- rendering ---
  DictionaryDisplay Hyouji();
  void YokoInit() { frameDue_ = true; }
  void SetDpi(double dpi) { dpi_ = dpi; }
  // The `Dic` row shown, or 0 on an empty dictionary.
  int Row() const;

  // --- search ---
  DictionaryOutcome Kensaku(int mode);
  DictionaryOutcome SrnBack();
  DictionaryOutcome SrnNext();
  DictionaryOutcome Command1(std::u16string_view selection);
  DictionaryOutcome SelClick(int i);
  DictionaryOutcome Label3Click() { return Kensaku(1); }

  // --- keys, links, buttons ---
  DictionaryOutcome KeyDownAll(int keyCode, int shift);
  DictionaryOutcome LinkClick(std::u16string_view href) const;
  DictionaryOutcome KanrenClick(int i) const;
  DictionaryOutcome Command2() const { return {.jump = DictionaryOutcome::Jump::Contents}; }
  DictionaryOutcome Command3() const;  // 資料: the record of the first document referred to
  DictionaryOutcome Command4() const { return {.jump = DictionaryOutcome::Jump::Back}; }
  // The head word a jump hands on, cut before `cut`.
  std::u16string HandedWord(std::u16string_view cut) const;

 private:
  const corpus::Corpus& corpus_;
  const corpus::Selection& selection_;
  const corpus::Settings& settings_;
  const DictionaryLookup& lookup_;
  std::vector<int> Sr_{0};
  std::vector<std::u16string> Sw_;
  std::array<std::u16string, kKanrenCount + 1> kanren_{};
  bool frameDue_ = true;
  double dpi_ = 96;
};

// The dictionary as the navigation sees it: one window per word looked up.
class DictionaryWindow : public reader::Hooked<reader::DictionaryView> {
 public:
  DictionaryWindow(const corpus::Corpus& corpus, const corpus::Selection& selection,
                   const corpus::Settings& settings, const DictionaryLookup& lookup);

  Dictionary& model() { return model_; }
  std::function<void(const DictionaryDisplay&)> onView;
  bool toastDue = false;

  std::u16string Combo1() const override { return model_.Combo1; }
  void SetCombo1(std::u16string_view text) override { model_.Combo1 = text; }
  void Hyouji() override;
  void Kensaku(int mode) override;
  int Dpos() const override { return model_.Dpos; }
  void SetDpos(int dpos) override { model_.Dpos = dpos; }
  // The links depend on the list: the entry is drawn again.
  void FollowSelection() override { Hyouji(); }

  // Runs what an action asked: a redraw, or a jump through the navigation,
  // after which the window minimises itself unless pinned. The contents
  // and the way back are left to the caller, which knows the windows.
  reader::JumpOutcome Follow(reader::Navigator& navigator, const DictionaryOutcome& outcome);

 private:
  std::u16string Family() const;

  Dictionary model_;
};

}  // namespace suizo::views
