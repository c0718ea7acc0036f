#pragma once

#include <windows.h>

#include <commctrl.h>

#include "base/files/file_system.h"
#include "base/windows/resources.h"
#include "playlist/save_dialog.h"

namespace kelvo {

// The save dialog's tree of folders and playlists; a folder is filled when it is first expanded.
// Every item's data is its own handle.
class FolderTree final : public FolderItems {
 public:
  explicit FolderTree(FileSystem& files) noexcept : files_(files) {}

  void Attach(HWND tree, HMODULE host_module) noexcept;
  void Detach() noexcept;
  void FillRoot() noexcept;
  // For TVN_ITEMEXPANDING.
  void Expanding(HTREEITEM item, bool expands) noexcept;
  // The item under a point of the screen, on its icon, label or state icon; null when none.
  HTREEITEM HitTest(POINT at) noexcept;
  bool IsFolder(HTREEITEM item) noexcept;

  uintptr_t Parent(uintptr_t item) noexcept override;
  void Text(uintptr_t item, wchar_t (&text)[kTextCapacity]) noexcept override;

 private:
  class Filler;
  HTREEITEM Insert(HTREEITEM parent, const wchar_t* text, int image, bool has_children) noexcept;
  int Fill(const wchar_t* folder, HTREEITEM parent) noexcept;
  bool HasSubfolder(const wchar_t* folder, const wchar_t* name) noexcept;
  void SetImage(HTREEITEM item, int image) noexcept;

  FileSystem& files_;
  HWND tree_ = nullptr;
  UniqueIconList images_;
  UniqueIconList states_;
};

}  // namespace kelvo
