// Menu bars: popup windows with a toolbar in them, owned by a frame and lying right under it.
// Several may belong to one frame, such as one for each page of a sheet: the one shown last whose
// own window is visible is the one to be seen. UI thread only.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "base/windows/unique_handle.h"
#include "pocketpc/aygshell/menu_bar_table.h"

namespace kelvo {

struct MenuTraits {
  using Raw = HMENU;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { DestroyMenu(raw); }
};
using UniqueMenu = UniqueHandle<MenuTraits>;

struct ImageListTraits {
  using Raw = HIMAGELIST;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { ImageList_Destroy(raw); }
};
using UniqueImageList = UniqueHandle<ImageListTraits>;

// What a bar shows, loaded from resources.
struct MenuBarContent {
  HINSTANCE module = nullptr;  // of the strings; borrowed, outlives the bar
  MenuBarTable table;
  UniqueMenu menu;  // holds the popups that the table names
  UniqueImageList images;
};

// Null when a window or memory is not to be had. The bar ends with `parent`, which gets the
// commands, or with its frame, the parent's top-level window.
HWND CreateMenuBarWindow(HWND parent, bool hidden, MenuBarContent content) noexcept;

// A bar without buttons that is seen while the frame has no other: the bar of the window below,
// which cannot be used now, is not to be seen. FindMenuBarOf does not find it.
void CreateBlankBar(HWND root) noexcept;

HWND FindMenuBarOf(HWND parent) noexcept;  // the newest, or null

// Puts the frame's bars in their place and shows the right one. False when there is none.
bool SettleMenuBars(HWND root) noexcept;

// For the keyboard: the buttons of the bar that is seen, as a menu. False when it has none.
bool OpenMenuBarAsMenu(HWND root) noexcept;

void EnableMenuBars(HWND root, bool enable) noexcept;

void UnregisterMenuBarClass() noexcept;

// The toolbar inside a menu bar.

HFONT MakeToolbarFont() noexcept;

// Borrows the images and the font. Null when there is no window or no button to be had.
HWND CreateToolbar(HWND bar, const MenuBarContent& content, HFONT font) noexcept;

// Inside the bar's edges.
void PlaceToolbar(HWND toolbar) noexcept;

HINSTANCE ThisModule() noexcept;  // the module that this code is linked into

}  // namespace kelvo
