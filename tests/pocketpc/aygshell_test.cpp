#include <gtest/gtest.h>

#include "pocketpc/aygshell/full_screen.h"
#include "tests/pocketpc/recorded_dialog.h"
#include "tests/support/owned_objects.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

class ShellTest : public testing::Test {
 protected:
  void Open() {
    dialog = OpenDialog(&recorder);
    ASSERT_TRUE(dialog);
    ShowWindow(dialog, SW_SHOW);
    list = GetDlgItem(dialog, 1001);
    bar = recorder.bar.hwndMB;
    toolbar = bar ? GetWindow(bar, GW_CHILD) : nullptr;
  }
  void TearDown() override {
    SetEnvironmentVariableW(L"KELVO_SCREEN", nullptr);
    if (IsWindow(dialog)) DestroyWindow(dialog);
    Press(0);
  }
  void Tap(int index) {
    RECT item = {};
    ASSERT_TRUE(SendMessageW(toolbar, TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item)));
    const LPARAM at = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
    SendMessageW(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(toolbar, WM_LBUTTONUP, 0, at);
  }
  // The pointer's own messages are then no drag away from the point.
  static void PointAt(HWND window, POINT at) {
    ClientToScreen(window, &at);
    SetCursorPos(at.x, at.y);
    Pump();
  }
  static void Press(int button) {
    BYTE keys[256] = {};
    if (button) keys[button] = 0x80;
    SetKeyboardState(keys);
  }
  HMENU Popup(int command) {
    return reinterpret_cast<HMENU>(SendMessageW(bar, SHCMBM_GETSUBMENU, 0, command));
  }

  Recorder recorder;
  HWND dialog = nullptr;
  HWND list = nullptr;
  HWND bar = nullptr;
  HWND toolbar = nullptr;
};

TEST_F(ShellTest, FullScreenIsTheScreenWithoutItsBars) {
  const struct {
    const wchar_t* screen;
    LONG width, height;
  } cases[] = {
      {nullptr, 240, 268},      {L"640x480", 640, 428},  {L"320X240", 320, 188},
      {L"100x100", 100, 48},    {L"", 240, 268},         {L"99x320", 240, 268},
      {L"240x", 240, 268},      {L"x320", 240, 268},     {L"240x320 ", 240, 268},
      {L"-240x320", 240, 268},  {L"4097x320", 240, 268}, {L"99999999999999999x320", 240, 268},
      {L"240x320x2", 240, 268}, {L"wide", 240, 268},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << (c.screen ? c.screen : L"(none)"));
    SetEnvironmentVariableW(L"KELVO_SCREEN", c.screen);
    Open();
    EXPECT_EQ(ClientSize(dialog).cx, c.width);
    EXPECT_EQ(ClientSize(dialog).cy, c.height);
    const RECT frame = WindowRect(dialog);
    const RECT want = {frame.left, frame.bottom, frame.right, frame.bottom + 26};
    EXPECT_TRUE(EqualRect(&want, &recorder.BarPlace()));
    DestroyWindow(dialog);
  }
}

TEST_F(ShellTest, DoesWhatTheFlagsSay) {
  const struct {
    DWORD flags;
    bool done, panel;
  } cases[] = {{SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN, true, true},
               {SHIDIF_SIZEDLGFULLSCREEN, false, true},
               {SHIDIF_DONEBUTTON | SHIDIF_SIPDOWN, true, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.flags);
    SipShowIM(SIPF_ON);
    recorder = Recorder();
    recorder.flags = c.flags;
    Open();
    EXPECT_EQ((GetWindowLongW(dialog, GWL_STYLE) & WS_SYSMENU) != 0, c.done);
    SendMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    Pump();
    EXPECT_EQ(recorder.commands, c.done ? std::vector<int>{IDOK} : std::vector<int>{});
    EXPECT_EQ(KelvoInputPanelState() != FALSE, c.panel);
    DestroyWindow(dialog);
  }
}

