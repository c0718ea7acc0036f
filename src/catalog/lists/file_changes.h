// What becomes of the lists when files are deleted, renamed, or get another tag.
#pragma once

#include "base/memory/heap_text.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// Takes out the entry of a file that was deleted from the Media Catalog. The later entries move
// down and the last one then stands in the last two slots: until the next scan it shows twice after
// a regrouping. The doubled slot owns its own copies. When the last entry itself is taken out, or
// memory is out for the copies, the last slot stays without a path.
void DeleteEntry(EntryList& entries, size_t at) noexcept;

// The folder of `path`, a backslash and `name`. Without a value when memory is out.
HeapText RenamedPath(const wchar_t* path, const wchar_t* name) noexcept;

// Gives the tag of an edited file to its other entries in a playlist.
void CopyTagToPlaylist(const MediaEntry& edited, EntryList& playlist) noexcept;

}  // namespace kelvo
