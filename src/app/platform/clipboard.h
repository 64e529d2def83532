// The clipboard as a transport: a selection is passed through it and the
// user's own clipboard text is put back afterwards, as it was.
#pragma once

#include <QString>
#include <optional>
#include <utility>

namespace suizo::platform {

class Clipboard {
 public:
  // The clipboard's text; empty when it holds none.
  static QString Text();
  // Puts `text` on the clipboard; an empty text clears it.
  static void SetText(const QString& text);

  // Runs `use`, which may do anything to the clipboard, and then puts back
  // the text that was there before (or none), also when `use` throws.
  // Returns what `use` returns.
  template <class Use>
  static auto Borrow(Use&& use) {
    const Saved saved;
    return std::forward<Use>(use)();
  }

 private:
  class Saved {
   public:
    Saved();
    ~Saved();
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

   private:
    std::optional<QString> text_;  // nothing: the clipboard held no text
  };
};

}  // namespace suizo::platform
