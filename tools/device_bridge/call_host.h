// Calls from the device's code to functions of this machine.
#pragma once

#include <stdint.h>

namespace bridge {

// More than any function takes: the callee reads those that it knows of.
constexpr uint32_t kHostWords = 17;

// Puts 16 words on the stack, `object` where a member function expects it, and calls; whether the
// callee or the caller removes the words makes no difference. Both results: edx:eax.
extern "C" uint64_t CallHost(uint32_t function, const uint32_t* words, uint32_t object);

}  // namespace bridge
