#include "base/windows/resources.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

// A string as it is stored: `units` characters, perhaps the terminator among them. Null when the
// module has none.
const wchar_t* FindStored(HMODULE module, UINT id, size_t* units) noexcept {
  // Strings are stored in blocks of 16, each string a length and its characters.
  size_t bytes = 0;
  const wchar_t* text = static_cast<const wchar_t*>(
      FindResourceBytes(module, MAKEINTRESOURCEW((id >> 4) + 1), RT_STRING, &bytes));
  size_t left = bytes / sizeof(wchar_t);
  for (UINT skip = id & 15; skip > 0; --skip) {
    if (left == 0) return nullptr;
    const size_t stored = 1 + static_cast<size_t>(*text);
    if (stored > left) return nullptr;
    text += stored;
    left -= stored;
  }
  if (left == 0) return nullptr;
  *units = *text++;
  return *units == 0 || *units > left - 1 ? nullptr : text;
}

}  // namespace

const wchar_t* FindStringResource(HMODULE module, UINT id, size_t* length) noexcept {
  size_t units = 0;
  const wchar_t* text = FindStored(module, id, &units);
  if (!text || text[units - 1] != 0) return nullptr;
  size_t end = 0;
  while (text[end] != 0) ++end;
  if (length) *length = end;
  return text;
}

size_t CopyStringResource(HMODULE module, UINT id, wchar_t* buffer, size_t capacity) noexcept {
  size_t units = 0;
  const wchar_t* text = FindStored(module, id, &units);
  buffer[0] = 0;
  return text ? CopyWide(buffer, capacity, text, units) : 0;
}

const void* FindResourceBytes(HMODULE module, const wchar_t* name, const wchar_t* type,
                              size_t* bytes) noexcept {
  *bytes = 0;
  const HRSRC found = FindResourceW(module, name, type);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  const void* data = loaded ? LockResource(loaded) : nullptr;
  const size_t size = data ? SizeofResource(module, found) : 0;
  // The module's tables say where, and may say anything.
  if (!data || IsBadReadPtr(data, size)) return nullptr;
  *bytes = size;
  return data;
}

bool HasResource(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept {
  size_t bytes = 0;
  return FindResourceBytes(module, name, type, &bytes) != nullptr;
}

UniqueIconList LoadIconList(HMODULE module, const int* ids, int count) noexcept {
  constexpr int kSide = 16;
  // The default depth is 16 colours.
  UniqueIconList list(ImageList_Create(kSide, kSide, ILC_COLORDDB | ILC_MASK, count, 0));
  for (int i = 0; list && i < count; ++i) {
    const HICON icon = static_cast<HICON>(
        LoadImageW(module, MAKEINTRESOURCEW(ids[i]), IMAGE_ICON, kSide, kSide, 0));
    const bool added = icon && ImageList_ReplaceIcon(list.get(), -1, icon) == i;
    if (icon) DestroyIcon(icon);
    if (!added) list.Reset();
  }
  return list;
}

UniqueFont MakeListFont() noexcept {
  LOGFONTW font = {};
  font.lfHeight = 12;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  CopyWide(font.lfFaceName, LF_FACESIZE, L"Tahoma");
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace kelvo
