// Balloon help, the program's only user documentation: what each window says
// over its controls, and the rules of the tool-tip object that shows it. The
// window applies the result to its widgets; nothing here draws.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/settings.h"

namespace suizo::views {

// One balloon: a control's name ("Combo1", "TagT(3)") and its text, lines
// joined by a line feed.
struct BalloonTool {
  std::u16string control;
  std::u16string text;
  bool operator==(const BalloonTool&) const = default;
};

// The forms that have balloons: "Form9", "Form15", ...
std::span<const std::u16string_view> BalloonForms();

// What `ToolTipInit(form)` adds for a form, in its stable order; nothing for
// a form without balloons.
std::vector<BalloonTool> FormBalloons(std::u16string_view form);

// One control's text, or nothing when the form gives it no balloon.
std::optional<std::u16string> BalloonText(std::u16string_view form, std::u16string_view control);

// The dictionary's class box tells its own text under its heading.
std::u16string DictionaryClassBalloon(std::u16string_view jirui);

// The system's tool-tip colours, which a tip has until told otherwise (0xBBGGRR).
inline constexpr std::uint32_t kInfoBackColor = 0xE1FFFF;
inline constexpr std::uint32_t kInfoTextColor = 0x000000;

// The status font as the desktop reports it.
struct StatusFont {
  std::u16string name;
  int points = 9;
};

struct TipFont {
  std::u16string name;
  int points = 0;  // the status font's size plus `BTFont`
  int pixels = 0;  // points × dpi / 72, rounded
  bool bold = false;
  bool italic = false;
  bool operator==(const TipFont&) const = default;
};

// `BTFont` only adds to the desktop's size: 0 gives the status bar's own.
TipFont BalloonFont(const StatusFont& status, int BTFont, int dpi);

// `cTooltip`: one tool-tip window of a form with its tools.
class Tooltip {
 public:
  struct Tool {
    std::u16string control;
    std::u16string text;
  };

  // `Create(parent)` and `SetFont`: true once the window exists.
  bool Create(TipFont font);
  void SetFont(TipFont font) { font_ = std::move(font); }
  bool Active() const { return active_; }
  const TipFont& Font() const { return font_; }

  // 1: balloon. Read at creation.
  int Style() const { return style_; }
  void SetStyle(int style) { style_ = style; }

  // The balloon shows its icon only with a title, so a title is never empty.
  const std::u16string& Title() const { return title_; }
  void SetTitle(std::u16string_view title);
  int Icon() const { return icon_; }
  void SetIcon(int icon);

  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color) { backColor_ = color; }
  // The getter sends the setter's message with no colour, and so turns the
  // text black: the class has always done so, and windows may rely on it.
  std::uint32_t ForeColor();
  void SetForeColor(std::uint32_t color) { foreColor_ = color; }

  int DelayTime() const { return delayTime_; }
  // Only before `Create`: the window takes its delay once.
  void SetDelayTime(int ms);
  int VisibleTime() const { return visibleTime_; }
  void SetVisibleTime(int ms) { visibleTime_ = ms; }

  // -1 is no limit; anything below 1 means that.
  int MaxTipWidth() const { return maxTipWidth_; }
  void SetMaxTipWidth(int width) { maxTipWidth_ = width < 1 ? -1 : width; }

  // Only once created, and once per control: a second call leaves the first
  // text. An empty control name is a control without a window of its own.
  bool AddTool(std::u16string_view control, std::u16string_view text = {});
  void RemoveTool(std::u16string_view control);
  bool HasTool(std::u16string_view control) const;
  // The text up to its first NUL; empty for a control without a tool.
  std::u16string ToolText(std::u16string_view control) const;
  void SetToolText(std::u16string_view control, std::u16string_view text);

  int ToolCount() const { return static_cast<int>(tools_.size()); }
  const std::vector<Tool>& Tools() const { return tools_; }
  // The longest text seen, plus 1.
  int MaxTextLen() const { return maxTextLen_; }

 private:
  Tool* Find(std::u16string_view control);
  const Tool* Find(std::u16string_view control) const;
  void See(std::u16string_view text);

  bool active_ = false;
  int style_ = 1;
  std::u16string title_ = u" ";
  int icon_ = 1;
  int delayTime_ = 10;
  int visibleTime_ = 30000;
  int maxTipWidth_ = -1;
  std::uint32_t backColor_ = kInfoBackColor;
  std::uint32_t foreColor_ = kInfoTextColor;
  TipFont font_;
  std::vector<Tool> tools_;
  int maxTextLen_ = 0;
};

inline constexpr int kBalloonMaxTipWidth = 800;

// Whether the form has the control with a window of its own; an empty
// filter means every control. A balloon whose control is missing is passed over.
using ControlFilter = std::function<bool(std::u16string_view)>;

// `ToolTipInit(form)`: `tip` is the form's `ToolTip` member, made when empty.
void ToolTipInit(std::optional<Tooltip>& tip, std::u16string_view form, const TipFont& font,
                 const ControlFilter& hasControl = {});

// When a form's balloons are there. Made at load when `Helper` is 1. Any key
// takes them away so that they do not get in the way of typing, until the
// mouse next moves over the grid or `Picture1`. A layout switch adds the
// balloons of the controls it brought, but never brings back what a key took.
class BalloonHelp {
 public:
  BalloonHelp(const corpus::Settings& settings, std::u16string form, StatusFont status, int dpi,
              ControlFilter hasControl = {});

  void Load();
  // `KeyDownAll`, before the key acts.
  void KeyDown() { tip_.reset(); }
  // Over the grid or `Picture1`.
  void MouseMove();
  // `TateYoko`.
  void LayoutChanged();
  // The settings dialog confirmed: set up anew, with the new font, or taken away.
  void SettingsChanged();

  // A window that tells a control's balloon itself, at each display; the
  // text lasts until the balloons are set up anew.
  void SetToolText(std::u16string_view control, std::u16string_view text) {
    if (tip_) tip_->SetToolText(control, text);
  }

  // The form's `ToolTip` member.
  const std::optional<Tooltip>& ToolTip() const { return tip_; }
  bool Showing() const { return tip_.has_value(); }

 private:
  void Init();

  const corpus::Settings& settings_;
  std::u16string form_;
  StatusFont status_;
  int dpi_;
  ControlFilter hasControl_;
  std::optional<Tooltip> tip_;
};

}  // namespace suizo::views
