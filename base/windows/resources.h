#pragma once

#include <stddef.h>
#include <windows.h>

namespace kelvo {

// The text of a string resource, in place: read-only, NUL-terminated, valid while the module is
// loaded. Null when the module has no such string, or stores it without the terminator that makes
// it usable in place. The desktop's own call for this hands out unterminated text, so the string
// table is read directly. *length, which may be null, excludes the terminator.
const wchar_t* FindStringResource(HMODULE module, UINT id, size_t* length) noexcept;

bool HasResource(HMODULE module, const wchar_t* name, const wchar_t* type) noexcept;

}  // namespace kelvo
