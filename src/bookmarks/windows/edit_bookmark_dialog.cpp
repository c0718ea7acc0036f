#include "bookmarks/windows/edit_bookmark_dialog.h"

#include "base/windows/feature_dialog.h"
#include "bookmarks/bookmark_store.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {

EditBookmarkDialog::EditBookmarkDialog(BookmarkStore& store, int32_t index) noexcept
    : store_(store), index_(index), shown_position_s_(store.At(index).position_s) {
  CopyWide(shown_path_, kTextCapacity, store.At(index).path.c_str());
  CopyWide(shown_description_, kTextCapacity, store.At(index).description.c_str());
}

bool EditBookmarkDialog::OnInit() noexcept {
  MakeFullScreen(window(), 0);
  SHMENUBARINFO bar = {};
  bar.cbSize = sizeof(bar);
  bar.hwndParent = window();
  bar.dwFlags = SHCMBF_EMPTYBAR;
  bar.hInstRes = OwnModule();
  CreateLocalizedMenuBar(&bar);
  layout_.Fit(window());
  wchar_t minutes[kPositionTextCapacity];
  wchar_t seconds[kPositionTextCapacity];
  FormatEditPosition(shown_position_s_, minutes, seconds);
  SetWindowTextW(control(IDC_BOOKMARK_PATH), shown_path_);
  SetWindowTextW(control(IDC_BOOKMARK_DESCRIPTION), shown_description_);
  SetWindowTextW(control(IDC_BOOKMARK_MINUTES), minutes);
  SetWindowTextW(control(IDC_BOOKMARK_SECONDS), seconds);
  SipShowIM(SIPF_ON);
  return true;
}

void EditBookmarkDialog::StoreFields() noexcept {
  wchar_t path[kTextCapacity] = {};
  wchar_t description[kTextCapacity] = {};
  wchar_t minutes[kPositionTextCapacity] = {};
  wchar_t seconds[kPositionTextCapacity] = {};
  GetWindowTextW(control(IDC_BOOKMARK_PATH), path, kTextCapacity);
  GetWindowTextW(control(IDC_BOOKMARK_DESCRIPTION), description, kTextCapacity);
  GetWindowTextW(control(IDC_BOOKMARK_MINUTES), minutes, kPositionTextCapacity);
  GetWindowTextW(control(IDC_BOOKMARK_SECONDS), seconds, kPositionTextCapacity);
  store_.Update(store_.Find(index_, shown_path_, shown_position_s_, shown_description_), path,
                ParseEditPosition(minutes, seconds), description);
}

ModalDialog::Handled EditBookmarkDialog::OnCommand(int id, int) noexcept {
  switch (id) {
    case IDOK:
      StoreFields();
      Close(IDOK);
      return Handled::kYes;
    case IDCANCEL:
      Close(IDCANCEL);
      return Handled::kYes;
    default:
      return Handled::kNo;
  }
}

ModalDialog::Handled EditBookmarkDialog::OnMessage(UINT message, WPARAM, LPARAM,
                                                   LRESULT*) noexcept {
  if (message == WM_SIZE) layout_.Fit(window());
  return Handled::kNo;
}

void EditBookmarkDialog::OnDestroy() noexcept {
  SipShowIM(SIPF_OFF);
}

}  // namespace kelvo
