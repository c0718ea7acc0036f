// The desktop's screen has neither task bar nor input-panel button: what a window asked for is only
// kept, on the window.
#include "base/windows/pocketpc.h"

// For tests: what SHFullScreen was last told of a window; 0 when it was told nothing.
extern "C" DWORD WINAPI KelvoFullScreenState(HWND window);

namespace kelvo {
namespace {

constexpr wchar_t kProperty[] = L"KelvoFullScreen";

constexpr DWORD kTaskBar = SHFS_SHOWTASKBAR | SHFS_HIDETASKBAR;
constexpr DWORD kPanelButton = SHFS_SHOWSIPBUTTON | SHFS_HIDESIPBUTTON;

// The bits that `asked` replaces.
DWORD Replaced(DWORD asked) noexcept {
  return ((asked & kTaskBar) ? kTaskBar : 0) | ((asked & kPanelButton) ? kPanelButton : 0);
}

}  // namespace
}  // namespace kelvo

BOOL WINAPI SHFullScreen(HWND window, DWORD state) {
  if (!IsWindow(window) || state == 0 || (state & ~(kelvo::kTaskBar | kelvo::kPanelButton)))
    return FALSE;
  const DWORD kept = (KelvoFullScreenState(window) & ~kelvo::Replaced(state)) | state;
  return SetPropW(window, kelvo::kProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(kept)));
}

DWORD WINAPI KelvoFullScreenState(HWND window) {
  return static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(GetPropW(window, kelvo::kProperty)));
}
