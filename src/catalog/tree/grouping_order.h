#pragma once

#include <stdint.h>

namespace kelvo {

// How the Media Catalog groups its files; the numbers are those of the setting "CatType".
enum class GroupingOrder : uint32_t {
  kGenreArtistAlbum = 1,
  kGenreAlbumArtist = 2,
  kArtistAlbum = 3,
  kAlbumArtist = 4,
  kAlbum = 5,
  kArtist = 6,
  kFolders = 7,
};

// A number that is no order counts as the first one.
constexpr GroupingOrder ToGroupingOrder(uint32_t number) noexcept {
  return number >= 1 && number <= 7 ? static_cast<GroupingOrder>(number)
                                    : GroupingOrder::kGenreArtistAlbum;
}

}  // namespace kelvo