TEST_F(ShellTest, BarFollowsItsDialog) {
  Open();
  EXPECT_TRUE(IsWindowVisible(bar));
  EXPECT_EQ(SHFindMenuBar(dialog), bar);
  MoveWindow(dialog, 40, 50, 300, 200, TRUE);
  const RECT want = {40, 250, 340, 276};
  EXPECT_TRUE(EqualRect(&want, &recorder.BarPlace()));
  for (const BOOL on : {FALSE, TRUE}) {
    EnableWindow(dialog, on);
    EXPECT_EQ(IsWindowEnabled(bar), on);
    ShowWindow(dialog, on ? SW_SHOW : SW_HIDE);
    EXPECT_EQ(IsWindowVisible(bar), on);
  }
  // The newest one is seen, and the former comes back.
  SHMENUBARINFO second = BarOf(dialog, 0, 0, SHCMBF_EMPTYBAR);
  ASSERT_TRUE(SHCreateMenuBar(&second));
  EXPECT_EQ(SendMessageW(second.hwndMB, TB_BUTTONCOUNT, 0, 0), 0);
  EXPECT_EQ(SHFindMenuBar(dialog), second.hwndMB);
  EXPECT_FALSE(IsWindowVisible(bar));
  for (const int how : {SW_SHOW, SW_HIDE}) {
    ShowWindow(bar, how);
    EXPECT_EQ(IsWindowVisible(bar), how == SW_SHOW);
    EXPECT_EQ(IsWindowVisible(second.hwndMB), how == SW_HIDE);
  }
  SHMENUBARINFO hidden = BarOf(dialog, 50, 114, SHCMBF_HIDDEN);
  ASSERT_TRUE(SHCreateMenuBar(&hidden));
  EXPECT_FALSE(IsWindowVisible(hidden.hwndMB));
  EXPECT_TRUE(IsWindowVisible(second.hwndMB));
  DestroyWindow(dialog);
  EXPECT_FALSE(IsWindow(bar));
  EXPECT_EQ(SHFindMenuBar(dialog), nullptr);
}

TEST_F(ShellTest, ButtonsAndPopupsSendCommands) {
  Open();
  ASSERT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), 8);
  Tap(1);
  Pump();
  EXPECT_EQ(recorder.sources, std::vector<LPARAM>{reinterpret_cast<LPARAM>(bar)});
  SendMessageW(bar, TB_ENABLEBUTTON, 40019, FALSE);
  EXPECT_FALSE(SendMessageW(bar, TB_ISBUTTONENABLED, 40019, 0));
  Tap(1);
  Pump();
  recorder.menu_keys = {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN};
  Tap(6);
  Pump();
  recorder.menu_keys = {VK_ESCAPE};
  Tap(6);
  Pump();
  SendMessageW(bar, TB_ENABLEBUTTON, 40019, TRUE);
  Tap(1);
  Pump();
  EXPECT_EQ(recorder.commands, (std::vector<int>{40019, 40039, 40019}));

  EXPECT_EQ(GetMenuItemID(Popup(40032), 0), 40101u);
  EXPECT_EQ(GetMenuItemID(Popup(40033), 0), 40034u);
  EXPECT_EQ(Popup(40019), nullptr);
  EXPECT_EQ(Popup(1234), nullptr);
  const HMENU other = CreatePopupMenu();
  const LRESULT old = reinterpret_cast<LRESULT>(Popup(40033));
  const LPARAM menu = reinterpret_cast<LPARAM>(other);
  EXPECT_EQ(SendMessageW(bar, SHCMBM_SETSUBMENU, 40033, menu), old);
  EXPECT_EQ(Popup(40033), other);
  EXPECT_EQ(SendMessageW(bar, SHCMBM_SETSUBMENU, 1234, menu), 0);
  DestroyMenu(other);

  // Tips come from strings; a button with a label and one that is not there have none.
  for (const UINT_PTR command : {40023, 40010, 1234}) {
    NMTTDISPINFOW info = {};
    info.hdr.code = TTN_GETDISPINFOW;
    info.hdr.idFrom = command;
    SendMessageW(bar, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(info.lpszText), command == 40023 ? L"Delete Selected Files" : L"");
  }
}

TEST_F(ShellTest, OddBarsWorkAndDamagedOnesAreRefused) {
  recorder.wants_bar = false;
  Open();
  const struct {
    const char* name;
    UINT id;
    int bitmap;
    BOOL want;
  } cases[] = {
      {"no bitmap asked for", 50, 0, TRUE},
      {"images and strings that are not there", 51, 114, TRUE},
      {"popup without a menu", 60, 114, FALSE},
      {"missing menu", 61, 114, FALSE},
      {"popup beyond the menu", 62, 114, FALSE},
      {"table cut inside the buttons", 63, 114, FALSE},
      {"65535 buttons", 64, 114, FALSE},
      {"table cut inside its head", 65, 114, FALSE},
      {"no table", 66, 114, FALSE},
      {"no id", 0, 114, FALSE},
      {"id that is an address", 0x12345678, 114, FALSE},
      {"no such bitmap", 50, 77, FALSE},
      {"negative bitmap", 50, -1, FALSE},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    SHMENUBARINFO info = BarOf(dialog, c.id, c.bitmap);
    info.hwndMB = dialog;
    EXPECT_EQ(SHCreateMenuBar(&info), c.want);
    EXPECT_EQ(info.hwndMB != nullptr, c.want != FALSE);
    if (info.hwndMB) DestroyWindow(info.hwndMB);
    EXPECT_EQ(SHFindMenuBar(dialog), nullptr);
  }
  EXPECT_FALSE(SHCreateMenuBar(nullptr));
  SHMENUBARINFO info = BarOf(dialog, 50, 114);
  info.cbSize = 4;
  EXPECT_FALSE(SHCreateMenuBar(&info));
  info = BarOf(nullptr, 50, 114);
  EXPECT_FALSE(SHCreateMenuBar(&info));
  EXPECT_FALSE(SHInitDialog(nullptr));
  SHINITDLGINFO init = {SHIDIM_FLAGS, nullptr, SHIDIF_DONEBUTTON};
  EXPECT_FALSE(SHInitDialog(&init));
}

