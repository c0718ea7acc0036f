#include "base/text/ansi.h"

#include <windows.h>

namespace kelvo {

// One character at a time, so that a destination that is too small holds whole characters.
size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept {
  size_t written = 0;
  for (size_t i = 0; i < chars && src[i] != 0; ++i) {
    if (src[i] < 0x80) {  // the same in every code page
      if (written == bytes) break;
      dst[written++] = static_cast<char>(src[i]);
      continue;
    }
    char encoded[8];
    BOOL used_default = FALSE;
    const bool pair = IS_HIGH_SURROGATE(src[i]) && i + 1 < chars && IS_LOW_SURROGATE(src[i + 1]);
    int length = WideCharToMultiByte(CP_ACP, 0, src + i, pair ? 2 : 1, encoded, sizeof(encoded),
                                     "?", &used_default);
    if (length <= 0) {
      encoded[0] = '?';
      length = 1;
      used_default = TRUE;
    }
    if (static_cast<size_t>(length) > bytes - written) break;
    for (int k = 0; k < length; ++k) dst[written++] = encoded[k];
    if (used_default && lossy) *lossy = true;
    if (pair) ++i;
  }
  return written;
}

size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept {
  size_t written = 0;
  size_t i = 0;
  while (i < bytes && src[i] != 0) {
    if (static_cast<unsigned char>(src[i]) < 0x80) {
      if (written + 1 >= capacity) break;
      dst[written++] = static_cast<wchar_t>(src[i++]);
      continue;
    }
    const bool two = IsDBCSLeadByte(static_cast<BYTE>(src[i])) && i + 1 < bytes && src[i + 1] != 0;
    const int length = two ? 2 : 1;
    wchar_t decoded[4];
    int count = MultiByteToWideChar(CP_ACP, 0, src + i, length, decoded, 4);
    if (count <= 0) {
      decoded[0] = L'?';
      count = 1;
    }
    if (static_cast<size_t>(count) > capacity - 1 - written) break;
    for (int k = 0; k < count; ++k) dst[written++] = decoded[k];
    i += static_cast<size_t>(length);
  }
  dst[written] = 0;
  return written;
}

}  // namespace kelvo
