// Declarations of the Pocket PC shell and of the core that desktop headers lack. On the device they
// come from aygshell.dll and coredll.dll; on the desktop from stand-ins of the same names.
#pragma once

#include <windows.h>

extern "C" {

// Full-screen dialogs.
struct SHINITDLGINFO {
  DWORD dwMask;
  HWND hDlg;
  DWORD dwFlags;
};
constexpr DWORD SHIDIM_FLAGS = 0x0001;
constexpr DWORD SHIDIF_DONEBUTTON = 0x0001;  // "OK" in the caption; sends command 1
constexpr DWORD SHIDIF_SIZEDLG = 0x0002;
constexpr DWORD SHIDIF_SIZEDLGFULLSCREEN = 0x0004;
constexpr DWORD SHIDIF_SIPDOWN = 0x0008;  // lowers the input panel
BOOL WINAPI SHInitDialog(SHINITDLGINFO* info);

// Menu bars. The resource `nToolBarId` is a menu and an RCDATA table of 16-bit words: the menu's
// id, the number of buttons, then for each button image, command, TBSTATE_ and TBSTYLE_ bits,
// string id, 0, and the index of its popup in the menu (0xFFFF for none).
struct SHMENUBARINFO {
  DWORD cbSize;
  HWND hwndParent;
  DWORD dwFlags;
  UINT nToolBarId;
  HINSTANCE hInstRes;
  int nBmpId;
  int cBmpImages;
  HWND hwndMB;  // out
};
constexpr DWORD SHCMBF_EMPTYBAR = 0x0001;
constexpr DWORD SHCMBF_HIDDEN = 0x0002;
constexpr DWORD SHCMBF_HIDESIPBUTTON = 0x0004;
BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info);
constexpr UINT SHCMBM_SETSUBMENU = WM_USER + 400;  // command, HMENU -> old HMENU
constexpr UINT SHCMBM_GETSUBMENU = WM_USER + 401;  // 0, command -> HMENU

struct SHACTIVATEINFO {
  DWORD cbSize;
  HWND hwndLastFocus;
  UINT fSipUp : 1;
  UINT fSipOnDeactivation : 1;
  UINT fActive : 1;
  UINT fReserved : 29;
};
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wparam, LPARAM lparam,
                                    SHACTIVATEINFO* info);

constexpr DWORD SHFS_SHOWTASKBAR = 0x0001;
constexpr DWORD SHFS_HIDETASKBAR = 0x0002;
constexpr DWORD SHFS_SHOWSIPBUTTON = 0x0004;
constexpr DWORD SHFS_HIDESIPBUTTON = 0x0008;
BOOL WINAPI SHFullScreen(HWND window, DWORD state);

// Tap-and-hold: blocks while the stylus is down and tells whether it was a long press.
struct SHRGINFO {
  DWORD cbSize;
  HWND hwndClient;
  POINT ptDown;
  DWORD dwFlags;
};
constexpr DWORD SHRG_RETURNCMD = 0x0001;
constexpr DWORD GN_CONTEXTMENU = 1000;  // notification code and result of a long press
DWORD WINAPI SHRecognizeGesture(SHRGINFO* info);

// The software input panel (coredll.dll).
constexpr DWORD SIPF_OFF = 0x0000;
constexpr DWORD SIPF_ON = 0x0001;
BOOL WINAPI SipShowIM(DWORD flag);

}  // extern "C"
