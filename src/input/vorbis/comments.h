// Vorbis comments ("KEY=value", UTF-8) and the fields they fill.
#pragma once

#include <stddef.h>

namespace kelvo {

constexpr size_t kCommentCapacity = 64;  // characters, with the terminator

struct CommentBlock {
  wchar_t date[kCommentCapacity];
  wchar_t track_number[kCommentCapacity];
  wchar_t title[kCommentCapacity];
  wchar_t artist[kCommentCapacity];
  wchar_t album[kCommentCapacity];
  wchar_t genre[kCommentCapacity];
  wchar_t comment[kCommentCapacity];
};

// Takes one NUL-terminated comment into the block when its key (in any case) is known; a later
// comment of the same key replaces an earlier one.
void MapComment(const char* comment, CommentBlock* block) noexcept;

// Converts up to the zero byte or until `limit` - 1 characters are written, and terminates. Lenient
// and short: a lead byte of 0xE0 and above takes two following bytes, whatever they are; a stray
// following byte, or a sequence that the zero byte cuts off, ends the text there.
void Utf8ToWide(const char* source, wchar_t* destination, size_t limit) noexcept;

// "artist - title", even when one of them is empty; the title of the file at `path` when both are.
// `display_title` has room for kTextCapacity characters.
void MakeDisplayTitle(const CommentBlock& comments, const wchar_t* path,
                      wchar_t* display_title) noexcept;

// The name of a file without folder and extension. A name without a point loses its last character;
// players have shown such files that way from the start.
void ExtractFileTitle(const wchar_t* path, wchar_t* title, size_t capacity) noexcept;

}  // namespace kelvo
