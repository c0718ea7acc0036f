// Each language as the user sees it: Kelvo.dll with the language set, its version text, and its
// catalog.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <thread>

#include "base/windows/pocketpc.h"
#include "base/windows/resources.h"
#include "kelvo/catalog.h"
#include "kelvo/features.h"
#include "res/resource_ids.h"
#include "tests/support/language_value.h"
#include "tests/support/loaded_library.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;

std::string TabTitle(HWND tabs, WPARAM index) {
  wchar_t text[100] = L"";
  TCITEMW item = {};
  item.mask = TCIF_TEXT;
  item.pszText = text;
  item.cchTextMax = 100;
  SendMessageW(tabs, TCM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
  return Utf8(text);
}

std::string FirstItem(HMENU popup) {
  wchar_t text[100] = L"";
  GetMenuStringW(popup, 0, text, 100, MF_BYPOSITION);
  return Utf8(text);
}

void LookAtSheet(const test::User& user, HMODULE language) {
  const auto text = [&](UINT id) { return FindStringResource(language, id, nullptr); };
  const HWND sheet = user.WaitForWindow(text(IDS_CATALOG_CAPTION));
  const HWND tabs = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0));
  EXPECT_EQ(TabTitle(tabs, 0), Utf8(text(IDS_PLAYLISTS_TITLE)));
  EXPECT_EQ(TabTitle(tabs, 1), Utf8(text(IDS_MEDIA_TITLE)));
  EXPECT_EQ(TabTitle(tabs, 2), Utf8(text(IDS_CURRENT_TITLE)));
  EXPECT_FALSE(IsWindowVisible(FindWindowExW(tabs, nullptr, UPDOWN_CLASSW, nullptr)))
      << "the tabs need arrows";
  EXPECT_TRUE(user.Wait("the menu bar", [&] { return user.MenuBar() != nullptr; }));
  const HMENU shown =
      reinterpret_cast<HMENU>(SendMessageW(user.MenuBar(), SHCMBM_GETSUBMENU, 0, ID_CHECKS));
  const HMENU menu = LoadMenuW(language, MAKEINTRESOURCEW(IDR_PLAYLISTS_BAR));
  EXPECT_EQ(FirstItem(shown), FirstItem(GetSubMenu(menu, 0)));
  DestroyMenu(menu);
  PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
}

class UsedLanguage : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Use, UsedLanguage, testing::Values(KELVO_LANGUAGES),
                         [](const auto& tested) { return std::string(tested.param).substr(7, 4); });

TEST_P(UsedLanguage, IsThatOfTheVersionAndOfTheCatalog) {
  test::LanguageValue setting;
  setting.Set(std::strtoul(GetParam() + 7, nullptr, 16));
  const test::LoadedLibrary library;
  const HMODULE language = GetModuleHandleA(GetParam());
  ASSERT_TRUE(language) << "not loaded";
  const std::string version = library.Version();
  EXPECT_NE(version.find("2.51"), std::string::npos) << version;
  EXPECT_EQ(version.substr(0, 25),
            Utf8(FindStringResource(language, IDS_VERSION, nullptr)).substr(0, 25));

  const HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                      nullptr, nullptr);
  const test::User user([](const std::string& what) { ADD_FAILURE() << what; });
  std::thread hands([&] { LookAtSheet(user, language); });
  EXPECT_EQ(static_cast<Catalog*>(library.Get(kFeatureCatalog))
                ->ShowCatalog(reinterpret_cast<ModuleHandle>(GetModuleHandleW(nullptr)), parent),
            1);
  hands.join();
  DestroyWindow(parent);
}

}  // namespace
}  // namespace kelvo
