#pragma once

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// Writes the entries as extended M3U (docs/formats/m3u.md), replacing an existing file. False when
// the file cannot be created; what happens to single lines does not count.
bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list) noexcept;

}  // namespace kelvo
