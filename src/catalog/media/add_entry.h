// Appends the entry of one media file, with its tag. False when nothing was added: memory is out,
// or Windows Media is not available. The new entry is the list's last, its item word is 0.
#pragma once

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"
#include "catalog/media/media_information.h"

namespace kelvo {

// Without a tag that can be read the entry has no tag block.
bool AddMpegEntry(FileSystem& files, const wchar_t* path, EntryList* list) noexcept;

// When the plug-in cannot read the file, the tag block's fields are empty; when memory is out for
// the block, there is none.
bool AddOggEntry(MediaInformation& information, const wchar_t* path, EntryList* list) noexcept;
bool AddWmaEntry(MediaInformation& information, const wchar_t* path, EntryList* list) noexcept;

}  // namespace kelvo
