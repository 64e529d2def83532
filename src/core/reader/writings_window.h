// The writings reader as the navigation sees it: a text view in the
// registry of open windows. It wraps the reader model and hands each render
// to whoever shows it (the window in the program, a test, the tool).
#pragma once

#include <functional>
#include <memory>

#include "core/reader/navigation.h"
#include "core/reader/writings_reader.h"

namespace suizo::reader {

class WritingsWindow : public Hooked<TextView> {
 public:
  WritingsWindow(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                 const Navigator& navigator, corpus::NoteJournal* journal = nullptr);

  WritingsReader& reader() { return reader_; }
  // Each render, each show and each raise.
  std::function<void(const WritingsView&)> onView;

  std::u16string Combo1() const override { return reader_.engine().Combo1; }
  void SetCombo1(std::u16string_view text) override { reader_.engine().Combo1 = text; }
  void Hyouji() override;
  // A jump's search: the kind of search comes with the jump.
  void Kensaku(int mode) override;
  Position Place() const override { return reader_.engine().pos; }
  void SetPlace(const Position& place) override { reader_.engine().pos = place; }
  int Muki1() const override { return reader_.Muki1; }
  void SetMuki1(int muki) override;
  void Hyouji2() override;

  // A link clicked in a pane: the jump it asks for goes through the
  // navigation, in this window's family.
  ReaderOutcome LinkClick(Navigator& navigator, std::u16string_view href);

  // Whether the last search found nothing: the caller shows the toast.
  bool toastDue = false;

  // Another collection, order or classes: the kept refinements and the box
  // are searched again, and the reader goes back to its line by ｼｽﾃﾑNo.
  void FollowSelection() override;
  void Deactivate() override { reader_.Deactivate(); }

 private:
  WritingsReader reader_;
  const Navigator* navigator_;
};

}  // namespace suizo::reader
