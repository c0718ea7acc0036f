#include "host/command.h"

#include <stdarg.h>
#include <stdio.h>

#include <algorithm>
#include <string>

#include "host/text.h"

namespace velmora {
namespace {

void Write(DWORD which, const wchar_t* format, va_list arguments) {
  wchar_t text[2048];
  const int length = _vsnwprintf(text, 2047, format, arguments);
  const DWORD count = length < 0 ? 2047 : static_cast<DWORD>(length);
  const HANDLE out = GetStdHandle(which);
  DWORD written;
  if (WriteConsoleW(out, text, count, &written, nullptr)) return;
  const std::string utf8 = ToUtf8(std::wstring(text, count));
  WriteFile(out, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
}

BOOL WINAPI OnControl(DWORD) {
  SetEvent(InterruptEvent());
  return TRUE;
}

// How many letters are to be changed, added or taken out to make one word of the other.
size_t Distance(const std::wstring& a, const std::wstring& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0]++;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = diagonal + (a[i - 1] != b[j - 1]);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

}  // namespace

std::wstring DidYouMean(const std::wstring& word, const std::vector<std::wstring>& names) {
  const auto farther = [&](const std::wstring& a, const std::wstring& b) {
    return Distance(word, a) < Distance(word, b);
  };
  const auto nearest = std::min_element(names.begin(), names.end(), farther);
  if (nearest == names.end() || Distance(word, *nearest) > nearest->size() / 2) return L"";
  return L"; did you mean " + *nearest + L"?";
}

void Print(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Write(STD_OUTPUT_HANDLE, format, arguments);
  va_end(arguments);
}

void PrintError(const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Write(STD_ERROR_HANDLE, format, arguments);
  va_end(arguments);
}

HANDLE InterruptEvent() {
  static HANDLE event = nullptr;
  if (!event) {
    event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(OnControl, TRUE);
  }
  return event;
}

bool Interrupted() {
  return WaitForSingleObject(InterruptEvent(), 0) == WAIT_OBJECT_0;
}

}  // namespace velmora
