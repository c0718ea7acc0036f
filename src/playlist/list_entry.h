// Which lines of a playlist name a file; docs/formats/m3u.md, pls.md, asx.md. The lines are 8-bit
// text in the system's code page.
#pragma once

#include <stdint.h>

#include "base/text/wide.h"
#include "catalog/media/entry_list.h"
#include "playlist/line_reader.h"

namespace kelvo {

enum class ListFormat : uint8_t { kM3u, kPls, kAsx };

// False when the kind is not that of a playlist.
[[nodiscard]] bool ListFormatOf(MediaKind kind, ListFormat* format) noexcept;

// 3 for names that end in ".m3u" or ".pls", else -1: the playlists that the save dialog lists.
int32_t PlaylistExtension(const wchar_t* path) noexcept;

// Points into the line.
struct ListEntry {
  const char* text;
  size_t length;
  bool in_folder;  // the playlist's folder belongs in front
};

// The next key of a PLS file, "File1=" at first.
class PlsKey {
 public:
  PlsKey() noexcept { Set(1); }
  void Set(int32_t number) noexcept;
  int32_t number() const noexcept { return number_; }
  const char* text() const noexcept { return text_; }
  size_t length() const noexcept { return length_; }

 private:
  char text_[20];
  uint8_t length_;
  int32_t number_;
};

// False when the line names nothing; *entry is then untouched. PLS alone uses the key, which counts
// on with each entry.
[[nodiscard]] bool FindEntry(ListFormat format, const TextLine& line, PlsKey* key,
                             ListEntry* entry) noexcept;

// A playlist's own path.
struct ListPath {
  wchar_t path[kTextCapacity];  // as the code page holds it: so it is opened
  char folder[kTextCapacity];   // what goes before its entries: up to the last backslash
  size_t folder_length;         // 0 without a backslash
};

// False when the code page does not hold the path, or it is too long: such a playlist cannot be
// opened. *list is then unspecified.
[[nodiscard]] bool ToListPath(const wchar_t* path, ListPath* list) noexcept;

// False when folder and entry together are longer than a path may be.
[[nodiscard]] bool MakeEntryPath(const ListEntry& entry, const ListPath& list,
                                 wchar_t (&path)[kTextCapacity]) noexcept;

}  // namespace kelvo
