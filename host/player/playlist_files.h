// Playlists as files, through the library's readers and writer.
#pragma once

#include <string>
#include <vector>

#include "host/player/track_list.h"

namespace velmora {

// By the extension: .m3u, .pls, .asx.
bool IsPlaylist(const std::wstring& path);

// Appends the media files that a playlist names, in order, and those of playlists in it; whether
// they are there has not been looked at. Returns how many are of no kind that the library plays.
size_t ReadPlaylist(const std::wstring& path, std::vector<std::wstring>* found);

struct WrittenPlaylist {
  bool written;  // the whole file; otherwise an old one is as it was
  // Entries whose names the system's 8-bit code page lacks, in which playlists are written: no
  // player finds these files again.
  size_t lost_names;
};
// As M3U, in place of an existing file.
WrittenPlaylist WritePlaylist(const std::wstring& path, const std::vector<Track>& tracks);

}  // namespace velmora
