#include "host/text.h"

#include <stdio.h>
#include <wchar.h>
#include <windows.h>

namespace velmora {

std::string ToUtf8(const std::wstring& text) {
  std::string utf8(text.size() * 3, '\0');
  const int bytes =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), utf8.data(),
                          static_cast<int>(utf8.size()), nullptr, nullptr);
  utf8.resize(static_cast<size_t>(bytes));
  return utf8;
}

std::wstring FromUtf8(const std::string& text) {
  std::wstring wide(text.size(), L'\0');
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         wide.data(), static_cast<int>(wide.size()));
  wide.resize(static_cast<size_t>(length));
  return wide;
}

MinutesSeconds::MinutesSeconds(int64_t milliseconds) {
  const int64_t seconds = milliseconds / 1000;
  _snwprintf(text, 24, L"%ld:%02d", static_cast<long>(seconds / 60),
             static_cast<int>(seconds % 60));
}

std::u16string Folded(std::wstring text) {
  CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
  return ToView(text);
}

}  // namespace velmora
