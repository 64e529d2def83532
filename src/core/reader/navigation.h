// Going from one view to another. The open windows stand in a registry in
// the order they were made; the jump routines pick a window that fits or
// make one, put it on its place and run the search that came along, and
// `BackToParent` picks the window the user returns to when one closes. The
// rules live here; a window only answers the few calls below.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/reader/texts.h"
#include "core/search/compilers.h"

namespace suizo::reader {

enum class FormKind {
  Form2,   // writings reader
  Form16,  // sources reader
  Form7,   // sutra reader
  Form5,   // document record
  Form12,  // chronology
  Form6,   // dictionary
  Form9,   // writings contents, the main window
  Form15,  // sources contents
  Form4,   // hit list of a text window
  Form3,   // collection selection
  Form17,  // bookmark dialog
  Form8,   // sutra outlines
  Form14,  // chronology filter
};

// "Form2" and so on: the window's object name in the program.
std::u16string_view FormName(FormKind kind);
// The settings section a window of the kind keeps its place in, which is
// also the `Parent` a new one gets: "@本文", "@史料目次"...
std::u16string_view DefaultParent(FormKind kind);

// Families, as `ParentForm` holds them. The contents windows hand their own
// marks to the views they open.
inline constexpr std::u16string_view kWritingsFamily = u"翠典";
inline constexpr std::u16string_view kSourcesFamily = u"史料";
inline constexpr std::u16string_view kFromWritingsContents = u"翠典元";
inline constexpr std::u16string_view kFromSourcesContents = u"史料元";

// The contents list a view of the family goes back to.
inline FormKind ContentsOf(std::u16string_view family) {
  return family == kSourcesFamily ? FormKind::Form15 : FormKind::Form9;
}

// The trace a jump shows in a message box when its caller gave no family.
inline constexpr std::u16string_view kEmptyFamilyTrace = u"empty!!";

// Every window in the registry. The members are public, as the routines
// read and set them by name; `Visible` and `Minimized` follow the screen,
// which the program reports back.
class OpenWindow {
 public:
  explicit OpenWindow(FormKind kind) : kind_(kind) {}
  virtual ~OpenWindow() = default;
  OpenWindow(const OpenWindow&) = delete;
  OpenWindow& operator=(const OpenWindow&) = delete;

  FormKind kind() const { return kind_; }

  std::u16string Parent;      // settings section and tag of the kind
  std::u16string ParentForm;  // family the window was opened in
  bool Pin = false;           // down: never closed by itself, a return target only as a last resort
  bool Visible = false;
  bool Minimized = false;

  void Show() {
    Visible = true;
    OnShow();
  }
  // To the front, out of the task bar if it was minimised.
  void Raise() {
    Minimized = false;
    OnRaise();
  }

  // The collection, order or classes changed and the store's orders are
  // rebuilt: the window finds its place again by the stable numbers it
  // kept and redraws. A window without such a place does nothing.
  virtual void FollowSelection() {}
  // The placements were made anew for another collection: the writings
  // contents restore their refinements before any window follows.
  virtual void PlacementsRebuilt() {}
  // The window loses activation: it keeps the stable numbers of its place.
  virtual void Deactivate() {}

 protected:
  // The view follows.
  virtual void OnShow() = 0;
  virtual void OnRaise() = 0;

 private:
  FormKind kind_;
};

// A view a jump lands in: it has the search box and the search.
class JumpView : public OpenWindow {
 public:
  using OpenWindow::OpenWindow;

  // `CXL.Cancel`: Esc closes the window.
  bool CancelOnEsc = false;

  virtual std::u16string Combo1() const = 0;
  virtual void SetCombo1(std::u16string_view text) = 0;
  // Render the current place.
  virtual void Hyouji() = 0;
  // The view's own search; a text reader run by a jump takes the
  // navigator's `JumpMethod` as the kind of search.
  virtual void Kensaku(int mode) = 0;
};

// A view whose window the program hooks to its showing and raising.
template <class View>
class Hooked : public View {
 public:
  using View::View;
  std::function<void()> onShow, onRaise;

 protected:
  void OnShow() override {
    if (onShow) onShow();
  }
  void OnRaise() override {
    if (onRaise) onRaise();
  }
};

// The writings, sources and sutra readers.
class TextView : public JumpView {
 public:
  using JumpView::JumpView;

  // `Mpos` and `Lpos`; the sutra's `Mpos` is its chapter's name.
  virtual Position Place() const = 0;
  virtual void SetPlace(const Position& place) = 0;
  virtual int Muki1() const = 0;
  virtual void SetMuki1(int muki) = 0;
  // The hit counter and what goes with it.
  virtual void Hyouji2() = 0;
};

// The document record.
class RecordView : public JumpView {
 public:
  using JumpView::JumpView;

  virtual int Mpos() const = 0;
  virtual void SetMpos(int mpos) = 0;
  virtual void ClevWrite() = 0;
  // The box's search target goes to the text.
  virtual void Text4_Click() = 0;
};

// The chronology.
class ChronologyView : public JumpView {
 public:
  using JumpView::JumpView;

  // 0xC0FFFF opened from the writings, 0xC0E0FF from the sources.
  std::uint32_t Command2BackColor = 0xC0FFFF;

