// The text of "bookmarks.dat" (docs/formats/bookmarks.md): UTF-16LE, three lines a bookmark.
#pragma once

#include "base/bytes/byte_source.h"
#include "base/files/file_system.h"
#include "bookmarks/bookmark.h"

namespace kelvo {

// Appends the bookmarks of the file to the list. Stops in front of the first one that cannot be
// read completely (end of the file, read error, no memory); those before it stay.
void ReadBookmarks(ByteSource& source, BookmarkList* list) noexcept;

// False when a write failed; the file then ends somewhere inside.
[[nodiscard]] bool WriteBookmarks(FileWriter& file, const BookmarkList& list) noexcept;

}  // namespace kelvo
