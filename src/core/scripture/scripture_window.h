// The sutra and the sources readers as the navigation sees them: text views
// in the registry of open windows, each wrapping its reader model and
// handing each render to whoever shows it.
#pragma once

#include <functional>

#include "core/reader/navigation.h"
#include "core/scripture/sources_reader.h"
#include "core/scripture/sutra_reader.h"

namespace suizo::scripture {

template <class Reader>
class ScriptureWindow : public reader::Hooked<reader::TextView> {
 public:
  ScriptureWindow(reader::FormKind kind, corpus::Corpus& corpus, corpus::Selection& selection,
                  corpus::Settings& settings, const reader::Navigator& navigator,
                  corpus::NoteJournal* journal)
      : Hooked(kind), reader_(corpus, selection, settings, journal), navigator_(&navigator) {}

  Reader& reader() { return reader_; }
  // Each render, each show and each raise.
  std::function<void(const reader::ReaderView&)> onView;
  // Whether the last search found nothing: the caller shows the toast.
  bool toastDue = false;

  std::u16string Combo1() const override { return reader_.engine().Combo1; }
  void SetCombo1(std::u16string_view text) override { reader_.engine().Combo1 = text; }
  void Hyouji() override {
    const reader::ReaderView view = reader_.Hyouji();
    if (onView) onView(view);
  }
  // A jump's search: the kind of search comes with the jump.
  void Kensaku(int mode) override {
    reader_.engine().SrMethod = navigator_->JumpMethod();
    toastDue = reader_.engine().Kensaku(mode).toast;
    Hyouji();
  }
  search::Position Place() const override { return reader_.engine().pos; }
  void SetPlace(const search::Position& place) override { reader_.engine().pos = place; }
  int Muki1() const override { return reader_.Muki1; }
  void SetMuki1(int muki) override {
    if (muki == 1) {
      reader_.TateInit();
    } else {
      reader_.YokoInit();
    }
  }
  void Hyouji2() override { reader_.Hyouji2(); }

 protected:
  Reader reader_;
  const reader::Navigator* navigator_;
};

using SutraWindow = ScriptureWindow<SutraReader>;

// The sources follow a change of their order: the kept refinements and the
// box are searched again, and the reader finds its line again.
class SourcesWindow : public ScriptureWindow<SourcesReader> {
 public:
  SourcesWindow(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                const reader::Navigator& navigator, corpus::NoteJournal* journal)
      : ScriptureWindow(reader::FormKind::Form16, corpus, selection, settings, navigator, journal) {
  }

  void FollowSelection() override;
  void Deactivate() override { reader_.Deactivate(); }
};

}  // namespace suizo::scripture
