#pragma once

#include "base/windows/dialog.h"
#include "base/windows/image_list.h"
#include "bookmarks/bookmark_view.h"

namespace kelvo {

// The list of bookmarks with its menu bar. An item's data is the bookmark's index in the store; the
// texts and images are asked for when they are drawn.
//
// The host works while the dialog runs and may change the store through the feature: an index of an
// item is checked before each use.
class BookmarksDialog final : public ModalDialog {
 public:
  // `host`, which may be null, receives the messages about bookmarks. All are borrowed.
  BookmarksDialog(HWND host, BookmarkStore& store, BookmarkOrder& order) noexcept
      : host_(host), store_(store), order_(order) {}

 private:
  bool OnInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) noexcept override;

  void CreateList() noexcept;
  void Stretch() noexcept;
  void Fill() noexcept;
  void Sort() noexcept;
  void Tell(LVITEMW* item) noexcept;

  int32_t IndexOf(int item) const noexcept;  // -1 when there is no such item
  int32_t CurrentIndex() const noexcept;     // of the focused item, if it is selected; or -1
  void Post(uint32_t what) noexcept;
  void Edit() noexcept;
  void Delete() noexcept;

  HWND host_;
  BookmarkStore& store_;
  BookmarkOrder& order_;
  HWND list_ = nullptr;
  UniqueIconList images_;
  wchar_t position_[kPositionTextCapacity];  // what the list is drawing
};

}  // namespace kelvo
