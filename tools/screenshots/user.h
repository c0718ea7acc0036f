// Uses the windows of another thread as a user does; the windows are told apart by their kind
// alone, because their captions are in any language.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>

namespace screenshots {

// Waits end the program with a message when what they wait for does not come.
class User {
 public:
  explicit User(DWORD ui_thread) : ui_thread_(ui_thread) {}

  // The dialog, sheet or box that takes input: the only one that is visible and enabled.
  HWND Dialog() const;
  // The page of the sheet, or the dialog itself.
  HWND Page() const;
  HWND Control(int id) const { return GetDlgItem(Page(), id); }
  HWND MenuBar() const;
  // All that is open, on the screen.
  RECT Windows() const;

  void WaitForDialog() const;
  // Does something after which another dialog takes input: one more, or the one below.
  void ChangeDialog(const std::function<void()>& act) const;
  void Command(int id) const;  // posted to the page
  void OpenByCommand(int id) const;
  void CloseBy(int id) const;  // a button of the dialog
  void Done() const;           // of the caption
  void GoTo(int page) const;

  void OpenMenu(int button) const;  // of the menu bar
  void OpenContextMenu(HWND control, const RECT& item) const;
  void CloseMenu() const;
  void Tap(HWND window, POINT at) const;

  void Wait(const char* what, const std::function<bool()>& done) const;

 private:
  void Press(HWND window, POINT at, DWORD down, DWORD up) const;
  bool InMenu() const;

  DWORD ui_thread_;
};

// Controls.
HTREEITEM NextItem(HWND tree, UINT relation, HTREEITEM item);
void ExpandAll(HWND tree, HTREEITEM from);
// The first item below `from`, in the order of the tree, that is a leaf.
HTREEITEM FirstLeaf(HWND tree, HTREEITEM from);
void SelectTreeItem(HWND tree, HTREEITEM item);
// Where the item's check box, icon (a little more to the right) or label is.
RECT TreeItemLabel(HWND tree, HTREEITEM item);
void SelectListItem(HWND list, int item);
void CheckListItem(HWND list, int item);

}  // namespace screenshots
