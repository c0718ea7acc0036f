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

size_t TableBytes(HMODULE module, const wchar_t* name) noexcept {
  size_t bytes = 0;
  FindResourceBytes(module, name, RT_RCDATA, &bytes);
  return bytes;
}

}  // namespace

bool HasWholeDialog(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  return HasResource(language, name, RT_DIALOG) &&
         HasAllOf(IdsOf<DialogControls>(module, name, RT_DIALOG),
                  IdsOf<DialogControls>(language, name, RT_DIALOG));
}

bool HasWholeMenuBar(HMODULE language, HMODULE module, const wchar_t* name) noexcept {
  const size_t table = TableBytes(language, name);
  return HasResource(language, name, RT_MENU) && table > 0 && table >= TableBytes(module, name) &&
         HasAllOf(IdsOf<MenuItems>(module, name, RT_MENU),
                  IdsOf<MenuItems>(language, name, RT_MENU));
}

}  // namespace kelvo