  virtual int Npos() const = 0;
  virtual void SetNpos(int npos) = 0;
  virtual void Hyouji2() = 0;
  virtual void ShowEdit() = 0;
  // `NenOrder` with element 0 unused; `NesMaxY` is its size less one.
  virtual std::span<const int> NenOrder() const = 0;
};

// The dictionary.
class DictionaryView : public JumpView {
 public:
  using JumpView::JumpView;

  // The family shows on `Command4` and in the caption of `Command2`.
  std::uint32_t Command4BackColor = 0xC0FFFF;
  std::u16string Command2Caption{kWritingsFamily};

  virtual int Dpos() const = 0;
  virtual void SetDpos(int dpos) = 0;
};

// The two contents windows.
class ContentsView : public JumpView {
 public:
  using JumpView::JumpView;

  // The box gets the focus with its text selected.
  virtual void SelectBox() = 0;
};

// The open windows in creation order. The program registers a factory that
// makes the model (and its window) of a kind.
class WindowRegistry {
 public:
  using Factory = std::function<std::unique_ptr<OpenWindow>(FormKind)>;
  explicit WindowRegistry(Factory factory) : factory_(std::move(factory)) {}

  // A new window of the kind, last in the order.
  OpenWindow& Create(FormKind kind);
  // The window goes from the list; the end of the program or of a dialog.
  void Unload(const OpenWindow& window);

  std::vector<OpenWindow*> All() const;
  std::vector<OpenWindow*> OfKind(FormKind kind) const;
  OpenWindow* First(FormKind kind) const;
  // The first window of the kind, made when there is none: the contents
  // windows and the chronology exist once.
  OpenWindow& Single(FormKind kind);
  std::size_t size() const { return windows_.size(); }

 private:
  Factory factory_;
  std::vector<std::unique_ptr<OpenWindow>> windows_;
};

// Where a jump ended.
struct JumpOutcome {
  JumpView* window = nullptr;  // none when refused or there was nothing to show
  bool created = false;
  bool refused = false;  // another jump was under way: nothing happened
  std::u16string trace;  // kEmptyFamilyTrace when the caller gave no family
};

class Navigator {
 public:
  Navigator(const corpus::Corpus& corpus, WindowRegistry& windows)
      : corpus_(corpus), windows_(windows) {}

  // `DoEvents`: lets waiting events run once. Other clicks may come in
  // through it, which `Jumping` turns away.
  std::function<void()> DoEvents;

  int Jumping() const { return jumping_; }
  search::Method JumpMethod() const { return jumpMethod_; }

  JumpOutcome GoHonbun(std::u16string_view text, int mpos, int lpos, search::Method method,
                       int muki, std::u16string_view family);
  JumpOutcome GoShiryou(std::u16string_view text, int mpos, int lpos, search::Method method,
                        int muki, std::u16string_view family);
  JumpOutcome GoKyou(std::u16string_view text, int lpos, std::u16string_view family);
  JumpOutcome GoMok(std::u16string_view text, int mpos, std::u16string_view family);
  // `mpos` is a place in the writings' list; 0 for none.
  JumpOutcome GoNen(std::u16string_view text, int mpos, std::u16string_view family);
  // `mpos` is a place in the sources' list; 0 for none.
  JumpOutcome GoNenS(std::u16string_view text, int mpos, std::u16string_view family);
  JumpOutcome GoJisho(std::u16string_view text, std::u16string_view family);
  JumpOutcome GoSMok(std::u16string_view text);

  // After a window of `family` closed (and hid): the window raised or the
  // contents window shown.
  OpenWindow& BackToParent(std::u16string_view family);

 private:
  class JumpGuard;
  // The family test and the `Jumping` test every jump begins with; false
  // when the jump is refused.
  bool Begin(std::u16string_view family, bool hasFamily, JumpOutcome& out);
  JumpOutcome GoReader(FormKind kind, std::u16string_view text, int mpos, int lpos,
                       search::Method method, int muki, std::u16string_view family);
  JumpOutcome GoChronology(std::u16string_view text, int mpos, std::u16string_view family,
                           bool sources);
  // The event of the chronology that belongs to work `mpos`, or 0.
  int EventOfWork(const ChronologyView& view, int mpos, bool sources) const;
  void Pump();

  const corpus::Corpus& corpus_;
  WindowRegistry& windows_;
  int jumping_ = 0;
  search::Method jumpMethod_ = search::Method::And;
};

// The colours `ClevWrite` paints from the selection: `Clev(0..10)` and
// `PageTitle(0..35)` (a window paints those it has).
struct ClevColours {
  std::array<std::uint32_t, 11> Clev{};
  std::array<std::uint32_t, 36> PageTitle{};
};
inline constexpr std::uint32_t kClevOn = 65535;        // yellow
inline constexpr std::uint32_t kClevOff = 0x808080;    // grey
inline constexpr std::uint32_t kPageOrder = 0xFFFFC0;  // light blue: the page order
inline constexpr std::uint32_t kDateOrder = 14538751;  // pink: the date order
ClevColours ClevWriteColours(const corpus::Selection& selection);

}  // namespace suizo::reader
