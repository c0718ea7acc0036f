#include "host/command.h"

#include <stdarg.h>
#include <stdio.h>

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

}  // namespace

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
