#include "faults.h"

#include <windows.h>

#include <stdint.h>

#include "engine.h"
#include "fail.h"
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

FaultWatch::FaultWatch() : handler_(AddVectoredExceptionHandler(1, &OnFault)) {}

FaultWatch::~FaultWatch() {
  RemoveVectoredExceptionHandler(handler_);
}

}  // namespace bridge