// A right click counts as holding; what is held is selected and its dialog told.
TEST_F(ShellTest, HoldingAnItemSelectsItAndTellsTheDialog) {
  Open();
  NMITEMACTIVATE click = {};
  click.hdr = {list, 1001, static_cast<UINT>(NM_RCLICK)};
  SendMessageW(dialog, WM_NOTIFY, 1001, reinterpret_cast<LPARAM>(&click));
  LVITEMW item = {};
  item.mask = LVIF_TEXT;
  wchar_t text[] = L"Item";
  item.pszText = text;
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)), 0);
  }
  LVCOLUMNW column = {};
  column.mask = LVCF_WIDTH;
  column.cx = 100;
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  RECT label = {};
  ListView_GetItemRect(list, 1, &label, LVIR_LABEL);
  POINT at = {label.left + 5, (label.top + label.bottom) / 2};
  PointAt(list, at);
  Press(VK_LBUTTON);
  SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  ASSERT_EQ(recorder.gestures.size(), 2u);
  for (const NMRGINFO& gesture : recorder.gestures) {
    EXPECT_EQ(gesture.hdr.hwndFrom, list);
    EXPECT_EQ(gesture.hdr.idFrom, 1001u);
  }
  ClientToScreen(list, &at);
  EXPECT_EQ(recorder.gestures[1].ptAction.x, at.x);
  EXPECT_EQ(recorder.gestures[1].ptAction.y, at.y);
  EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_FOCUSED | LVNI_SELECTED), 1);
}

TEST_F(ShellTest, GesturesAreTapsDragsAndHolds) {
  Open();
  const struct {
    const char* name;
    int key;
    UINT queued;
    DWORD flags, want;
    size_t notified;
  } cases[] = {
      {"nothing pressed", 0, 0, SHRG_RETURNCMD, 0, 0},
      {"lifted", VK_LBUTTON, WM_LBUTTONUP, SHRG_RETURNCMD | SHRG_NOTIFYPARENT, 0, 0},
      {"held", VK_LBUTTON, 0, SHRG_RETURNCMD, GN_CONTEXTMENU, 0},
      {"held, notification only", VK_LBUTTON, 0, SHRG_NOTIFYPARENT, 0, 1},
      {"right button", VK_RBUTTON, 0, SHRG_RETURNCMD | SHRG_NOTIFYPARENT, GN_CONTEXTMENU, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    PointAt(list, {10, 10});
    recorder.gestures.clear();
    Press(c.key);
    if (c.queued) PostMessageW(list, c.queued, 0, MAKELPARAM(10, 10));
    SHRGINFO info = {sizeof(info), list, {10, 10}, c.flags};
    EXPECT_EQ(SHRecognizeGesture(&info), c.want);
    EXPECT_EQ(recorder.gestures.size(), c.notified);
  }
  EXPECT_EQ(SHRecognizeGesture(nullptr), 0u);
}

TEST_F(ShellTest, FullScreenStateIsKeptByPairs) {
  Open();
  EXPECT_EQ(KelvoFullScreenState(dialog), 0u);
  EXPECT_TRUE(SHFullScreen(dialog, SHFS_HIDETASKBAR | SHFS_HIDESIPBUTTON));
  EXPECT_TRUE(SHFullScreen(dialog, SHFS_SHOWSIPBUTTON));
  EXPECT_EQ(KelvoFullScreenState(dialog), SHFS_HIDETASKBAR | SHFS_SHOWSIPBUTTON);
  EXPECT_FALSE(SHFullScreen(dialog, 0) || SHFullScreen(dialog, 0x100) ||
               SHFullScreen(nullptr, SHFS_HIDETASKBAR));
  SHACTIVATEINFO activate = {};
  EXPECT_TRUE(SHHandleWMSettingChange(dialog, kSettingInputPanel, 0, &activate));
  EXPECT_FALSE(SHHandleWMSettingChange(dialog, 0, 0, &activate) ||
               SHHandleWMSettingChange(dialog, kSettingInputPanel, 0, nullptr));
}

TEST_F(ShellTest, HundredOpeningsLeaveNothingBehind) {
  test::Owned before;
  for (int i = 0; i < 110; ++i) {
    if (i == 10) before = test::CountOwned();  // what the system keeps from the first times on
    Open();
    SHMENUBARINFO damaged = BarOf(dialog, 62, 114);
    SHCreateMenuBar(&damaged);
    DestroyWindow(dialog);
    Pump();
  }
  EXPECT_EQ(test::Grown(before, 100), "");
}

}  // namespace
}  // namespace kelvo
