#include "core/text/normal_forms.h"

namespace suizo::text {

void Normalize(std::span<char16_t> text, NormalForm form) {
  for (char16_t& c : text) {
    switch (c) {
      case u'（':
        c = u'(';
        break;
      case u'）':
        c = u')';
        break;
      case u'・':
        if (form == NormalForm::A) c = u'･';
        break;
      case u'｢':
        c = u'「';
        break;
      case u'｣':
        c = u'」';
        break;
      case u'｡':
        c = u'。';
        break;
      case u'､':
        c = u'、';
        break;
      default:
        break;
    }
  }
}

std::u16string NormA(std::u16string_view text) {
  std::u16string out(text);
  Normalize(out, NormalForm::A);
  return out;
}

std::u16string NormB(std::u16string_view text) {
  std::u16string out(text);
  Normalize(out, NormalForm::B);
  return out;
}

}  // namespace suizo::text
