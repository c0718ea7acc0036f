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
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::LoadedLibrary;
using test::Utf8;

struct Search {
  const wchar_t* kind;
  HWND found;
};

BOOL CALLBACK CompareKind(HWND window, LPARAM parameter) {
  Search& search = *reinterpret_cast<Search*>(parameter);
  wchar_t kind[32] = L"";
  GetClassNameW(window, kind, 32);
  if (IsWindowVisible(window) && lstrcmpW(kind, search.kind) == 0) search.found = window;
  return search.found == nullptr;
}

// The thread's visible window of this class, when it comes.
HWND WaitForWindow(DWORD thread, const wchar_t* kind) {
  Search search = {kind, nullptr};
  for (const DWORD start = GetTickCount(); !search.found && GetTickCount() - start < 30000;) {
    EnumThreadWindows(thread, &CompareKind, reinterpret_cast<LPARAM>(&search));
    if (!search.found) Sleep(10);
  }
  EXPECT_TRUE(search.found) << Utf8(kind);
  return search.found;
}

std::string Text(HMODULE module, UINT id) {
  const wchar_t* text = FindStringResource(module, id, nullptr);
  return text ? Utf8(text) : "none";
}

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

void LookAtSheet(DWORD thread, HMODULE language) {
  const HWND sheet = WaitForWindow(thread, L"#32770");
  const HWND bar = WaitForWindow(thread, L"KelvoMenuBar");
  wchar_t caption[100] = L"";
  GetWindowTextW(sheet, caption, 100);
  EXPECT_EQ(Utf8(caption), Text(language, IDS_CATALOG_CAPTION));

  const HWND tabs = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0));
  EXPECT_EQ(TabTitle(tabs, 0), Text(language, IDS_PLAYLISTS_TITLE));
  EXPECT_EQ(TabTitle(tabs, 1), Text(language, IDS_MEDIA_TITLE));
  EXPECT_EQ(TabTitle(tabs, 2), Text(language, IDS_CURRENT_TITLE));
  EXPECT_FALSE(IsWindowVisible(FindWindowExW(tabs, nullptr, UPDOWN_CLASSW, nullptr)))
      << "the tabs need arrows";

  const HMENU menu = LoadMenuW(language, MAKEINTRESOURCEW(IDR_PLAYLISTS_BAR));
  EXPECT_EQ(FirstItem(reinterpret_cast<HMENU>(SendMessageW(bar, SHCMBM_GETSUBMENU, 0, ID_CHECKS))),
            FirstItem(GetSubMenu(menu, 0)));
  DestroyMenu(menu);
  PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
}

class UsedLanguage : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Use, UsedLanguage, testing::Values(KELVO_LANGUAGES),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(UsedLanguage, IsThatOfTheVersionAndOfTheCatalog) {
  test::LanguageValue setting;
  setting.Set(std::strtoul(GetParam(), nullptr, 16));
  const LoadedLibrary library;
  const std::string name = "kv_mui." + std::string(GetParam()) + ".dll";
  const HMODULE language = GetModuleHandleA(name.c_str());
  ASSERT_TRUE(language) << "not loaded";

  const std::string version = library.Version();
  EXPECT_NE(version.find("2.51"), std::string::npos) << version;
  EXPECT_EQ(version.substr(0, 25), Text(language, IDS_VERSION).substr(0, 25));

  const HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                      nullptr, nullptr);
  std::thread user(LookAtSheet, GetCurrentThreadId(), language);
  EXPECT_EQ(static_cast<Catalog*>(library.Get(kFeatureCatalog))
                ->ShowCatalog(reinterpret_cast<ModuleHandle>(GetModuleHandleW(nullptr)), parent),
            1);
  user.join();
  DestroyWindow(parent);
}

}  // namespace
}  // namespace kelvo
