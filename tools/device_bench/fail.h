// A fault of the emulated program, or of this one: says what, and ends the run.
#pragma once

namespace bench {

[[noreturn]] [[gnu::format(printf, 1, 2)]] void Fail(const char* format, ...);

}  // namespace bench
