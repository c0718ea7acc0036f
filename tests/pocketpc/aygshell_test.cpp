#include <gtest/gtest.h>

#include <string>

#include "tests/pocketpc/recorded_dialog.h"

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
  }
  void TearDown() override {
    SetEnvironmentVariableW(L"KELVO_SCREEN", nullptr);
    if (IsWindow(dialog)) DestroyWindow(dialog);
    Press(0);
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

  Recorder recorder;
  HWND dialog = nullptr;
  HWND list = nullptr;
  HWND bar = nullptr;
};

TEST_F(ShellTest, FullScreenIsTheScreenWithoutItsBars) {
  const struct {
    const wchar_t* screen;
    LONG width, height;
  } cases[] = {
      {nullptr, 240, 268},     {L"640x480", 640, 428},   {L"100x100", 100, 48},
      {L"99x320", 240, 268},   {L"x320", 240, 268},      {L"-240x320", 240, 268},
      {L"4097x320", 240, 268}, {L"240x320x2", 240, 268},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << (c.screen ? c.screen : L"(none)"));
    SetEnvironmentVariableW(L"KELVO_SCREEN", c.screen);
    Open();
    EXPECT_EQ(ClientSize(dialog).cx, c.width);
    EXPECT_EQ(ClientSize(dialog).cy, c.height);
    const RECT frame = WindowRect(dialog);
    const RECT want = {frame.left, frame.bottom, frame.right, frame.bottom + 26};
    const RECT place = WindowRect(bar);
    EXPECT_TRUE(EqualRect(&want, &place));
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

TEST_F(ShellTest, TheNewestBarIsSeenAndTheFormerComesBack) {
  Open();
  EXPECT_EQ(SHFindMenuBar(dialog), bar);
  MoveWindow(dialog, 40, 50, 300, 200, TRUE);
  const RECT want = {40, 250, 340, 276};
  const RECT place = WindowRect(bar);
  EXPECT_TRUE(EqualRect(&want, &place));
  SHMENUBARINFO second = BarOf(dialog, 0, 0, SHCMBF_EMPTYBAR);
  ASSERT_TRUE(SHCreateMenuBar(&second));
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
  DestroyWindow(dialog);
  EXPECT_FALSE(IsWindow(bar));
}

TEST_F(ShellTest, BarsHavePopupsAndTips) {
  Open();
  ASSERT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), 4);
  const LRESULT popup = SendMessageW(bar, SHCMBM_GETSUBMENU, 0, 40032);
  EXPECT_EQ(GetMenuItemID(reinterpret_cast<HMENU>(popup), 0), 40101u);
  // A button with a label and one that is not there have no tips.
  for (const UINT_PTR command : {40023, 40010, 1234}) {
    NMTTDISPINFOW info = {};
    info.hdr.code = TTN_GETDISPINFOW;
    info.hdr.idFrom = command;
    SendMessageW(bar, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(info.lpszText), command == 40023 ? L"Delete Selected Files" : L"");
  }
}

TEST_F(ShellTest, DamagedBarsAreRefused) {
  recorder.wants_bar = false;
  Open();
  const struct {
    UINT id;
    int bitmap;
    BOOL want;
  } cases[] = {{50, 0, TRUE},    {60, 114, FALSE},        {61, 114, FALSE}, {62, 114, FALSE},
               {63, 114, FALSE}, {64, 114, FALSE},        {65, 114, FALSE}, {66, 114, FALSE},
               {50, 77, FALSE},  {0x12345678, 114, FALSE}};
  for (const auto& c : cases) {
    SHMENUBARINFO info = BarOf(dialog, c.id, c.bitmap);
    EXPECT_EQ(SHCreateMenuBar(&info), c.want) << c.id;
    if (info.hwndMB) DestroyWindow(info.hwndMB);
    EXPECT_EQ(SHFindMenuBar(dialog), nullptr);
  }
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

}  // namespace
}  // namespace kelvo
