#include "bookmarks/windows/bookmarks_shell.h"

#include "base/windows/feature_dialog.h"
#include "bookmarks/windows/bookmarks_dialog.h"
#include "entry/language/localized.h"
#include "res/resource_ids.h"

namespace kelvo {

bool BookmarksShell::Run(WindowHandle parent, BookmarkStore& store, BookmarkOrder& order) noexcept {
  const DialogGuard guard;
  if (!guard.taken()) return false;
  InitCommonControls();
  const HWND host = static_cast<HWND>(parent);
  BookmarksDialog dialog(host, store, order);
  RunDialog(dialog, IDD_BOOKMARKS, host);
  return true;
}

}  // namespace kelvo
