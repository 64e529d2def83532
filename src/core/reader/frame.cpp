#include "core/reader/frame.h"

#include "core/text/numbers.h"

namespace suizo::reader {

namespace {

constexpr std::u16string_view kBodyTop =
    u"<body scroll=auto style='width:98%; margin:auto; margin-top:5px; line-height:1.4em; "
    u"font-size:16px; "
    u"font-family:ＭＳ ゴシック;'>";
constexpr std::u16string_view kBodyNotes =
    u"<body scroll=auto style='width:98%; margin:auto; margin-top:0px; line-height:1.3em; "
    u"font-size:16px; "
    u"font-family:ＭＳ ゴシック;'>";
constexpr std::u16string_view kBodySmall =
    u"<body scroll=auto style='width:98%; margin:auto; margin-top:0px; line-height:1.3em; "
    u"font-size:14px; "
    u"font-family:ＭＳ ゴシック;'>";
constexpr std::u16string_view kBodySmallNarrow =
    u"<body scroll=auto style='width:97%; margin:auto; margin-top:0px; line-height:1.3em; "
    u"font-size:14px; "
    u"font-family:ＭＳ ゴシック;'>";
constexpr std::u16string_view kBodyVertical =
    u"<body scroll=auto style='width:98%; margin:auto; margin-top:8px; line-height:1.5em; "
    u"font-size:16px; "
    u"font-family:ＭＳ ゴシック;'>";

std::u16string_view BodyOf(int pane) {
  switch (pane) {
    case 1:
    case 2:
      return kBodyTop;
    case 3:
      return kBodyNotes;
    case 4:
    case 5:
      return kBodySmall;
    default:
      return kBodySmallNarrow;
  }
}

std::u16string Styled(std::u16string_view head, std::u16string_view body) {
  std::u16string out(head);
  out += kHitStyle;
  out += kLinkStyle;
  out += body;
  return out;
}

}  // namespace

std::u16string HorizontalFrame(int pane) {
  return Styled(kDoctype, BodyOf(pane));
}

std::u16string VerticalFrame(double step) {
  std::u16string script(kDoctype);
  script += u"<script language='javascript'>function handle(delta){if (delta < 0)scrollBy(";
  script += text::NumberText(-step);
  script += u",0);else scrollBy(";
  script += text::NumberText(step);
  script += u",0);} function wheel(event)";
  script +=
      u"{var delta = 0;if (!event)event = window.event;if (event.wheelDelta)delta = "
      u"event.wheelDelta/120;if "
      u"(delta)handle(delta);";
  script += u"if (event.preventDefault)event.preventDefault();event.returnValue = false;}";
  script +=
      u"if (window.addEventListener) window.addEventListener('DOMMouseScroll', wheel, false);";
  script += u"window.onmousewheel = document.onmousewheel = wheel; </script>";
  return Styled(script, kBodyVertical);
}

std::u16string MeasuringFrame(double step) {
  return std::u16string(kCompatibilityTag) + VerticalFrame(step);
}

std::u16string ZoomText(double dpi) {
  return text::NumberText(dpi / 96 * 100) + u"%";
}

}  // namespace suizo::reader
