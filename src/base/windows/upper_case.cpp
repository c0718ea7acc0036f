#include <windows.h>

#include "base/text/wide.h"

namespace kelvo {

// A pointer without a high word is a single character.
wchar_t SystemUpperCase(wchar_t c) noexcept {
  const LPWSTR upper = CharUpperW(reinterpret_cast<LPWSTR>(static_cast<uintptr_t>(c)));
  return static_cast<wchar_t>(reinterpret_cast<uintptr_t>(upper));
}

}  // namespace kelvo
