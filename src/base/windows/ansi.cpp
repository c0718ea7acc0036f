#include "base/text/ansi.h"

#include <windows.h>

namespace kelvo {
namespace {

UINT chosen_code_page = CP_ACP;

// The number behind CP_ACP: UTF-8 has rules of its own.
UINT CodePage() noexcept {
  return chosen_code_page == CP_ACP ? GetACP() : chosen_code_page;
}

bool IsLeadByte(UINT code_page, char byte) noexcept {
  CPINFO info;
  if (!GetCPInfo(code_page, &info)) return false;
  const BYTE value = static_cast<BYTE>(byte);
  for (const BYTE* range = info.LeadByte; range[0] != 0; range += 2) {
    if (value >= range[0] && value <= range[1]) return true;
  }
  return false;
}

// The bytes of the character at `src`, whose first is beyond ASCII; of a broken one those that
// belong together. `bytes` is at least 1.
size_t CharacterLength(UINT code_page, const char* src, size_t bytes) noexcept {
  const BYTE first = static_cast<BYTE>(*src);
  if (code_page != kUtf8CodePage) {
    return bytes > 1 && src[1] != 0 && IsLeadByte(code_page, *src) ? 2 : 1;
  }
  const size_t want = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  size_t length = 1;
  while (length < want && length < bytes && (src[length] & 0xC0) == 0x80) ++length;
  return length;
}

// Returns the bytes of one character, or of a surrogate pair; 0 when the code page lacks it.
int Encode(UINT code_page, const wchar_t* src, int units, char (&encoded)[8]) noexcept {
  if (code_page == kUtf8CodePage) {
    // It has every character but half a pair, and the call refuses to be asked about losses.
    if (units == 1 && src[0] >= 0xD800 && src[0] < 0xE000) return 0;
    return WideCharToMultiByte(code_page, 0, src, units, encoded, sizeof(encoded), nullptr,
                               nullptr);
  }
  BOOL used_default = FALSE;
  const int length =
      WideCharToMultiByte(code_page, 0, src, units, encoded, sizeof(encoded), "?", &used_default);
  return used_default ? 0 : length;
}

}  // namespace

void UseAnsiCodePage(unsigned code_page) noexcept {
  chosen_code_page = code_page;
}

// One character at a time, so that a destination that is too small holds whole characters.
size_t WideToAnsi(const wchar_t* src, size_t chars, char* dst, size_t bytes, bool* lossy) noexcept {
  const UINT code_page = CodePage();
  size_t written = 0;
  for (size_t i = 0; i < chars && src[i] != 0; ++i) {
    if (src[i] < 0x80) {  // the same in every code page
      if (written == bytes) break;
      dst[written++] = static_cast<char>(src[i]);
      continue;
    }
    char encoded[8];
    const bool pair = IS_HIGH_SURROGATE(src[i]) && i + 1 < chars && IS_LOW_SURROGATE(src[i + 1]);
    int length = Encode(code_page, src + i, pair ? 2 : 1, encoded);
    if (length <= 0) {
      encoded[0] = '?';
      length = 1;
      if (lossy) *lossy = true;
    }
    if (static_cast<size_t>(length) > bytes - written) break;
    for (int k = 0; k < length; ++k) dst[written++] = encoded[k];
    if (pair) ++i;
  }
  return written;
}

size_t AnsiToWide(const char* src, size_t bytes, wchar_t* dst, size_t capacity) noexcept {
  const UINT code_page = CodePage();
  size_t written = 0;
  size_t i = 0;
  while (i < bytes && src[i] != 0) {
    if (static_cast<unsigned char>(src[i]) < 0x80) {
      if (written + 1 >= capacity) break;
      dst[written++] = static_cast<wchar_t>(src[i++]);
      continue;
    }
    const size_t length = CharacterLength(code_page, src + i, bytes - i);
    wchar_t decoded[4];
    int count = MultiByteToWideChar(code_page, 0, src + i, static_cast<int>(length), decoded, 4);
    if (count <= 0) {
      decoded[0] = L'?';
      count = 1;
    }
    if (static_cast<size_t>(count) > capacity - 1 - written) break;
    for (int k = 0; k < count; ++k) dst[written++] = decoded[k];
    i += length;
  }
  dst[written] = 0;
  return written;
}

size_t AnsiFolderLength(const char* path, size_t bytes) noexcept {
  const UINT code_page = CodePage();
  size_t length = 0;
  for (size_t i = 0; i < bytes;) {
    if (path[i] == '\\') length = i + 1;
    i += static_cast<unsigned char>(path[i]) < 0x80
             ? 1
             : CharacterLength(code_page, path + i, bytes - i);
  }
  return length;
}

}  // namespace kelvo
