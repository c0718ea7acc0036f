// The sheet and its three pages.
#pragma once

#include "catalog/windows/catalog_page.h"
#include "catalog/windows/media_tree.h"

namespace kelvo {

// "Playlist Catalog": the playlist files found on the device. An item's data is the position in
// the list of playlist files.
class PlaylistsPage final : public CatalogPage {
 public:
  PlaylistsPage(CatalogState& state, CatalogSheetEvents& events) noexcept;
  void Fill() noexcept;  // nothing while the page is not there

 private:
  void OnPageInit() noexcept override;
  void OnPageSize() noexcept override { FitColumn(); }
  Handled OnCommand(int id, int notification) noexcept override;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept override;
  bool OnPageMessage(UINT message, WPARAM wparam) noexcept override;

  void ChangeChecks(int id) noexcept;
  void FitColumn() noexcept;
  int SelectedItem() noexcept;
  void Rename() noexcept;
  void Delete() noexcept;
  void AddCheckedLists() noexcept;
  void ShowPopup(POINT at) noexcept;
};

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

  void Choose(TreeNode node) noexcept;
  void TapBox(TreeNode node) noexcept;
  void ChangeChecks(int id) noexcept;
  void SetOrder(GroupingOrder order) noexcept;
  void MarkOrder() noexcept;
  void UpdateFileCommands() noexcept;
  void AddCheckedFilesToPlaylist() noexcept;
  void DeleteSelectedFile() noexcept;
  void EditSelectedTag() noexcept;

  MediaTree tree_;
};

// "Curr. Playlist": the files that the user puts together. An item's data is its entry's position,
// its check box the entry's flag.
class CurrentPage final : public CatalogPage {
 public:
  CurrentPage(CatalogState& state, CatalogSheetEvents& events) noexcept;
  void Fill() noexcept;  // nothing while the page is not there

 private:
  void OnPageInit() noexcept override;
  void OnPageSize() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept override;

  void InsertColumns() noexcept;
  void AppendItems() noexcept;   // one an entry, into the empty list
  bool Select(int id) noexcept;  // the commands that change checks and selection
  bool ChangeItems(int id) noexcept;
  void Play() noexcept;
  void Save() noexcept;
  bool ShowsAll() noexcept;
  void Edit(int id) noexcept;
  void Sort(int column) noexcept;
  void UpdateButtons() noexcept;

  int spare_ = 0;  // pixels that the columns have been given beyond their own widths
  wchar_t label_[kColumnCapacity] = {};
};

// "Playlist Organizer", the sheet with the three pages, for one showing.
class CatalogSheet final : private CatalogSheetEvents {
 public:
  explicit CatalogSheet(CatalogState& state) noexcept
      : state_(state), playlists_(state, *this), media_(state, *this), current_(state, *this) {}

  // Modal. False when it could not be created.
  bool Run() noexcept;

 private:
  void Rescan(HWND page) noexcept override;
  void CurrentPlaylistChanged() noexcept override;

  CatalogState& state_;
  PlaylistsPage playlists_;
  MediaPage media_;
  CurrentPage current_;
};

}  // namespace kelvo
