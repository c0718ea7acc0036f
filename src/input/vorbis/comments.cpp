#include "input/vorbis/comments.h"

#include <stdint.h>
#include <string.h>

#include "base/text/wide.h"

namespace kelvo {
namespace {

struct KeyField {
  const char* key;
  size_t length;
  wchar_t (CommentBlock::*field)[kCommentCapacity];
};

constexpr KeyField kKeys[] = {
    {"DATE=", 5, &CommentBlock::date},       {"TRACKNUMBER=", 12, &CommentBlock::track_number},
    {"TITLE=", 6, &CommentBlock::title},     {"ARTIST=", 7, &CommentBlock::artist},
    {"ALBUM=", 6, &CommentBlock::album},     {"GENRE=", 6, &CommentBlock::genre},
    {"COMMENT=", 8, &CommentBlock::comment},
};

}  // namespace

void MapComment(const char* comment, CommentBlock* block) noexcept {
  for (const KeyField& key : kKeys) {
    if (!EqualAsciiNoCase(comment, key.key, key.length)) continue;
    Utf8ToWide(comment + key.length, block->*key.field, kCommentCapacity);
    return;
  }
}

void Utf8ToWide(const char* source, wchar_t* destination, size_t limit) noexcept {
  const uint8_t* in = reinterpret_cast<const uint8_t*>(source);
  size_t written = 0;
  while (written + 1 < limit && *in != 0) {
    const uint32_t lead = *in;
    uint32_t character;
    if (lead < 0x80) {
      character = lead;
      in += 1;
    } else if (lead < 0xC0) {
      break;
    } else if (lead < 0xE0) {
      if (in[1] == 0) break;
      character = (lead & 0x1F) * 64 + (in[1] & 0x3F);
      in += 2;
    } else {
      if (in[1] == 0 || in[2] == 0) break;
      character = (lead * 64 | (in[1] & 0x3Fu)) * 64 | (in[2] & 0x3Fu);
      in += 3;
    }
    destination[written++] = static_cast<wchar_t>(character & 0xFFFF);
  }
  destination[written] = 0;
}

void MakeDisplayTitle(const CommentBlock& comments, const wchar_t* path,
                      wchar_t* display_title) noexcept {
  if (comments.artist[0] == 0 && comments.title[0] == 0) {
    ExtractFileTitle(path, display_title, kTextCapacity);
    return;
  }
  static_assert(2 * kCommentCapacity + 3 <= kTextCapacity);
  size_t length = CopyWide(display_title, kTextCapacity, comments.artist);
  length += CopyWide(display_title + length, kTextCapacity - length, L" - ");
  CopyWide(display_title + length, kTextCapacity - length, comments.title);
}

void ExtractFileTitle(const wchar_t* path, wchar_t* title, size_t capacity) noexcept {
  const wchar_t* start = FileNameOf(path);
  const size_t length = WideLength(start);
  if (length == 0) {
    title[0] = 0;
    return;
  }
  const wchar_t* point = FindLastWide(start, L'.');
  const wchar_t* end = point && point > start ? point : start + length - 1;
  CopyWide(title, capacity, start, static_cast<size_t>(end - start));
}

}  // namespace kelvo
