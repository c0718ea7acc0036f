// Lists of entries from paths and playlists, and written as one. Silent: what cannot be read is not
// added.
#pragma once

#include "base/files/file_system.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"
#include "playlist/expansion.h"

namespace kelvo {

struct PlaylistSources {
  FileSystem& files;
  MediaInformation& information;
  NestingGuard* guard;  // null: no bound on nesting
};

// A media file that exists, with its tag; or the entries of a playlist, in order, and those of the
// playlists in it.
void AddPath(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept;

// Playlists of any extension.
void ReadM3u(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept;
void ReadPls(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept;
void ReadAsx(const PlaylistSources& sources, const wchar_t* path, EntryList* list) noexcept;

// Writes the entries as extended M3U (docs/formats/m3u.md), replacing an existing file. False when
// no file can be created there; a line that cannot be written is no failure in this sense. But then
// *complete, which may be null, is false too, and the old file is still there; a new one has the
// lines that could be written.
bool WriteM3u(FileSystem& files, const wchar_t* path, const EntryList& list,
              bool* complete = nullptr) noexcept;

}  // namespace kelvo
