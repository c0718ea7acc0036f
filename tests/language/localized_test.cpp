#include "entry/language/localized.h"

#include <gtest/gtest.h>

#include "base/windows/resources.h"
#include "entry/language/modules.h"
#include "entry/language/text_entry_dialog.h"
#include "res/resource_ids.h"
#include "tests/language/test_resources.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/wide_text.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

using test::DialogDriver;
using test::Utf8;

constexpr uint32_t kPartial = 0x0452;

// Ends at once, and stores its title in the text that the parameter points to.
INT_PTR CALLBACK TellTitle(HWND window, UINT message, WPARAM, LPARAM lparam) {
  if (message != WM_INITDIALOG) return FALSE;
  wchar_t title[64];
  GetWindowTextW(window, title, 64);
  if (lparam) *reinterpret_cast<std::string*>(lparam) = Utf8(title);
  EndDialog(window, 7);
  return FALSE;
}

class LocalizedTest : public ::testing::Test {
 protected:
  void SetUp() override { SetOwnModule(GetModuleHandleW(nullptr)); }
  void TearDown() override { LoadLanguageLibrary(0, true); }
};

TEST_F(LocalizedTest, FindsTheLibraryByItsName) {
  const struct {
    uint32_t id;
    bool own;
    bool loads;
    bool found;
  } kCases[] = {
      {kPartial, true, true, true}, {kPartial, false, false, false},
      {0, true, true, false},       {1033, true, true, false},
      {0x0C0B, true, false, false}, {0xFFFFFFFF, true, false, false},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(LoadLanguageLibrary(c.id, c.own), c.loads) << c.id;
    EXPECT_EQ(LanguageModule() != nullptr, c.found) << c.id;
  }
}

TEST_F(LocalizedTest, FallsBackStringByString) {
  const HMODULE own = OwnModule();
  wchar_t text[8];
  for (bool translated : {false, true}) {
    LoadLanguageLibrary(translated ? kPartial : 0, true);
    EXPECT_EQ(Utf8(LoadLocalizedString(own, IDS_VERSION)).substr(0, 5),
              translated ? "Pecyn" : "Velmo");
    EXPECT_EQ(Utf8(LoadLocalizedString(own, IDS_BUILT_IN_ONLY)), "Built in");
    EXPECT_EQ(Utf8(LoadLocalizedString(own, IDS_UNTERMINATED)), "Terminated")
        << "a text that could be overrun is not used";
    EXPECT_EQ(Utf8(LoadLocalizedString(own, 9999)), "");
    EXPECT_EQ(LoadLocalizedString(own, IDS_BUILT_IN_ONLY, text, 8), 7);
    EXPECT_EQ(Utf8(text), "Built i");
    EXPECT_EQ(LoadLocalizedString(own, IDS_UNTERMINATED, text, 8), 7) << "a copy is terminated";
    EXPECT_EQ(Utf8(text), translated ? "heb ddi" : "Termina");
    EXPECT_EQ(LoadLocalizedString(own, 9999, text, 8), 0);
    EXPECT_EQ(Utf8(text), "");
  }
}

TEST_F(LocalizedTest, TakesAMenuBarOnlyWithItsBitmap) {
  LoadLanguageLibrary(kPartial, true);
  const struct {
    UINT menu;
    int bitmap;
    bool from_language;
  } kCases[] = {
      {IDM_TEST_BAR, 0, true}, {IDM_TEST_BAR, 114, false}, {0, 0, false}, {999, 0, false}};
  for (const auto& c : kCases) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.nToolBarId = c.menu;
    info.hInstRes = OwnModule();
    info.nBmpId = c.bitmap;
    CreateLocalizedMenuBar(&info);
    EXPECT_EQ(info.hInstRes, c.from_language ? LanguageModule() : OwnModule()) << c.menu;
  }
}

TEST_F(LocalizedTest, RunsEachDialogInTheLanguageThatHasIt) {
  LoadLanguageLibrary(kPartial, true);
  std::string title;
  const LPARAM parameter = reinterpret_cast<LPARAM>(&title);
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), IDD_TEXT_ENTRY, nullptr, TellTitle, parameter), 7);
  EXPECT_EQ(title, "Golygu Enw Ffeil");
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), IDD_BUILT_IN_ONLY, nullptr, TellTitle, parameter), 7);
  EXPECT_EQ(title, "Only English");
  EXPECT_EQ(
      LocalizedDialogBox(OwnModule(), MAKEINTRESOURCEW(IDD_BUILT_IN_ONLY), nullptr, TellTitle), 7);
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), 998, nullptr, TellTitle, 0), -1);
}

TEST_F(LocalizedTest, TheTextEntryDialogTakesNoEmptyText) {
  TextEntryDialog entry;
  entry.SetText(L"old name");
  {
    DialogDriver driver(L"Edit File Name", [](HWND dialog) {
      wchar_t text[64];
      GetDlgItemTextW(dialog, IDC_TEXT_ENTRY, text, 64);
      EXPECT_EQ(Utf8(text), "old name");
      EXPECT_TRUE(KelvoInputPanelState());
      SetDlgItemTextW(dialog, IDC_TEXT_ENTRY, L"");
      SendMessageW(dialog, WM_COMMAND, IDOK, 0);
      EXPECT_TRUE(IsWindow(dialog)) << "stays open";
      SetDlgItemTextW(dialog, IDC_TEXT_ENTRY, L"new name");
      SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    EXPECT_TRUE(entry.Run(nullptr));
  }
  EXPECT_EQ(Utf8(entry.GetText()), "new name");
  EXPECT_FALSE(KelvoInputPanelState());
  {
    DialogDriver driver(L"Edit File Name", [](HWND dialog) {
      SetDlgItemTextW(dialog, IDC_TEXT_ENTRY, L"unwanted");
      SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_FALSE(entry.Run(nullptr));
  }
  EXPECT_EQ(Utf8(entry.GetText()), "new name");
}

}  // namespace
}  // namespace kelvo
