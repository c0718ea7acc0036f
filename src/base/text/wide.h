// UTF-16 text. wchar_t has 16 bits in every build (native builds compile with -fshort-wchar), so
// the C library's own wide functions are not to be called from portable code: use these.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo {

static_assert(sizeof(wchar_t) == 2, "build with -fshort-wchar");

// User-visible texts, paths and file names hold at most 259 characters and a terminator.
inline constexpr size_t kTextCapacity = 260;

size_t WideLength(const wchar_t* text) noexcept;

// Copies as much as fits (`capacity` counts the terminator and is at least 1), always terminates,
// and returns the number of characters copied.
size_t CopyWide(wchar_t* dst, size_t capacity, const wchar_t* src) noexcept;
// The same, of at most `length` source characters.
size_t CopyWide(wchar_t* dst, size_t capacity, const wchar_t* src, size_t length) noexcept;

// Appends what fits; false when something was cut off.
[[nodiscard]] bool AppendWide(wchar_t* dst, size_t capacity, const wchar_t* src) noexcept;

// Position of the last `c`, or null.
const wchar_t* FindLastWide(const wchar_t* text, wchar_t c) noexcept;
const wchar_t* FindWide(const wchar_t* text, wchar_t c) noexcept;

// The part of a path after its last backslash; the whole path when it has none.
const wchar_t* FileNameOf(const wchar_t* path) noexcept;

// User-visible text and paths: without regard to case as the system sees it, in every script.
// Characters that count as the same have the same fold; A-Z become a-z, so "_" sorts before
// letters.
wchar_t FoldCase(wchar_t c) noexcept;
// What FoldCase() asks beyond ASCII; base/windows/language_rules.cpp, and base/native/.
wchar_t SystemUpperCase(wchar_t c) noexcept;
// Negative, 0 or positive; characters compare as unsigned numbers after folding.
int CompareNoCase(const wchar_t* a, const wchar_t* b) noexcept;
bool EqualNoCase(const wchar_t* a, const wchar_t* b) noexcept;
// At most `length` characters of both.
bool EqualNoCase(const wchar_t* a, const wchar_t* b, size_t length) noexcept;

// As the system's controls sort labels: by the rules of the user's language, without regard to
// case.
int CompareLabels(const wchar_t* a, const wchar_t* b) noexcept;

// Keys of file formats, extensions, 8-bit text: only A-Z and a-z are the same.
constexpr wchar_t FoldAscii(wchar_t c) noexcept {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}
constexpr char FoldAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool EqualAsciiNoCase(const wchar_t* a, const wchar_t* b) noexcept;
bool EqualAsciiNoCase(const char* a, const char* b) noexcept;
bool EqualAsciiNoCase(const wchar_t* a, const wchar_t* b, size_t length) noexcept;
bool EqualAsciiNoCase(const char* a, const char* b, size_t length) noexcept;

// With regard to case.
int CompareWide(const wchar_t* a, const wchar_t* b) noexcept;

// Blanks, an optional sign and leading digits, as the C library's conversion; 0 without digits.
// A number beyond 32 bits saturates.
int32_t ParseDecimal(const wchar_t* text) noexcept;
int32_t ParseDecimal(const char* text) noexcept;

// Decimal form of `value` into `dst` (12 characters suffice); returns its length.
size_t FormatDecimal(wchar_t (&dst)[12], int32_t value) noexcept;
size_t FormatDecimal(char (&dst)[12], int32_t value) noexcept;

}  // namespace kelvo
