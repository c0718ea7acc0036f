// Feature 1, and what its pages share. User-interface thread only.
#pragma once

#include <windows.h>

#include "base/files/file_system.h"
#include "catalog/lists/current_playlist.h"
#include "catalog/lists/device_lists.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"
#include "catalog/tree/build_tree.h"
#include "kelvo/catalog.h"

namespace kelvo {

// What the catalog keeps from one showing of its sheet to the next.
struct CatalogState {
  CatalogState(FileSystem& the_files, MediaInformation& the_information) noexcept
      : files(the_files), information(the_information) {}

  FileSystem& files;
  MediaInformation& information;
  HostCallback host;
  HMODULE host_module = nullptr;  // of the last showing
  HWND parent = nullptr;          // likewise
  GroupingOrder order = GroupingOrder::kArtist;
  bool scanning = false;
  bool closing = false;  // the sheet ends
  bool first_showing = true;
  bool shown = false;  // the sheet is open
  SortState sort;
  EntryList media;
  PlaylistFiles playlists;
  EntryList current;  // the Curr. Playlist; item word: the check flag
};

// What one page asks of the others.
class CatalogSheetEvents {
 public:
  // Searches the device again, which the page that asks tells of meanwhile, and shows what was
  // found.
  virtual void Rescan(HWND page) noexcept = 0;
  virtual void CurrentPlaylistChanged() noexcept = 0;

 protected:
  ~CatalogSheetEvents() = default;
};

// One object, static in the library.
class CatalogFeature final : public Catalog {
 public:
  // Both are borrowed and must outlive the object.
  CatalogFeature(FileSystem& files, MediaInformation& information) noexcept
      : state_(files, information) {}

  void SetHostCallback(CatalogCallback function, HostWord cookie) noexcept override;
  int32_t ShowCatalog(ModuleHandle host_module, WindowHandle parent) noexcept override;
  void Destroy(uint32_t flags) noexcept override;

 private:
  CatalogState state_;
};

}  // namespace kelvo
