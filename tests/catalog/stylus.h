// The stylus: mouse messages at points of the screen. There is one screen for all programs: while
// these tests run, no other may move the pointer.
#pragma once

#include "tests/catalog/sheet_driver.h"

namespace kelvo::test {

class Stylus {
 public:
  explicit Stylus(SheetDriver& driver) : driver_(driver) {}
  // Leaves the pointer where no window is.
  ~Stylus() {
    Press(0);
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
  }

  // The messages are made on the sheet's thread: no move that is still on its way can come between
  // the pointer and them.
  void Tap(HWND control, POINT at, UINT down = WM_LBUTTONDOWN, UINT up = WM_LBUTTONUP) {
    driver_.Run([&] {
      const LPARAM point = MoveTo(control, at);
      PostMessageW(control, down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, point);
      PostMessageW(control, up, 0, point);
    });
  }
  // Taps and lets everything happen that follows; for taps that open nothing.
  void TapAndSettle(HWND control, POINT at) {
    Tap(control, at);
    driver_.Settle();
  }
  // The stylus rests on the control until that notices.
  void Hold(HWND control, POINT at) {
    driver_.Run([&] {
      const LPARAM point = MoveTo(control, at);
      Press(VK_LBUTTON);
      PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, point);
    });
  }
  void Lift() { Press(0); }

  // A point on one part of an item: TVHT_ONITEMSTATEICON and so on, LVHT_ONITEMLABEL and so on.
  POINT PartOf(HWND tree, HTREEITEM item, UINT part) {
    POINT found = {};
    driver_.Run([&] {
      RECT line = {};
      SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
      TreeView_GetItemRect(tree, item, &line, FALSE);
      found = FindPart(line, [&](POINT at) {
        TVHITTESTINFO hit = {};
        hit.pt = at;
        return TreeView_HitTest(tree, &hit) == item && hit.flags == part;
      });
    });
    return found;
  }
  POINT PartOf(HWND list, int item, UINT part) {
    POINT found = {};
    driver_.Run([&] {
      RECT line = {};
      ListView_GetItemRect(list, item, &line, LVIR_BOUNDS);
      found = FindPart(line, [&](POINT at) {
        LVHITTESTINFO hit = {};
        hit.pt = at;
        return ListView_HitTest(list, &hit) == item && hit.flags == part;
      });
    });
    return found;
  }
  void TapTree(HWND tree, const std::string& path, UINT part) {
    const HTREEITEM item = driver_.NodeIn(tree, path);
    ASSERT_TRUE(item) << path;
    TapAndSettle(tree, PartOf(tree, item, part));
  }
  void TapList(int item, UINT part) {
    TapAndSettle(driver_.List(), PartOf(driver_.List(), item, part));
  }

 private:
  template <class IsThere>
  static POINT FindPart(const RECT& line, IsThere is_there) {
    POINT at = {line.left, (line.top + line.bottom) / 2};
    while (at.x < line.right && !is_there(at)) ++at.x;
    EXPECT_LT(at.x, line.right) << "no such part";
    at.x += 2;  // not on its edge
    EXPECT_TRUE(is_there(at));
    return at;
  }
  static LPARAM MoveTo(HWND control, POINT at) {
    POINT on_screen = at;
    ClientToScreen(control, &on_screen);
    SetCursorPos(on_screen.x, on_screen.y);
    return MAKELPARAM(at.x, at.y);
  }
  // The button that the sheet's thread believes to be down; 0 is none.
  void Press(int button) {
    driver_.Run([button] {
      BYTE keys[256] = {};
      if (button != 0) keys[button] = 0x80;
      SetKeyboardState(keys);
    });
  }

  SheetDriver& driver_;
};

// The popup menu that the sheet's thread shows.
class Popup {
 public:
  explicit Popup(const SheetDriver& driver) : driver_(driver) {
    WaitFor([&] { return (window_ = Find(driver)) != nullptr; });
    EXPECT_TRUE(window_) << "no popup";
  }
  static HWND Find(const SheetDriver& driver) { return driver.Find(nullptr, L"#32768"); }

  // "Rename file 40021\n" an item.
  std::string Items() const {
    constexpr UINT kGetMenu = 0x01E1;
    const HMENU menu = reinterpret_cast<HMENU>(SendMessageW(window_, kGetMenu, 0, 0));
    std::string all;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      wchar_t text[100] = L"";
      GetMenuStringW(menu, static_cast<UINT>(i), text, 100, MF_BYPOSITION);
      all += Utf8(text) + " " + std::to_string(GetMenuItemID(menu, i)) + "\n";
    }
    return all;
  }
  void Choose(int item) const {
    Key(VK_HOME);
    for (int i = 0; i < item; ++i) Key(VK_DOWN);
    Key(VK_RETURN);
    AwaitEnd();
  }
  void Leave() const {
    Key(VK_ESCAPE);
    AwaitEnd();
  }

 private:
  void Key(WPARAM key) const { PostMessageW(window_, WM_KEYDOWN, key, 0); }
  void AwaitEnd() const {
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(window_) || !IsWindowVisible(window_); }));
  }

  const SheetDriver& driver_;
  HWND window_ = nullptr;
};

}  // namespace kelvo::test
