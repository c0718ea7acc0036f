#include "catalog/tree/build_tree.h"

namespace kelvo {

void BuildTree(EntryList& entries, GroupingOrder order, TreeSink& sink) noexcept {
  constexpr NodeKind kGenre = NodeKind::kGenre;
  constexpr NodeKind kArtist = NodeKind::kArtist;
  constexpr NodeKind kAlbum = NodeKind::kAlbum;
  struct Levels {
    NodeKind kinds[3];
    size_t count;
  };
  static constexpr Levels kLevels[] = {
      {{kGenre, kArtist, kAlbum}, 3},
      {{kGenre, kAlbum, kArtist}, 3},
      {{kArtist, kAlbum}, 2},
      {{kAlbum, kArtist}, 2},
      {{kAlbum}, 1},
      {{kArtist}, 1},
  };
  if (order == GroupingOrder::kFolders) return BuildFolders(entries, sink);
  const Levels& levels = kLevels[static_cast<uint32_t>(order) - 1];
  BuildGroups(entries, levels.kinds, levels.count, sink);
}

}  // namespace kelvo
