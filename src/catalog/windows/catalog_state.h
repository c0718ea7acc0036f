#pragma once

#include <windows.h>

#include "base/files/file_system.h"
#include "catalog/lists/current_playlist.h"
#include "catalog/lists/device_scan.h"
#include "catalog/media/add_entry.h"
#include "catalog/media/entry_list.h"
#include "catalog/tree/build_tree.h"

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
  // Searches the device again and shows what was found.
  virtual void Rescan() noexcept = 0;
  virtual void CurrentPlaylistChanged() noexcept = 0;

 protected:
  ~CatalogSheetEvents() = default;
};

}  // namespace kelvo
