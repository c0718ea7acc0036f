#include "fail.h"

#include <windows.h>

#include <stdarg.h>
#include <stdio.h>

namespace bridge {

void Fail(const char* format, ...) {
  char text[512] = "device bridge: ";
  constexpr int kPrefix = 15, kRoom = sizeof(text) - kPrefix - 1;
  va_list arguments;
  va_start(arguments, format);
  int length = vsnprintf(text + kPrefix, kRoom, format, arguments);
  va_end(arguments);
  length = kPrefix + (length < kRoom ? length : kRoom - 1);
  text[length++] = '\n';
  DWORD written;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(length), &written, nullptr);
  // No handler of the program's shall run on: its state is not what the device's would be.
  TerminateProcess(GetCurrentProcess(), 99);
  for (;;) Sleep(INFINITE);
}

}  // namespace bridge
