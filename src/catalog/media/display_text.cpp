#include "catalog/media/display_text.h"

#include <string.h>

#include "base/text/ansi.h"

namespace kelvo {
namespace {

void FieldOrUnknown(const MediaEntry& entry, const TagField TagBlock::*field,
                    TagField& text) noexcept {
  constexpr TagField kUnknown = "Unknown";
  const bool known = entry.tag && ((*entry.tag).*field)[0] != 0;
  memcpy(text, known ? (*entry.tag).*field : kUnknown, sizeof(text));
}

}  // namespace

void TitleText(const MediaEntry& entry, char (&text)[kTextCapacity]) noexcept {
  if (entry.tag && entry.tag->title[0] != 0) {
    memcpy(text, entry.tag->title, sizeof(entry.tag->title));
    return;
  }
  const wchar_t* path = entry.path.c_str();
  size_t length = 0;
  if (path[0] != 0 && path[1] != 0) {
    length = WideToAnsi(FileNameOf(path), kTextCapacity, text, kTextCapacity - 1, nullptr);
  }
  text[length] = 0;
}

void ArtistText(const MediaEntry& entry, TagField& text) noexcept {
  FieldOrUnknown(entry, &TagBlock::artist, text);
}

void AlbumText(const MediaEntry& entry, TagField& text) noexcept {
  FieldOrUnknown(entry, &TagBlock::album, text);
}

void GenreText(const MediaEntry& entry, TagField& text) noexcept {
  FieldOrUnknown(entry, &TagBlock::genre, text);
}

}  // namespace kelvo
