#pragma once

#include "catalog/windows/catalog_page.h"

namespace kelvo {

// "Playlist Catalog": the playlist files found on the device. An item's data is the position in
// the list of playlist files.
class PlaylistsPage final : public CatalogPage {
 public:
  PlaylistsPage(CatalogState& state, CatalogSheetEvents& events) noexcept;
  void Fill() noexcept;  // nothing while the page is not there

 private:
  void OnPageInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept override;
  bool OnPageMessage(UINT message, WPARAM wparam) noexcept override;

  void FitColumn() noexcept;
  int SelectedItem() noexcept;
  void Rename() noexcept;
  void Delete() noexcept;
  void AddCheckedLists() noexcept;
  void ShowPopup(POINT at) noexcept;
};

}  // namespace kelvo
