// The frame written into a pane once per change of layout: after it, a new
// position only replaces the body's inner HTML and colour.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace suizo::reader {

inline constexpr std::u16string_view kDoctype = u"<!DOCTYPE html>";
// Every bare <span> is a hit mark; a span with its own style is not.
inline constexpr std::u16string_view kHitStyle =
    u"<style>span{ color:black; font-weight: bold; background-color: yellow; }</style>";
inline constexpr std::u16string_view kLinkStyle =
    u"<style>a{ color:blue; text-decoration:none; }</style>";
// Only the measuring pane carries it, in front of the doctype.
inline constexpr std::u16string_view kCompatibilityTag =
    u"<meta http-equiv='X-UA-Compatible' content='IE=9'>";

// The grey of a line without an autograph under the autograph scope. The
// main text closes it with "</span>"; the translation with "</span2>", which
// the browser ignores, so that its grey runs to the end of the body.
inline constexpr std::u16string_view kGreyOpen =
    u"<span style='color:#BBBBBB; background-color:transparent; font-weight:normal;'>";
inline constexpr std::u16string_view kGreyClose = u"</span>";
inline constexpr std::u16string_view kGreyCloseTranslation = u"</span2>";

// The seven text panes of the writings reader, 1 to 7 (index 0 unused), and
// their body colours in horizontal layout, as the program's BGR numbers.
inline constexpr int kPanes = 7;
inline constexpr std::array<std::uint32_t, kPanes + 1> kHorizontalColours = {
    0, 15987674, 16709354, 16709354, 16709354, 16777215, 16777215, 16709354};
inline constexpr std::uint32_t kMainColour = 15987674;
inline constexpr std::uint32_t kTranslationColour = 16709354;
inline constexpr std::uint32_t kCopyColour = 15332093;  // pane 3 on the copies' side

// The horizontal frame of pane 1 to 7: doctype, styles, the pane's body tag.
std::u16string HorizontalFrame(int pane);

// The vertical frame of panes 1 and 2 and the measuring pane: the wheel
// script with `step` pixels (25 at 96 dots per inch), the styles and the
// vertical body tag.
std::u16string VerticalFrame(double step);
// What the measuring pane receives: the compatibility tag, then the frame.
std::u16string MeasuringFrame(double step);
// The wheel step for a screen of `dpi` dots per inch.
inline double WheelStep(double dpi) {
  return dpi * 25 / 96;
}

// The zoom the panes take, "100%" at 96 dots per inch.
std::u16string ZoomText(double dpi);

}  // namespace suizo::reader
