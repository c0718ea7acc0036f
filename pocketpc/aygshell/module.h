#pragma once

#include <windows.h>

namespace kelvo {

HINSTANCE ThisModule() noexcept;  // the module that this code is linked into

}  // namespace kelvo
