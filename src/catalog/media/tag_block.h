#pragma once

#include <stddef.h>

namespace kelvo {

// What the catalog keeps of a file's tag: 8-bit text in the system's code page, at most 30 bytes
// and a NUL each. The rest of a field is zero.
inline constexpr size_t kTagFieldBytes = 31;
using TagField = char[kTagFieldBytes];

struct TagBlock {
  TagField title = {};
  TagField artist = {};
  TagField album = {};
  TagField genre = {};
};
static_assert(offsetof(TagBlock, title) == 0 && offsetof(TagBlock, artist) == 31 &&
              offsetof(TagBlock, album) == 62 && offsetof(TagBlock, genre) == 93 &&
              sizeof(TagBlock) == 124);

// Turns the blanks and NULs at the end of `length` bytes into NULs.
void TrimField(char* bytes, size_t length) noexcept;

// Converts the first 30 characters, as far as they give at most 29 bytes. (Tags read from files
// may fill all 30.)
void CopyToField(const wchar_t* text, TagField& field) noexcept;

}  // namespace kelvo
