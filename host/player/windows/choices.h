// Menus, and dialogs that the player opens.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/player/skin/geometry.h"
#include "host/player/track_list.h"

namespace velmora {

// A menu under construction.
class Menu {
 public:
  Menu() : menu_(CreatePopupMenu()) {}
  ~Menu() {
    if (menu_) DestroyMenu(menu_);
  }
  Menu(Menu&& other) noexcept : menu_(other.menu_) { other.menu_ = nullptr; }
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  // An item's text may end in a tab and its shortcut.
  Menu& Item(const std::wstring& text, int command, bool checked = false, bool enabled = true);
  Menu& Submenu(const std::wstring& text, Menu sub);
  Menu& Separator();

  // Shows the menu at a point of the screen and sends the window what the user chose.
  void Track(HWND window, Point at) const;

 private:
  HMENU menu_;
};

// A name as an item's text: what has a meaning in menus is shown as it is.
std::wstring AsMenuText(const std::wstring& name);

// In the middle of its parent, as far as the screen has room.
void PlaceOver(HWND dialog, HWND parent);
// A message box over its parent, not in the middle of the screen; returns its answer.
int ShowMessage(HWND parent, const std::wstring& text, const std::wstring& caption, UINT flags);

// Empty when the user declines.
std::vector<std::wstring> AskForMedia(HWND parent);
std::wstring AskForSkin(HWND parent);
std::wstring AskForFolder(HWND parent, const std::wstring& question);
std::wstring AskWhereToSaveList(HWND parent);

// Lets the user look for a track by words of its title or its file's name; the list shows what has
// them all. `current` is shown first. kNoTrack when the user declines.
size_t AskForTrack(HWND parent, const std::vector<Track>& tracks, size_t current);

// What a file says about itself, in texts that can be copied.
void ShowInfo(HWND parent, const Library& library, const std::wstring& path);

}  // namespace velmora
