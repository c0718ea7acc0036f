#pragma once

#include <stddef.h>

namespace kelvo {

// Whole characters as far as they fit; always terminated. Broken sequences become U+FFFD, and so
// do halves of a surrogate pair.
size_t WideToUtf8(const wchar_t* src, char* dst, size_t capacity) noexcept;
size_t Utf8ToUtf16(const char* src, wchar_t* dst, size_t capacity) noexcept;

// One character at `src`: its 1 to 4 bytes, or its 1 or 2 units. *used is what it takes of the
// source, of which `length`, at least 1, are there.
size_t EncodeUtf8(const wchar_t* src, size_t length, char (&bytes)[4], size_t* used) noexcept;
size_t DecodeUtf8(const char* src, size_t length, wchar_t (&units)[2], size_t* used) noexcept;

}  // namespace kelvo
