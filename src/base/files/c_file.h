#pragma once

#include <stdio.h>

namespace kelvo {

// fopen(path, "rb") with a wide path; null on failure. For libraries that read through FILE.
FILE* OpenCFile(const wchar_t* path) noexcept;

}  // namespace kelvo
