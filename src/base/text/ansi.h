// Conversion between UTF-16 and the system ANSI code page, whichever that is: one byte a character,
// two (a lead byte and a second one, which may look like an ASCII character), or UTF-8. Two
// implementations: base/windows/ansi.cpp and base/native/ansi.cpp.
#pragma once

#include <stddef.h>

namespace kelvo {

inline constexpr unsigned kUtf8CodePage = 65001;

// Converts with another code page than the system's from now on; 0 goes back to that. Native
// builds take 1252 for the system's and know 65001 and of 932 only which bytes belong together.
// For tests: not while other threads convert.
void UseAnsiCodePage(unsigned code_page) noexcept;

// Converts until the terminator, `chars` characters, or until the next character's bytes would not
// fit in `bytes` bytes. No terminator is written. Characters that the code page lacks become "?"
// and set *lossy (which is otherwise left alone; null is allowed), but for those that the system
// knows a similar one for. Returns the bytes written.
size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept;

// Converts until the terminator or `bytes` bytes, as much as fits in `capacity` - 1 characters, and
// terminates. Returns the characters written without the terminator.
size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept;

// How many of the bytes lie before or in the last backslash; 0 without one. A second byte of a
// character is no backslash.
size_t AnsiFolderLength(const char* path, size_t bytes) noexcept;

// UTF-8, whatever the code page is; native builds only. Whole characters as far as they fit in
// `capacity`; always terminated. Broken sequences become U+FFFD, and so do halves of a surrogate
// pair.
size_t WideToUtf8(const wchar_t* src, char* dst, size_t capacity) noexcept;
size_t Utf8ToUtf16(const char* src, wchar_t* dst, size_t capacity) noexcept;

}  // namespace kelvo
