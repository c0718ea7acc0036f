// Property sheets as the shell shows them.
#include <gtest/gtest.h>
#include <windows.h>

#include <prsht.h>

#include "tests/pocketpc/recorded_dialog.h"

namespace kelvo {
namespace {

INT_PTR CALLBACK PageProc(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    lparam = reinterpret_cast<const PROPSHEETPAGEW*>(lparam)->lParam;
  }
  return RecordedProc(page, message, wparam, lparam);
}

int CALLBACK TabsAtBottom(HWND sheet, UINT message, LPARAM) {
  if (message == PSCB_INITIALIZED) {
    const HWND tabs = PropSheet_GetTabControl(sheet);
    SetWindowLongW(tabs, GWL_STYLE, GetWindowLongW(tabs, GWL_STYLE) | TCS_BOTTOM);
  }
  return 0;
}

bool ABarLiesAt(LONG x, LONG y) {
  const HWND bar = GetAncestor(WindowFromPoint({x + 1, y + 1}), GA_ROOT);
  wchar_t kind[32] = L"";
  GetClassNameW(bar, kind, 32);
  return lstrcmpW(kind, L"KelvoMenuBar") == 0 && WindowRect(bar).left == x &&
         WindowRect(bar).top == y;
}

class SheetTest : public testing::Test {
 protected:
  void SetUp() override {
    PROPSHEETPAGEW page[kPages] = {};
    for (int i = 0; i < kPages; ++i) {
      page[i].dwSize = sizeof(page[i]);
      page[i].dwFlags = PSP_USETITLE;
      page[i].pszTitle = kTitles[i];
      page[i].hInstance = GetModuleHandleW(nullptr);
      page[i].pszTemplate = MAKEINTRESOURCEW(2);
      page[i].pfnDlgProc = &PageProc;
      page[i].lParam = reinterpret_cast<LPARAM>(&recorders[i]);
    }
    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof(header);
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS | PSH_USECALLBACK;
    header.nPages = kPages;
    header.ppsp = page;
    header.pszCaption = L"Playlist Organizer";
    header.pfnCallback = &TabsAtBottom;
    sheet = reinterpret_cast<HWND>(PropertySheetW(&header));
    ASSERT_TRUE(sheet);
    ShowWindow(sheet, SW_SHOW);
  }
  void TearDown() override {
    if (IsWindow(sheet)) DestroyWindow(sheet);
  }
  HWND Page() const { return PropSheet_GetCurrentPageHwnd(sheet); }

  static constexpr int kPages = 3;
  static constexpr const wchar_t* kTitles[kPages] = {L"Playlist Catalog", L"Media Catalog",
                                                     L"Curr. Playlist"};
  Recorder recorders[kPages];
  HWND sheet = nullptr;
};

TEST_F(SheetTest, PagesFillTheSheetAndTabsLieOnTheirEdge) {
  for (const LONG width : {240, 400}) {
    if (width != 240) MoveWindow(sheet, 70, 60, width, 500, TRUE);
    const SIZE client = ClientSize(sheet);
    if (width == 240) {
      EXPECT_EQ(client.cx, 240);
      EXPECT_EQ(client.cy, 268);
    }
    for (int i = 0; i < kPages; ++i) {
      SCOPED_TRACE(i);
      PropSheet_SetCurSel(sheet, nullptr, i);
      RECT page = WindowRect(Page());
      MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&page), 2);
      const RECT want = {0, 0, client.cx, client.cy};
      EXPECT_TRUE(EqualRect(&page, &want));
      const HWND tabs = PropSheet_GetTabControl(sheet);
      EXPECT_EQ(WindowRect(tabs).bottom, WindowRect(Page()).bottom);
      EXPECT_EQ(ClientSize(tabs).cy, 21);
      EXPECT_EQ(GetTopWindow(sheet), tabs);
      // All of them are seen; a row that is too wide would have arrows.
      const HWND arrows = FindWindowExW(tabs, nullptr, UPDOWN_CLASSW, nullptr);
      EXPECT_FALSE(arrows && IsWindowVisible(arrows));
    }
  }
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet, IDOK)));
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(sheet, IDCANCEL)));
}

// The sheet is such a dialog's owner, and so what GetParent answers for it.
TEST_F(SheetTest, ADialogAboveAPageIsNoPage) {
  Recorder recorder;
  recorder.wants_bar = false;
  const HWND dialog = OpenDialog(&recorder, Page());
  ShowWindow(dialog, SW_SHOW);
  MoveWindow(sheet, 40, 30, 240, 300, TRUE);
  EXPECT_EQ(ClientSize(dialog).cx, 240);
  EXPECT_EQ(ClientSize(dialog).cy, 268);
  MoveWindow(dialog, 60, 50, 200, 200, TRUE);
  EXPECT_EQ(WindowRect(dialog).left, 60);
  EXPECT_EQ(WindowRect(dialog).right, 260);
  // The sheet's bar is covered, until the dialog makes its own.
  EXPECT_EQ(SHFindMenuBar(dialog), nullptr);
  EXPECT_TRUE(ABarLiesAt(60, 250));
  SHMENUBARINFO own = BarOf(dialog, 50, 114);
  ASSERT_TRUE(SHCreateMenuBar(&own));
  ShowWindow(own.hwndMB, SW_HIDE);
  EXPECT_TRUE(ABarLiesAt(60, 250));
  ShowWindow(own.hwndMB, SW_SHOW);
  EXPECT_EQ(GetAncestor(WindowFromPoint({61, 251}), GA_ROOT), own.hwndMB);
  DestroyWindow(dialog);
}

TEST_F(SheetTest, DoneGoesToTheActivePageAndEndsTheSheet) {
  for (const bool page_ends : {false, true}) {
    SCOPED_TRACE(page_ends);
    if (!IsWindow(sheet)) SetUp();
    recorders[1].commands.clear();
    recorders[1].ends_with_done = page_ends;
    PropSheet_SetCurSel(sheet, nullptr, 1);
    SendMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(recorders[1].commands, std::vector<int>{IDOK});
    EXPECT_TRUE(recorders[0].commands.empty());
    // An ended modeless sheet has no page any more and waits to be destroyed.
    Pump();
    EXPECT_EQ(Page(), nullptr);
    DestroyWindow(sheet);
  }
}

}  // namespace
}  // namespace kelvo
