// Text as it is shown, stored and drawn.
#pragma once

#include <limits.h>
#include <stdint.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace velmora {

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);

// "3:07"
struct MinutesSeconds {
  wchar_t text[24];
  explicit MinutesSeconds(int64_t milliseconds);
};

// Of a place in a file; bookmarks may hold any number.
inline uint32_t ToMilliseconds(int seconds) {
  return static_cast<uint32_t>(std::clamp(seconds, 0, INT_MAX / 1000)) * 1000;
}

inline std::u16string ToView(std::wstring_view text) {
  return std::u16string(text.begin(), text.end());
}

// All letters small, as the system does it: for comparing without regard to case.
std::u16string Folded(std::wstring text);

}  // namespace velmora
