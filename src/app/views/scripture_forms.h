// `Form7` and `Form16`: the sutra and the sources readers, twins of the
// writings reader with four panes, `Check1` choosing the vertical page's
// second text and the compact layout's pane flip.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <memory>

#include "app/views/reader_form.h"
#include "core/scripture/scripture_window.h"

namespace suizo::app {

class OutlineForm;

// What the two share beyond the writings' plan.
class ScriptureForm : public ReaderForm {
  Q_OBJECT

 public:
  ScriptureForm(reader::TextView& window, scripture::ScriptureReader& model, Program& program,
                ReaderFormShape shape);

 protected:
  // `Check1` with its caption, the pane flip `flip` ("切替") at its place,
  // and the page boxes with their titles.
  void BuildScripture(const QString& check1, int flip,
                      const std::vector<std::pair<int, QString>>& pages);
  // A button to another view: off when this build has no window for it.
  QPushButton* ViewButton(int number, const QString& caption, int x, reader::FormKind target);
  void ShowScripture(const reader::ReaderView& v);
  reader::WritingsLayout MakeLayout() const override;
  void PlaceOwn() override;
  std::optional<std::u16string> NoteText(int pane) const override;
  reader::ReaderOutcome NoteEnd(int pane, std::u16string_view start,
                                std::u16string_view text) override;
  bool PageTakes(char16_t c) const override;
  // The lookups of the selection: the writings, the sutra, the dictionary.
  void LookUp(reader::FormKind target);

  scripture::ScriptureReader& scripture_;
  QCheckBox* check1_ = nullptr;
  QPushButton* flip_ = nullptr;
  std::map<int, QLabel*> fields_;  // `Text(i)` by number
};

class SutraForm : public ScriptureForm {
  Q_OBJECT

 public:
  SutraForm(scripture::SutraWindow& window, Program& program);
  ~SutraForm() override;
  scripture::SutraWindow& window() { return sutra_; }
  scripture::SutraReader& reader() { return sutra_.reader(); }
  // "総科" (0) and "科文" (1): this reader's outline window at its row.
  void OpenOutline(int skFlag);
  OutlineForm* Outline() const { return outline_.get(); }

 protected:
  void BuildOwn() override;
  void ShowOwn(const reader::ReaderView& v) override { ShowScripture(v); }

 private:
  scripture::SutraWindow& sutra_;
  std::unique_ptr<OutlineForm> outline_;
};

class SourcesForm : public ScriptureForm {
  Q_OBJECT

 public:
  SourcesForm(scripture::SourcesWindow& window, Program& program);
  scripture::SourcesWindow& window() { return sources_; }
  scripture::SourcesReader& reader() { return sources_.reader(); }

 protected:
  void BuildOwn() override;
  void ShowOwn(const reader::ReaderView& v) override;
  void PlaceOwn() override;

 private:
  scripture::SourcesWindow& sources_;
};

}  // namespace suizo::app
