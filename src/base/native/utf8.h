#pragma once

#include <stddef.h>

namespace kelvo {

// Whole characters as far as they fit; always terminated.
size_t WideToUtf8(const wchar_t* src, char* dst, size_t capacity) noexcept;
size_t Utf8ToUtf16(const char* src, wchar_t* dst, size_t capacity) noexcept;

}  // namespace kelvo
