#pragma once

#include <windows.h>

namespace kelvo {

// "Do you want to permanently delete ...?" True for Yes.
bool AskDelete(HWND owner, const wchar_t* path) noexcept;

}  // namespace kelvo
