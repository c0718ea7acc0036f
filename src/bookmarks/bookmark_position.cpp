#include "bookmarks/bookmark_store.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

// Like "%0*d": the width counts a sign. Returns the text's length.
size_t FormatPadded(wchar_t* dst, int32_t value, size_t width) noexcept {
  wchar_t plain[12];
  const size_t length = FormatDecimal(plain, value);
  const size_t sign = value < 0 ? 1 : 0;
  size_t written = CopyWide(dst, sign + 1, plain);
  for (size_t i = length; i < width; ++i) dst[written++] = L'0';
  return written + CopyWide(dst + written, length - sign + 1, plain + sign);
}

uint32_t ParseUnsigned(const wchar_t* text) noexcept {
  while (*text == L' ' || *text == L'\t') ++text;
  uint64_t value = 0;
  for (; *text >= L'0' && *text <= L'9'; ++text) {
    value = value * 10 + static_cast<uint32_t>(*text - L'0');
    if (value > UINT32_MAX) value = UINT32_MAX;
  }
  return static_cast<uint32_t>(value);
}

}  // namespace

void FormatListPosition(int32_t position_s, wchar_t (&text)[kPositionTextCapacity]) noexcept {
  size_t length = FormatPadded(text, position_s / 60, 1);
  text[length++] = L':';
  FormatPadded(text + length, position_s % 60, 2);
}

void FormatEditPosition(int32_t position_s, wchar_t (&minutes)[kPositionTextCapacity],
                        wchar_t (&seconds)[kPositionTextCapacity]) noexcept {
  FormatPadded(minutes, position_s / 60, 3);
  FormatPadded(seconds, position_s % 60, 2);
}

int32_t ParseEditPosition(const wchar_t* minutes, const wchar_t* seconds) noexcept {
  const uint64_t position = ParseUnsigned(seconds) + uint64_t{60} * ParseUnsigned(minutes);
  return position > INT32_MAX ? INT32_MAX : static_cast<int32_t>(position);
}

}  // namespace kelvo
