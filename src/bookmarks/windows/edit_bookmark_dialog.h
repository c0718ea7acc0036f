#pragma once

#include "base/windows/dialog.h"
#include "bookmarks/bookmark_view.h"

namespace kelvo {

// Edits one bookmark; "Ok" stores and saves it.
class EditBookmarkDialog final : public ModalDialog {
 public:
  // `store` is borrowed; `index` is one of its bookmarks.
  EditBookmarkDialog(BookmarkStore& store, int32_t index) noexcept : store_(store), index_(index) {}

 private:
  bool OnInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  void OnDestroy() noexcept override;

  void StoreFields() noexcept;

  BookmarkStore& store_;
  int32_t index_;
};

}  // namespace kelvo
