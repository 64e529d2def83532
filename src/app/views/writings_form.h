// `Form2`: the writings reader. Seven panes side by side, or two in true
// vertical writing, with the document's header fields, the page boxes of
// every collection, the class strip, the side and form switches and the
// buttons to the other views; the hit list is its own.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <array>
#include <map>
#include <memory>

#include "app/views/reader_form.h"
#include "core/reader/highlight.h"
#include "core/reader/writings_window.h"

namespace suizo::app {

class HitListWindow;

class WritingsForm : public ReaderForm {
  Q_OBJECT

 public:
  WritingsForm(reader::WritingsWindow& window, Program& program);
  ~WritingsForm() override;

  reader::WritingsWindow& window() { return writings_; }
  reader::WritingsReader& reader() { return writings_.reader(); }

  // `Command2`: the hit list of this window's search, made at the first call.
  void OpenHitList();
  HitListWindow* HitList() const { return hitList_.get(); }

 protected:
  void BuildOwn() override;
  void ShowOwn(const reader::ReaderView& view) override;
  reader::WritingsLayout MakeLayout() const override;
  void PlaceOwn() override;
  std::optional<std::u16string> NoteText(int pane) const override;
  reader::ReaderOutcome NoteEnd(int pane, std::u16string_view start,
                                std::u16string_view text) override;
  void Link(const QString& href) override;
  bool PageTakes(char16_t c) const override;
  void CloseHitList() override;
  void RefreshHitList() override;
  bool OwnEvent(QObject* watched, QEvent* event) override;

 private:
  void Jump(int command);

  reader::WritingsWindow& writings_;
  QLabel *bangou_ = nullptr, *text1_ = nullptr, *text4_ = nullptr, *text5_ = nullptr,
         *text6_ = nullptr;
  QPushButton *sinSya_ = nullptr, *tyoKat_ = nullptr, *kakko_ = nullptr, *fav_ = nullptr;
  QWidget* picture3_ = nullptr;
  std::array<QLabel*, 11> clev_{};
  std::map<int, QLabel*> pageTitle_;                  // `PageTitle(i)` by label index
  std::unique_ptr<reader::Highlighter> highlighter_;  // the hit list's marks
  int nok_ = 0;                                       // the list shows column 8
  std::unique_ptr<HitListWindow> hitList_;
};

}  // namespace suizo::app
