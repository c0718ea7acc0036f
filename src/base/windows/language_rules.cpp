#include <windows.h>

#include "base/text/wide.h"

namespace kelvo {

// A pointer without a high word is a single character.
wchar_t SystemUpperCase(wchar_t c) noexcept {
  const LPWSTR upper = CharUpperW(reinterpret_cast<LPWSTR>(static_cast<uintptr_t>(c)));
  return static_cast<wchar_t>(reinterpret_cast<uintptr_t>(upper));
}

int CompareLabels(const wchar_t* a, const wchar_t* b) noexcept {
  return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a, -1, b, -1) - CSTR_EQUAL;
}

}  // namespace kelvo
