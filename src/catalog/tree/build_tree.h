// Builds the tree of the Media Catalog in one of its orders.
#pragma once

#include "catalog/media/entry_list.h"
#include "catalog/tree/catalog_tree.h"

namespace kelvo {

// How the Media Catalog groups its files; the numbers are those of the setting "CatType".
enum class GroupingOrder : uint32_t {
  kGenreArtistAlbum = 1,
  kGenreAlbumArtist,
  kArtistAlbum,
  kAlbumArtist,
  kAlbum,
  kArtist,
  kFolders,
};

// A number that is no order counts as the first one.
constexpr GroupingOrder ToGroupingOrder(uint32_t number) noexcept {
  return number >= 1 && number <= 7 ? static_cast<GroupingOrder>(number)
                                    : GroupingOrder::kGenreArtistAlbum;
}

// Groups the entries into an empty tree, groups before files, and stores each one's node in its
// item word; 0 where there is none: the entry has no path, or there was no memory for its node or a
// node above it. Without memory for the grouping itself the tree stays empty.
void BuildTree(EntryList& entries, GroupingOrder order, CatalogTree& tree) noexcept;

// The two kinds of orders.
void BuildGroups(EntryList& entries, const NodeKind* levels, size_t level_count,
                 CatalogTree& tree) noexcept;
void BuildFolders(EntryList& entries, CatalogTree& tree) noexcept;

}  // namespace kelvo
