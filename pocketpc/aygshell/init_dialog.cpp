#include "base/windows/pocketpc.h"
#include "pocketpc/aygshell/frame.h"

namespace kelvo {
namespace {

bool FillScreenWith(HWND dialog, HWND root) noexcept {
  const bool is_page = SheetOfPage(dialog) != nullptr;
  FillScreen(root, is_page);
  return !is_page || FillSheet(dialog);
}

}  // namespace
}  // namespace kelvo

BOOL WINAPI SHInitDialog(SHINITDLGINFO* info) {
  if (!info || !IsWindow(info->hDlg)) return FALSE;
  const HWND dialog = info->hDlg;
  const HWND root = GetAncestor(dialog, GA_ROOT);
  const DWORD flags = (info->dwMask & SHIDIM_FLAGS) ? info->dwFlags : 0;
  const bool sized = (flags & (SHIDIF_SIZEDLG | SHIDIF_SIZEDLGFULLSCREEN)) != 0;
  const bool done = (flags & SHIDIF_DONEBUTTON) != 0;
  if (!kelvo::MakeFrame(root) || !kelvo::WatchGestures(dialog)) return FALSE;
  if ((done || sized) && !kelvo::SetDone(root, done)) return FALSE;
  if (sized && !kelvo::FillScreenWith(dialog, root)) return FALSE;
  if (flags & SHIDIF_SIPDOWN) SipShowIM(SIPF_OFF);
  return TRUE;
}

// On the device dialogs make room for the input panel. Here the panel covers nothing, so a full
// screen stays one.
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wparam, LPARAM, SHACTIVATEINFO* info) {
  return info && IsWindow(window) && wparam == kSettingInputPanel;
}
