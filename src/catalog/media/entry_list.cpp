#include "catalog/media/entry_list.h"

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

void TrimField(char* bytes, size_t length) noexcept {
  while (length > 0 && (bytes[length - 1] == ' ' || bytes[length - 1] == 0)) bytes[--length] = 0;
}

void CopyToField(const wchar_t* text, TagField& field) noexcept {
  memset(field, 0, sizeof(field));
  WideToAnsi(text, kTagFieldBytes - 1, field, kTagFieldBytes - 2, nullptr);
}

MediaEntry* EntryList::Add(const wchar_t* path) noexcept {
  if (entries_.size() == entries_.capacity() && !entries_.Reserve(entries_.capacity() + kGrowth)) {
    return nullptr;
  }
  MediaEntry entry;
  if (!entry.path.Assign(path) || !entries_.Append(std::move(entry))) return nullptr;
  return &entries_.back();
}

void EntryList::GrowFor(size_t more) noexcept {
  const size_t spare = entries_.capacity() - entries_.size();
  if (more <= spare) return;
  const size_t steps = (more - spare + kGrowth - 1) / kGrowth;
  static_cast<void>(entries_.Reserve(entries_.capacity() + steps * kGrowth));
}

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
