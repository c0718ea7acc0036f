#include <locale.h>
#include <wctype.h>

#include "base/text/wide.h"

namespace kelvo {

// A locale of its own: the program's may be "C", which knows ASCII only.
wchar_t SystemUpperCase(wchar_t c) noexcept {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const wint_t upper = locale ? towupper_l(c, locale) : c;
  return upper <= 0xFFFF ? static_cast<wchar_t>(upper) : c;
}

// The rules of languages are the device's affair.
int CompareLabels(const wchar_t* a, const wchar_t* b) noexcept {
  return CompareNoCase(a, b);
}

}  // namespace kelvo
