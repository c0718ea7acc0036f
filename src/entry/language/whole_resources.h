// A translation may be partial, but a dialog or menu bar is used whole or not at all: one that
// lacks a control or a command of the built-in one would leave the user without it.
//
// Templates are strangers' bytes: one that is cut off lacks what would follow. Dialogs may have the
// classic or the extended form, menus the classic one, which is all that the device reads.
#pragma once

#include <windows.h>

namespace kelvo {

// True when `language` has the dialog with every control that `module` has in its own.
bool HasWholeDialog(HMODULE language, HMODULE module, const wchar_t* name) noexcept;

// True when `language` has the menu with every command that `module` has in its own, and the menu
// bar's table in full, as data under the menu's name.
bool HasWholeMenuBar(HMODULE language, HMODULE module, const wchar_t* name) noexcept;

}  // namespace kelvo
