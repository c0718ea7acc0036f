#pragma once

#include "catalog/windows/catalog_page.h"
#include "catalog/windows/media_tree.h"

namespace kelvo {

// "Media Catalog": every media file of the device in a tree of groups.
class MediaPage final : public CatalogPage {
 public:
  MediaPage(CatalogState& state, CatalogSheetEvents& events) noexcept;
  // Nothing while the page is not there, or a scan runs.
  void RebuildTree() noexcept;

 private:
  void OnPageInit() noexcept override;
  void OnPageDestroy() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept override;
  bool OnPageMessage(UINT message, WPARAM wparam) noexcept override;

  void SetOrder(GroupingOrder order) noexcept;
  void MarkOrder() noexcept;
  void UpdateFileCommands() noexcept;
  void AddCheckedFilesToPlaylist() noexcept;
  void DeleteSelectedFile() noexcept;
  void EditSelectedTag() noexcept;

  MediaTree tree_;
};

}  // namespace kelvo
