// The resources of a module, as the lint looks at them.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace kelvo::test {

// The numbers of a module's resources of one kind, ascending.
std::vector<UINT> ResourceIds(HMODULE module, const wchar_t* type);

// The bytes of a resource; empty when there is none.
std::string ResourceBytes(HMODULE module, UINT id, const wchar_t* type);

// All texts of the string tables by number, as they are stored, with their terminator.
std::map<UINT, std::wstring> StoredStrings(HMODULE module);

struct MenuItem {
  int depth;
  UINT command;  // kPopup, kSeparator or the command's number
  std::wstring text;

  static constexpr UINT kSeparator = 0;
  static constexpr UINT kPopup = 0xFFFFFFFF;
};
// The items of a menu, each popup followed by its own.
std::vector<MenuItem> MenuItems(HMODULE module, UINT id);

struct MenuBarButtonText {
  bool is_label;  // otherwise the tip of a button with an image
  UINT string;
};
// The texts that a menu bar's table asks for.
std::vector<MenuBarButtonText> MenuBarTexts(HMODULE module, UINT id);

}  // namespace kelvo::test
