// What a module brings: texts, icons, other bytes. And what lists and trees look like: their icons
// and their font.
#pragma once

#include <stddef.h>
#include <windows.h>

#include <commctrl.h>

#include "base/windows/unique_handle.h"

namespace kelvo {

// The text of a string resource, in place: read-only, NUL-terminated, valid while the module is
// loaded. Null when the module has no such string, or stores it without the terminator that makes
// it usable in place. The desktop's own call for this hands out unterminated text, so the string
// table is read directly. *length, which may be null, excludes the terminator.
const wchar_t* FindStringResource(HMODULE module, UINT id, size_t* length) noexcept;

// Copies a string resource, with or without terminator in its module, up to what fits (`capacity`
// counts the terminator and is at least 1); always terminates. The number of characters copied, 0
// when the module has no such string.
size_t CopyStringResource(HMODULE module, UINT id, wchar_t* buffer, size_t capacity) noexcept;

// The bytes of any other resource, in place. Null and *bytes 0 when the module has none, or says
// that it lies where nothing can be read.
const void* FindResourceBytes(HMODULE module, const wchar_t* name, const wchar_t* type,
                              size_t* bytes) noexcept;

bool HasResource(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept;

struct IconListTraits {
  using Raw = HIMAGELIST;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { ImageList_Destroy(raw); }
};
using UniqueIconList = UniqueHandle<IconListTraits>;

// A masked list of 16 by 16 pixels with the icons of a module, in this order; null when one of them
// cannot be loaded.
UniqueIconList LoadIconList(HMODULE module, const int* ids, int count) noexcept;

// Tahoma, 12 pixels high, of normal weight.
UniqueFont MakeListFont() noexcept;

}  // namespace kelvo
