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
constexpr DWORD SHIDIF_SIZEDLGFULLSCREEN = 0x0004;  // leaves room for a menu bar
constexpr DWORD SHIDIF_SIPDOWN = 0x0008;            // lowers the input panel
BOOL WINAPI SHInitDialog(SHINITDLGINFO* info);

// Menu bars. The resource `nToolBarId` is a menu and an RCDATA table of 16-bit words: the menu's
// id, the number of buttons, then seven words for each button: image (0xFFFE for none), command,
// TBSTATE_ bits, TBSTYLE_ bits, string id, 0, and the index of its popup in the menu (0xFFFF for
// none).
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
HWND WINAPI SHFindMenuBar(HWND parent);            // the menu bar made for this window, or null
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
constexpr WPARAM kSettingInputPanel = 224;  // WM_SETTINGCHANGE: the input panel moved
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wparam, LPARAM lparam,
                                    SHACTIVATEINFO* info);

constexpr DWORD SHFS_SHOWTASKBAR = 0x0001;
constexpr DWORD SHFS_HIDETASKBAR = 0x0002;
constexpr DWORD SHFS_SHOWSIPBUTTON = 0x0004;
constexpr DWORD SHFS_HIDESIPBUTTON = 0x0008;
BOOL WINAPI SHFullScreen(HWND window, DWORD state);

// Tap-and-hold. List and tree views recognise it themselves and tell their dialog with WM_NOTIFY
// and an NMRGINFO whose code is GN_CONTEXTMENU. Other windows call SHRecognizeGesture from
// WM_LBUTTONDOWN: it blocks while the stylus is down and answers 0 for a tap or a drag.
struct SHRGINFO {
  DWORD cbSize;
  HWND hwndClient;
  POINT ptDown;  // in hwndClient's client area
  DWORD dwFlags;
};
constexpr DWORD SHRG_RETURNCMD = 0x0001;     // the result is GN_CONTEXTMENU
constexpr DWORD SHRG_NOTIFYPARENT = 0x0002;  // hwndClient's parent gets the notification
constexpr DWORD GN_CONTEXTMENU = 1000;
struct NMRGINFO {
  NMHDR hdr;
  POINT ptAction;  // on the screen
  DWORD_PTR dwItemSpec;
};
DWORD WINAPI SHRecognizeGesture(SHRGINFO* info);

// The software input panel (coredll.dll).
constexpr DWORD SIPF_OFF = 0x0000;
constexpr DWORD SIPF_ON = 0x0001;
BOOL WINAPI SipShowIM(DWORD flag);

}  // extern "C"
