// Lookups of texts, dialogs and menu bars: in the language library first, then in `module`. User-
// interface thread only.
#pragma once

#include "base/text/format.h"
#include "base/windows/dialog.h"
#include "base/windows/pocketpc.h"

namespace kelvo {

// Copies the text, as much as fits, and terminates it; the number of characters copied, 0 when
// there is no such string (the buffer then holds the empty text).
int LoadLocalizedString(HMODULE module, UINT id, wchar_t* buffer, int capacity) noexcept;
// The resource's own text, valid until the language is switched; the empty text when there is none.
const wchar_t* LoadLocalizedString(HMODULE module, UINT id) noexcept;

// Formats with a string resource. A translation that does not ask for exactly these arguments is
// passed over for the built-in text.
bool FormatLocalized(wchar_t* text, size_t capacity, UINT id,
                     std::initializer_list<FormatArgument> arguments) noexcept;

// Where a dialog's template is taken from. A window made of it needs a LanguageHold (modules.h).
HMODULE ModuleWithDialog(HMODULE module, const wchar_t* name) noexcept;

// Runs a modal dialog and returns its result, as the system's DialogBoxParam. The second form finds
// the template by name and passes no parameter.
INT_PTR LocalizedDialogBox(HMODULE module, UINT id, HWND parent, DLGPROC procedure,
                           LPARAM parameter) noexcept;
INT_PTR LocalizedDialogBox(HMODULE module, const wchar_t* name, HWND parent,
                           DLGPROC procedure) noexcept;
// The same for a dialog object, from the library's own module.
INT_PTR RunDialog(ModalDialog& dialog, UINT id, HWND parent) noexcept;

// Creates a menu bar. Menu, table and bitmap come from the language library when it has all that is
// asked for, otherwise all of them from the record's own instance.
BOOL CreateLocalizedMenuBar(SHMENUBARINFO* info) noexcept;

// What the above go by. A translation may be partial, but a dialog or menu bar is used whole or not
// at all: one that lacks a control or a command of the built-in one would leave the user without
// it.

// True when `language` has the dialog with every control that `module` has in its own.
bool HasWholeDialog(HMODULE language, HMODULE module, const wchar_t* name) noexcept;

// True when `language` has the menu with every command that `module` has in its own, and the menu
// bar's table in full, as data under the menu's name.
bool HasWholeMenuBar(HMODULE language, HMODULE module, const wchar_t* name) noexcept;

}  // namespace kelvo
