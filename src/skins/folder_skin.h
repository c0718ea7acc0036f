#pragma once

#include "base/files/file_system.h"
#include "skins/skin_block.h"

namespace kelvo {

// Reads the file `name` of a folder whole; no block when it cannot be read.
SkinBlock ReadFromSkinFolder(FileSystem& files, const wchar_t* folder, const char* name) noexcept;

}  // namespace kelvo
