#include "faults.h"

#include <windows.h>

#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>

#include "engine.h"
#include "library.h"

namespace bridge {
namespace {

// True for memory that is no module's: translated code.
bool IsTranslated(uint32_t address) {
  MEMORY_BASIC_INFORMATION memory = {};
  VirtualQuery(reinterpret_cast<void*>(address), &memory, sizeof(memory));
  return memory.Type == MEM_PRIVATE;
}

LONG CALLBACK OnFault(EXCEPTION_POINTERS* fault) {
  const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
  if (!g_library) return EXCEPTION_CONTINUE_SEARCH;
  const uint32_t at = reinterpret_cast<uint32_t>(record.ExceptionAddress);
  if (g_library->image.Contains(at)) {
    Fail("this machine's code calls the device's function at %#x, which has no stub",
         at - g_library->image.base());
  }
  if (record.ExceptionCode == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) && IsTranslated(at)) {
    char place[64];
    CurrentEngine().DescribePlace(place, sizeof(place));
    Fail("no access to %#x, near %s", static_cast<unsigned>(record.ExceptionInformation[1]), place);
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

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

FaultWatch::FaultWatch() : handler_(AddVectoredExceptionHandler(1, &OnFault)) {}

FaultWatch::~FaultWatch() {
  RemoveVectoredExceptionHandler(handler_);
}

}  // namespace bridge
