// What lists and trees look like: their icons and their font.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "base/windows/unique_handle.h"

namespace kelvo {

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
