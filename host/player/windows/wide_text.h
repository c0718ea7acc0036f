// The views take UTF-16 as char16_t, the system as wchar_t.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

inline std::u16string ToView(std::wstring_view text) {
  return std::u16string(text.begin(), text.end());
}

}  // namespace velmora
