// Conversion between UTF-16 and the system ANSI code page (native builds: Windows-1252). Two
// implementations: base/windows/ansi.cpp and base/native/ansi.cpp.
#pragma once

#include <stddef.h>

namespace kelvo {

// Converts until the terminator, `chars` characters, or until the next character's bytes would not
// fit in `bytes` bytes. No terminator is written. Characters that the code page lacks become "?"
// and set *lossy (which is otherwise left alone; null is allowed). Returns the bytes written.
size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept;

// Converts until the terminator or `bytes` bytes, as much as fits in `capacity` - 1 characters, and
// terminates. Returns the characters written without the terminator.
size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept;

}  // namespace kelvo
