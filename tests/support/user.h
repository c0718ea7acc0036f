// Uses the windows of another thread of this program as a user does: looks for them, reads lists
// and trees, gives commands, taps. There is one screen for all programs: while a test taps, no
// other may move the pointer.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

namespace kelvo::test {

// Waits for as long as anything here may take; false when it did not come.
bool WaitFor(const std::function<bool()>& done);

class User {
 public:
  // `complain` is told what did not come, on the using thread.
  using Complain = void (*)(const std::string& what);

  // On the thread whose windows are used, which must handle messages while it is used.
  explicit User(Complain complain);
  ~User();
  User(const User&) = delete;
  User& operator=(const User&) = delete;

  // All below is for the using thread.

  // Runs `action` on the windows' thread, between two messages. Lists and trees are read this way:
  // a switch of threads for each item takes longer.
  void Run(const std::function<void()>& action) const;
  // The same without waiting: for what opens a dialog.
  void Start(std::function<void()> action) const;
  // Returns when all that has been posted so far is done, and what that posted in its turn.
  void Settle() const;
  bool Wait(const std::string& what, const std::function<bool()>& done) const;

  // Windows. Of this kind and caption (null: any) the visible one; enabled, when that matters.
  HWND Find(const wchar_t* caption, const wchar_t* kind, bool enabled = false) const;
  HWND FindAny(const std::function<bool(HWND)>& fits) const;  // the one in front
  // What takes input: a dialog, sheet or box, of any caption or of this one, or the player.
  HWND Dialog() const;
  HWND Window(const wchar_t* caption) const { return Find(caption, L"#32770", true); }
  HWND WaitForWindow(const wchar_t* caption) const;
  // The one that opens above `below`; null when `below` goes instead.
  HWND NextDialog(HWND below) const;
  // The page that a sheet shows, or the dialog itself; without one of the dialog that takes input.
  HWND Page(HWND dialog = nullptr) const;
  HWND Control(int id) const { return GetDlgItem(Page(), id); }
  HWND MenuBar() const;  // of that dialog
  static std::string Text(HWND window);
  static std::string Text(HWND dialog, int id) { return Text(GetDlgItem(dialog, id)); }
  static std::string BoxText(HWND box);  // what a message box says

  // Commands, to the page.
  void Do(int command) const;
  void Post(int command) const;  // for what opens a dialog
  // Chooses `answer` in a dialog and waits until it is gone and what follows has happened.
  void Answer(const wchar_t* caption, int answer) const { Answer(WaitForWindow(caption), answer); }
  void Answer(HWND dialog, int answer) const;
  void Done() const;  // of the caption
  void GoTo(int page) const;
  bool Enabled(int command) const;  // a button of the menu bar
  void Key(HWND window, WPARAM key) const;

  // Lists: a line an item, "x" checked, "*" selected.
  std::string Items(HWND list) const;
  std::string Cell(HWND list, int item, int column) const;
  static void Check(HWND list, int item, bool checked = true);
  static void Select(HWND list, int item, bool selected = true);
  // "Title 150|..."
  std::string Columns(HWND list) const;
  void TapHeader(HWND list, int column) const;

  // Trees: a line a node, indented, "x" checked. Nodes are named by their labels: "Sine\\One".
  std::string Nodes(HWND tree) const;
  HTREEITEM Node(HWND tree, const std::string& path) const;
  void SelectNode(HWND tree, const std::string& path) const;
  void ExpandAll(HWND tree) const;
  static std::string Label(HWND tree, HTREEITEM item);

  // The stylus: taps and lets everything happen that follows; for taps that open nothing.
  void Tap(HWND window, POINT at) const;
  // Without waiting for what follows.
  void StartTap(HWND window, POINT at, UINT down = WM_LBUTTONDOWN, UINT up = WM_LBUTTONUP) const;
  void Hold(HWND window, POINT at) const;  // rests there until the window notices
  void Lift() const { Press(0); }
  // A point on one part of an item: TVHT_ONITEMSTATEICON and so on, LVHT_ONITEMLABEL and so on.
  POINT PartOf(HWND tree, HTREEITEM item, UINT part) const;
  POINT PartOf(HWND list, int item, UINT part) const;
  void TapTree(HWND tree, const std::string& path, UINT part) const;
  void TapList(HWND list, int item, UINT part) const { Tap(list, PartOf(list, item, part)); }
  void StartTapOnButton(int command) const;  // of the menu bar

  // The popup menu that is open: "Rename file 40021\n" an item.
  std::string MenuItems() const;
  void ChooseMenuItem(int item) const;
  void LeaveMenu() const;
  HWND Menu() const { return Find(nullptr, L"#32768"); }

 private:
  HWND WaitForMenu() const;
  void AwaitMenusEnd(HWND menu) const;
  POINT PartAlong(const RECT& line, const std::function<bool(POINT)>& is_there) const;
  void Press(int button) const;

  Complain complain_;
  DWORD thread_;
  HWND hands_;
};

}  // namespace kelvo::test
