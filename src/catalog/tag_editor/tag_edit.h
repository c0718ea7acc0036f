// What the tag editor shows of a file's tag and writes; the format: docs/formats/id3v1.md.
#pragma once

#include <stdint.h>

#include "base/files/file_system.h"
#include "catalog/media/entry_list.h"
#include "catalog/media/id3v1.h"

namespace kelvo {

// The fields as the user sees them, with the most characters that each takes.
struct TagTexts {
  wchar_t title[31] = {};
  wchar_t artist[31] = {};
  wchar_t album[31] = {};
  wchar_t year[5] = {};
  wchar_t track[12] = {};  // shown whole; of what is typed two characters count
  wchar_t comment[31] = {};
};

class TagEdit {
 public:
  // Reads the tag of a file; only when the catalog found one: otherwise an update appends a new
  // tag, whatever the file holds by now.
  void Load(FileSystem& files, const MediaEntry& entry) noexcept;

  bool present() const noexcept { return present_; }
  uint8_t genre() const noexcept { return bytes_[kId3v1GenreAt]; }
  const Id3v1Block& bytes() const noexcept { return bytes_; }

  // All empty without a tag.
  void Show(TagTexts* shown) const noexcept;

  // The tag of these texts; `genre` is taken as its low byte.
  void Build(const TagTexts& texts, uint32_t genre) noexcept;

  // Writes the tag over the file's old one or behind its end, also into a read-only, hidden or
  // system file, which keeps its attributes; a file that cannot be opened loses them. True when the
  // whole tag was written.
  bool Write(FileSystem& files, const wchar_t* path) noexcept;

 private:
  Id3v1Block bytes_ = {};
  bool present_ = false;
};

}  // namespace kelvo
