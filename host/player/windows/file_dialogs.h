// Asking for files and folders.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace velmora {

// Empty when the user declines.
std::vector<std::wstring> AskForMedia(HWND parent);
std::wstring AskForSkin(HWND parent);
std::wstring AskForFolder(HWND parent, const wchar_t* question);

}  // namespace velmora
