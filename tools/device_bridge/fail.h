// The end of a run: what the device would not have done, or would have done otherwise.
#pragma once

namespace bridge {

// Writes "device bridge: " and the text on stderr and ends the process, with exit code 99.
[[noreturn]] void Fail(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace bridge
