#pragma once

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"
#include "catalog/media/media_information.h"
#include "catalog/tree/playlist_files.h"

namespace kelvo {

// Paths of more characters, terminator included, are passed over.
inline constexpr size_t kScanPathCapacity = 256;

struct ScanResult {
  EntryList* media;
  PlaylistFiles* playlists;
};

// Appends every media file and playlist below `folder` (no backslash at its end; the empty text is
// the whole device) in the file system's order. What cannot be read or has no memory is left out.
void ScanFolder(FileSystem& files, MediaInformation& information, const wchar_t* folder,
                const ScanResult& result) noexcept;

}  // namespace kelvo
