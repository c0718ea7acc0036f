// Playlists in playlists, expanded in place.
#pragma once

#include "base/files/file_system.h"
#include "catalog/media/media_kind.h"
#include "playlist/list_entry.h"
#include "playlist/nesting_guard.h"

namespace kelvo {

// Receives the media files of an expansion, in order; whether they exist has not been looked at.
class PathSink {
 public:
  virtual void AddMedia(MediaKind kind, const wchar_t* path) noexcept = 0;

 protected:
  ~PathSink() = default;
};

// Hands over `path` itself, or the media files that it names when it is a playlist. What cannot be
// opened or has no kind is skipped. The guard may be null. Takes the same stack at every depth; of
// a deep chain only the innermost playlists stay open, the outer ones are opened again when their
// turn comes.
void ExpandPath(FileSystem& files, const wchar_t* path, NestingGuard* guard,
                PathSink& sink) noexcept;

// The same for a file that is to be read as a playlist, whatever its extension.
void ExpandList(FileSystem& files, const wchar_t* path, ListFormat format, NestingGuard* guard,
                PathSink& sink) noexcept;

}  // namespace kelvo
