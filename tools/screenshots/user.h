// Uses the windows of another thread as a user does; the windows are told apart by their kind
// alone, because their captions are in any language.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <vector>

namespace screenshots {

// Waits end the program with a message when what they wait for does not come.
class User {
 public:
  explicit User(DWORD ui_thread) : ui_thread_(ui_thread) {}

  // The dialog, sheet or box that takes input, or the player: the only one of them that is visible
  // and enabled.
  HWND Dialog() const;
  // The page of the sheet, or the dialog itself.
  HWND Page() const;
  HWND Control(int id) const { return GetDlgItem(Page(), id); }
  HWND MenuBar() const;
  // All that is open, on the screen.
  std::vector<RECT> Windows() const;

  void WaitForDialog() const;
  // Does something after which another dialog takes input: one more, or the one below.
  void ChangeDialog(const std::function<void()>& act) const;
  void Command(int id) const;  // to the page; one that opens nothing
  void OpenByCommand(int id) const;
  void OpenBox(int command) const;  // a message box
  void CloseBy(int id) const;       // a button of the dialog
  void Done() const;                // of the caption
  void GoTo(int page) const;

  void OpenMenu(int button) const;  // of the menu bar
  void OpenContextMenu(HWND control, POINT at) const;
  void CloseMenu() const;
  void Tap(HWND window, POINT at) const;

  void Wait(const char* what, const std::function<bool()>& done) const;

 private:
  void Activate() const;
  void Click(HWND window, POINT at, DWORD down, DWORD up) const;
  void OpenMenuAt(HWND window, POINT at, DWORD down, DWORD up) const;
  bool InMenu() const;

  DWORD ui_thread_;
};

// Controls.
HTREEITEM NextItem(HWND tree, UINT relation, HTREEITEM item);
void ExpandAll(HWND tree, HTREEITEM from);
// The first item below `from`, in the order of the tree, that is a leaf.
HTREEITEM FirstLeaf(HWND tree, HTREEITEM from);
void SelectTreeItem(HWND tree, HTREEITEM item);
// Left of it are the item's icon and, left of that, its check box.
RECT TreeItemLabel(HWND tree, HTREEITEM item);
POINT ListItemText(HWND list, int item);
void CheckListItem(HWND list, int item);

}  // namespace screenshots
