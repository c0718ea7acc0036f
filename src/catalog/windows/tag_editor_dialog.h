#pragma once

#include <windows.h>

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// Lets the user change the tag of an MPEG audio file, modally. True when a tag was written; the
// entry itself is not changed.
bool EditTag(FileSystem& files, HWND parent, const MediaEntry& entry) noexcept;

}  // namespace kelvo
