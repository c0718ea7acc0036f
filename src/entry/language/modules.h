// The two modules that texts, dialogs and menus come from, and the user's language, which decides
// on the second. User-interface thread only.
#pragma once

#include <stdint.h>
#include <windows.h>

#include "base/windows/unique_handle.h"

namespace kelvo {

// The library itself; set once when it is loaded.
HMODULE OwnModule() noexcept;
void SetOwnModule(HMODULE module) noexcept;

// The language library, or null when the built-in English resources are used.
HMODULE LanguageModule() noexcept;

// Lets go of the current language library and loads that of `language_id`, by name alone through
// the system's search: "kv_mui.XXXX.dll" (own) or "mui.XXXX.dll". 0 and 1033 mean the built-in
// English. False when the wanted library was not found; the built-in resources are used then.
bool LoadLanguageLibrary(uint32_t language_id, bool own) noexcept;

// Reads the user's "Language" from the registry (a missing or unusable value leaves the language as
// it was, English at first) and loads its library. While loading, or on the user-interface thread.
void SwitchToConfiguredLanguage() noexcept;

// Keeps the present language library loaded. Every window whose template is looked up in it holds
// one: the system goes on reading the template, and the host may switch the language meanwhile.
class LanguageHold {
 public:
  LanguageHold() noexcept;

 private:
  UniqueModule module_;
};

}  // namespace kelvo
