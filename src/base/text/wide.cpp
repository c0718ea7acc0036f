#include "base/text/wide.h"

#include <string.h>

namespace kelvo {
namespace {

template <class C>
bool EqualAscii(const C* a, const C* b, size_t length) noexcept {
  for (size_t i = 0; i < length; ++i) {
    if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
    if (a[i] == 0) return true;
  }
  return true;
}

template <class C>
int32_t Parse(const C* text) noexcept {
  while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  const int64_t limit = negative ? int64_t{1} << 31 : INT32_MAX;
  int64_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 + (*text - '0');
    if (value > limit) value = limit;
  }
  return static_cast<int32_t>(negative ? -value : value);
}

template <class C>
size_t Format(C (&dst)[12], int32_t value) noexcept {
  C digits[10];
  size_t count = 0;
  uint32_t magnitude = value < 0 ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  do {
    digits[count++] = static_cast<C>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  size_t length = 0;
  if (value < 0) dst[length++] = '-';
  while (count > 0) dst[length++] = digits[--count];
  dst[length] = 0;
  return length;
}

constexpr size_t kUnlimited = static_cast<size_t>(-1);

}  // namespace

size_t WideLength(const wchar_t* text) noexcept {
  size_t length = 0;
  while (text[length] != 0) ++length;
  return length;
}

size_t CopyWide(wchar_t* dst, size_t capacity, const wchar_t* src) noexcept {
  return CopyWide(dst, capacity, src, kUnlimited);
}

size_t CopyWide(wchar_t* dst, size_t capacity, const wchar_t* src, size_t length) noexcept {
  size_t copied = 0;
  while (copied + 1 < capacity && copied < length && src[copied] != 0) {
    dst[copied] = src[copied];
    ++copied;
  }
  dst[copied] = 0;
  return copied;
}

bool AppendWide(wchar_t* dst, size_t capacity, const wchar_t* src) noexcept {
  const size_t used = WideLength(dst);
  const size_t copied = CopyWide(dst + used, capacity - used, src);
  return src[copied] == 0;
}

const wchar_t* FindLastWide(const wchar_t* text, wchar_t c) noexcept {
  const wchar_t* found = nullptr;
  for (; *text != 0; ++text) {
    if (*text == c) found = text;
  }
  return found;
}

const wchar_t* FindWide(const wchar_t* text, wchar_t c) noexcept {
  for (; *text != 0; ++text) {
    if (*text == c) return text;
  }
  return nullptr;
}

const wchar_t* FileNameOf(const wchar_t* path) noexcept {
  const wchar_t* slash = FindLastWide(path, L'\\');
  return slash ? slash + 1 : path;
}

wchar_t FoldCase(wchar_t c) noexcept {
  return FoldAscii(c < 0x80 ? c : SystemUpperCase(c));
}

int CompareNoCase(const wchar_t* a, const wchar_t* b) noexcept {
  for (;; ++a, ++b) {
    const wchar_t folded_a = FoldCase(*a);
    const wchar_t folded_b = FoldCase(*b);
    if (folded_a != folded_b) return folded_a < folded_b ? -1 : 1;
    if (folded_a == 0) return 0;
  }
}

bool EqualNoCase(const wchar_t* a, const wchar_t* b) noexcept {
  return CompareNoCase(a, b) == 0;
}

bool EqualNoCase(const wchar_t* a, const wchar_t* b, size_t length) noexcept {
  for (size_t i = 0; i < length; ++i) {
    if (FoldCase(a[i]) != FoldCase(b[i])) return false;
    if (a[i] == 0) return true;
  }
  return true;
}

bool EqualAsciiNoCase(const wchar_t* a, const wchar_t* b) noexcept {
  return EqualAscii(a, b, kUnlimited);
}
bool EqualAsciiNoCase(const char* a, const char* b) noexcept {
  return EqualAscii(a, b, kUnlimited);
}
bool EqualAsciiNoCase(const wchar_t* a, const wchar_t* b, size_t length) noexcept {
  return EqualAscii(a, b, length);
}
bool EqualAsciiNoCase(const char* a, const char* b, size_t length) noexcept {
  return EqualAscii(a, b, length);
}

int CompareWide(const wchar_t* a, const wchar_t* b) noexcept {
  while (*a != 0 && *a == *b) ++a, ++b;
  return *a == *b ? 0 : *a < *b ? -1 : 1;
}

int32_t ParseDecimal(const wchar_t* text) noexcept {
  return Parse(text);
}
int32_t ParseDecimal(const char* text) noexcept {
  return Parse(text);
}
size_t FormatDecimal(wchar_t (&dst)[12], int32_t value) noexcept {
  return Format(dst, value);
}
size_t FormatDecimal(char (&dst)[12], int32_t value) noexcept {
  return Format(dst, value);
}

}  // namespace kelvo
