#pragma once

#include "catalog/windows/current_page.h"
#include "catalog/windows/media_page.h"
#include "catalog/windows/playlists_page.h"

namespace kelvo {

// "Playlist Organizer", the sheet with the three pages, for one showing.
class CatalogSheet final : private CatalogSheetEvents {
 public:
  explicit CatalogSheet(CatalogState& state) noexcept
      : state_(state), playlists_(state, *this), media_(state, *this), current_(state, *this) {}

  // Modal. False when it could not be created.
  bool Run() noexcept;

 private:
  void Rescan() noexcept override;
  void CurrentPlaylistChanged() noexcept override;

  CatalogState& state_;
  PlaylistsPage playlists_;
  MediaPage media_;
  CurrentPage current_;
};

}  // namespace kelvo
