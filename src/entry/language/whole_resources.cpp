#include "entry/language/localized.h"

#include "base/windows/resources.h"
#include "entry/language/templates.h"

namespace kelvo {
namespace {

template <class Ids>
Ids IdsOf(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept {
  size_t bytes = 0;
  const void* found = FindResourceBytes(module, name, type, &bytes);
  return Ids(found, bytes);
}

bool HasWholeTable(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  size_t bytes = 0, own_bytes = 0;
  const void* table = FindResourceBytes(language, name, RT_RCDATA, &bytes);
  const void* own_table = FindResourceBytes(module, name, RT_RCDATA, &own_bytes);
  const size_t buttons = ButtonCount(table, bytes);
  return buttons > 0 && buttons >= ButtonCount(own_table, own_bytes);
}

}  // namespace

bool HasWholeDialog(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  return HasResource(language, name, RT_DIALOG) &&
         HasAllOf(IdsOf<DialogControls>(module, name, RT_DIALOG),
                  IdsOf<DialogControls>(language, name, RT_DIALOG));
}

bool HasWholeMenuBar(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  return HasResource(language, name, RT_MENU) && HasWholeTable(language, module, name) &&
         HasAllOf(IdsOf<MenuItems>(module, name, RT_MENU),
                  IdsOf<MenuItems>(language, name, RT_MENU));
}

}  // namespace kelvo
