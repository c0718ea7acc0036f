#pragma once

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// Writes the entries as extended M3U (docs/formats/m3u.md), replacing an existing file. False when
// no file can be created there; a line that cannot be written is no failure in this sense. But then
// *complete, which may be null, is false too, and the old file is still there.
bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list,
              bool* complete = nullptr) noexcept;

}  // namespace kelvo
