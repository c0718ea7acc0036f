// Which lines of a playlist name a file; docs/formats/m3u.md, pls.md, asx.md. The lines are 8-bit
// text in the system's code page, taken byte by byte.
#pragma once

#include <stdint.h>

#include "base/text/wide.h"
#include "catalog/media/media_kind.h"
#include "playlist/line_reader.h"

namespace kelvo {

enum class ListFormat : uint8_t { kM3u, kPls, kAsx };

// False when the kind is not that of a playlist.
[[nodiscard]] bool ListFormatOf(MediaKind kind, ListFormat* format) noexcept;

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
  void Advance() noexcept;
  int32_t number() const noexcept { return number_; }
  const char* text() const noexcept { return text_; }
  size_t length() const noexcept { return length_; }

 private:
  char text_[20];
  uint8_t length_;  // 0: behind the last number there is
  int32_t number_;
};

// False when the line names nothing; *entry is then untouched.
[[nodiscard]] bool FindM3uEntry(const TextLine& line, ListEntry* entry) noexcept;
[[nodiscard]] bool FindPlsEntry(const TextLine& line, PlsKey* key, ListEntry* entry) noexcept;
[[nodiscard]] bool FindAsxEntry(const TextLine& line, ListEntry* entry) noexcept;
[[nodiscard]] bool FindEntry(ListFormat format, const TextLine& line, PlsKey* key,
                             ListEntry* entry) noexcept;

// The folder of a playlist as its entries need it: 8-bit, with the last backslash; empty when the
// path has none.
struct ListFolder {
  char text[kTextCapacity];
  size_t length = 0;

  // False when the code page does not hold the path, or it is too long: such a playlist cannot be
  // opened. *resolved is the path as the code page holds it.
  [[nodiscard]] bool Set(const wchar_t* list_path, wchar_t (&resolved)[kTextCapacity]) noexcept;
};

// False when folder and entry together are longer than a path may be. *length is the path's.
[[nodiscard]] bool MakeEntryPath(const ListEntry& entry, const ListFolder& folder,
                                 wchar_t (&path)[kTextCapacity], size_t* length) noexcept;

}  // namespace kelvo
