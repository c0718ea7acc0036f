#pragma once

#include <windows.h>

#include <string>

#include "host/library.h"

namespace velmora {

// What a file says about itself, in texts that can be copied.
void ShowInfo(HWND parent, const Library& library, const std::wstring& path);

}  // namespace velmora
