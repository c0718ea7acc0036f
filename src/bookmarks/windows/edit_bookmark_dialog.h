#pragma once

#include "base/windows/dialog.h"
#include "bookmarks/bookmark_store.h"

namespace kelvo {

// Edits one bookmark; "Ok" stores and saves it. A host may change the list meanwhile: what is
// stored is then that bookmark as it was shown, wherever it has gone; nothing, when it is no more.
class EditBookmarkDialog final : public ModalDialog {
 public:
  // `store` is borrowed; `index` is one of its bookmarks.
  EditBookmarkDialog(BookmarkStore& store, int32_t index) noexcept;

 private:
  bool OnInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) noexcept override;
  void OnDestroy() noexcept override;

  void StoreFields() noexcept;

  WideLayout layout_;
  BookmarkStore& store_;
  int32_t index_;
  wchar_t shown_path_[kTextCapacity];
  wchar_t shown_description_[kTextCapacity];
  int32_t shown_position_s_;
};

}  // namespace kelvo
