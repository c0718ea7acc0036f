#include "tools/kelvotool/console.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo::tool {

void Print(Stream stream, const char* ascii) noexcept {
  PrintBytes(stream, ascii, strlen(ascii));
}

void Print(Stream stream, const wchar_t* text) noexcept {
  // In pieces; a surrogate pair stays in one.
  size_t length = WideLength(text);
  while (length > 0) {
    wchar_t piece[201];
    size_t count = CopyWide(piece, 201, text);
    if (count == 200 && piece[199] >= 0xD800 && piece[199] < 0xDC00) piece[--count] = 0;
    char bytes[201 * 3];
    PrintBytes(stream, bytes, EncodeUtf8(piece, bytes, sizeof(bytes)));
    text += count;
    length -= count;
  }
}

void PrintAnsi(Stream stream, const char* text, size_t length) noexcept {
  wchar_t wide[kTextCapacity];
  AnsiToWide(text, length, wide, kTextCapacity);
  Print(stream, wide);
}

void PrintNumber(Stream stream, int number) noexcept {
  char digits[12];
  FormatDecimal(digits, number);
  Print(stream, digits);
}

void PrintError(const wchar_t* path, const char* what) noexcept {
  Print(Stream::kError, "kelvotool: ");
  Print(Stream::kError, path);
  Print(Stream::kError, ": ");
  Print(Stream::kError, what);
  Print(Stream::kError, "\n");
}

void Progress::Count() noexcept {
  constexpr int kOften = 256;
  if (++count_ % kOften != 0 || !ErrorsAreWatched()) return;
  shown_ = true;
  Print(Stream::kError, "\r");
  Print(Stream::kError, what_);
  Print(Stream::kError, ": ");
  PrintNumber(Stream::kError, count_);
}

Progress::~Progress() {
  if (shown_) Print(Stream::kError, "\r\x1B[K");
}

}  // namespace kelvo::tool
