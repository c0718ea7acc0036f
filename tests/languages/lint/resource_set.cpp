#include "tests/languages/lint/resource_set.h"

#include <algorithm>
#include <cstring>

namespace kelvo::test {
namespace {

BOOL CALLBACK AddId(HMODULE, const wchar_t*, wchar_t* name, LONG_PTR ids) {
  if (IS_INTRESOURCE(name)) {
    reinterpret_cast<std::vector<UINT>*>(ids)->push_back(
        static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name)));
  }
  return TRUE;
}

void AddItems(HMENU menu, int depth, std::vector<MenuItem>* items) {
  for (int i = 0, count = GetMenuItemCount(menu); i < count; ++i) {
    wchar_t text[256] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
    if (const HMENU popup = GetSubMenu(menu, i)) {
      items->push_back({depth, MenuItem::kPopup, text});
      AddItems(popup, depth + 1, items);
    } else {
      items->push_back({depth, GetMenuItemID(menu, i), text});
    }
  }
}

}  // namespace

std::vector<UINT> ResourceIds(HMODULE module, const wchar_t* type) {
  std::vector<UINT> ids;
  EnumResourceNamesW(module, type, AddId, reinterpret_cast<LONG_PTR>(&ids));
  std::sort(ids.begin(), ids.end());
  return ids;
}

std::string ResourceBytes(HMODULE module, UINT id, const wchar_t* type) {
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), type);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  if (!loaded) return std::string();
  return std::string(static_cast<const char*>(LockResource(loaded)), SizeofResource(module, found));
}

std::map<UINT, std::wstring> StoredStrings(HMODULE module) {
  std::map<UINT, std::wstring> strings;
  for (const UINT block : ResourceIds(module, RT_STRING)) {
    const std::string bytes = ResourceBytes(module, block, RT_STRING);
    std::wstring units(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(&units[0], bytes.data(), units.size() * sizeof(wchar_t));
    size_t at = 0;
    for (UINT i = 0; i < 16 && at < units.size(); ++i) {
      const size_t length = units[at];
      if (length > 0) strings[(block - 1) * 16 + i] = units.substr(at + 1, length);
      at += 1 + length;
    }
  }
  return strings;
}

std::vector<MenuItem> MenuItems(HMODULE module, UINT id) {
  std::vector<MenuItem> items;
  const HMENU menu = LoadMenuW(module, MAKEINTRESOURCEW(id));
  AddItems(menu, 0, &items);
  DestroyMenu(menu);
  return items;
}

std::vector<MenuBarButtonText> MenuBarTexts(HMODULE module, UINT id) {
  constexpr size_t kHeaderWords = 2;
  constexpr size_t kButtonWords = 7;
  const std::string bytes = ResourceBytes(module, id, RT_RCDATA);
  std::vector<WORD> words(bytes.size() / sizeof(WORD));
  std::memcpy(words.data(), bytes.data(), words.size() * sizeof(WORD));
  std::vector<MenuBarButtonText> texts;
  for (size_t at = kHeaderWords; at + kButtonWords <= words.size(); at += kButtonWords) {
    if (words[at + 4] != 0) texts.push_back({words[at] == 0xFFFE, words[at + 4]});
  }
  return texts;
}

}  // namespace kelvo::test
