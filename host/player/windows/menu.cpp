#include "host/player/windows/menu.h"

namespace velmora {

Menu& Menu::Item(const std::wstring& text, int command, bool checked, bool enabled) {
  const UINT flags = MF_STRING | (checked ? MF_CHECKED : 0) | (enabled ? 0 : MF_GRAYED);
  AppendMenuW(menu_, flags, static_cast<UINT_PTR>(command), text.c_str());
  return *this;
}

Menu& Menu::Submenu(const std::wstring& text, Menu sub) {
  if (AppendMenuW(menu_, MF_POPUP, reinterpret_cast<UINT_PTR>(sub.menu_), text.c_str())) {
    sub.menu_ = nullptr;  // its owner is this menu now
  }
  return *this;
}

Menu& Menu::Separator() {
  AppendMenuW(menu_, MF_SEPARATOR, 0, nullptr);
  return *this;
}

void Menu::Track(HWND window, Point at) const {
  TrackPopupMenu(menu_, TPM_LEFTALIGN | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
}

std::wstring AsMenuText(const std::wstring& name) {
  std::wstring text;
  for (wchar_t c : name) {
    if (c == L'\t') c = L' ';
    text += c;
    if (c == L'&') text += c;
  }
  return text;
}

}  // namespace velmora
