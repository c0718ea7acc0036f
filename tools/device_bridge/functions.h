// What find_functions.py writes about one device library (see there), sorted.
#pragma once

#include <stdint.h>

namespace bridge {

// How this machine's compilers pass arguments. kThis: the object in a register, the rest on the
// stack.
enum class Convention : uint8_t { kStandard, kThis, kC };

// A function of the library that code of this machine may call.
struct Function {
  uint32_t rva;
  uint8_t words;  // of arguments on the stack
  Convention convention;
};
extern const Function kFunctions[];
extern const int kFunctionCount;

// Names of all functions that the device's own libraries offer.
extern const char* const kDeviceHas[];
extern const int kDeviceHasCount;

}  // namespace bridge
