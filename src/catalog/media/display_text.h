// The texts that stand for an entry in trees and lists, in the system's code page.
#pragma once

#include "base/text/wide.h"
#include "catalog/media/entry_list.h"

namespace kelvo {

// The title, or without one the file's name with its extension.
void TitleText(const MediaEntry& entry, char (&text)[kTextCapacity]) noexcept;

// "Unknown" when the entry has none.
void ArtistText(const MediaEntry& entry, TagField& text) noexcept;
void AlbumText(const MediaEntry& entry, TagField& text) noexcept;
void GenreText(const MediaEntry& entry, TagField& text) noexcept;

}  // namespace kelvo
