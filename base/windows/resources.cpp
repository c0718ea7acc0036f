#include "base/windows/resources.h"

namespace kelvo {

const wchar_t* FindStringResource(HMODULE module, UINT id, size_t* length) noexcept {
  // Strings are stored in blocks of 16, each string a length and its characters.
  HRSRC found = FindResourceW(module, MAKEINTRESOURCEW((id >> 4) + 1), RT_STRING);
  if (!found) return nullptr;
  HGLOBAL loaded = LoadResource(module, found);
  const wchar_t* text = loaded ? static_cast<const wchar_t*>(LockResource(loaded)) : nullptr;
  if (!text) return nullptr;
  size_t left = SizeofResource(module, found) / sizeof(wchar_t);
  for (UINT skip = id & 15; skip > 0; --skip) {
    if (left == 0) return nullptr;
    const size_t units = 1 + static_cast<size_t>(*text);
    if (units > left) return nullptr;
    text += units;
    left -= units;
  }
  if (left == 0) return nullptr;
  const size_t units = *text++;
  if (units == 0 || units > left - 1 || text[units - 1] != 0) return nullptr;
  size_t end = 0;
  while (text[end] != 0) ++end;
  if (length) *length = end;
  return text;
}

bool HasResource(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept {
  return FindResourceW(module, name, type) != nullptr;
}

}  // namespace kelvo
