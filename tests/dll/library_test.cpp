// What `velmora check` does not look at in Kelvo.dll: languages made for tests, and the stand-ins.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "base/windows/pocketpc.h"
#include "kelvo/equalizer_presets.h"
#include "kelvo/features.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/installation_folder.h"
#include "tests/support/language_value.h"
#include "tests/support/loaded_library.h"

extern "C" DWORD WINAPI KelvoFullScreenState(HWND window);

namespace kelvo {
namespace {

using test::LoadedLibrary;

constexpr char kEnglish[] = "Velmora Feature Pack\rversion 2.51 installed.";

// Made for tests: tests/languages/
constexpr DWORD kTranslated = 0x0503;
constexpr DWORD kHostile = 0x0504;
constexpr DWORD kMissing = 0x0C0B;

TEST(LibraryTest, SwitchesTheLanguage) {
  test::LanguageValue language;
  const LoadedLibrary library;
  const struct {
    const char* name;
    DWORD language;
    std::string version;
  } kSteps[] = {
      {"translated", kTranslated, "Pecyn\rfersiwn 2.51"},
      {"its library is missing", kMissing, kEnglish},
      {"translated again", kTranslated, "Pecyn\rfersiwn 2.51"},
      {"US English", 1033, kEnglish},
      {"format text that asks for texts", kHostile, kEnglish},
      {"none", 0, kEnglish},
  };
  for (const auto& step : kSteps) {
    language.Set(step.language);
    EXPECT_EQ(library.Get(kFeatureSwitchLanguage), nullptr) << step.name;
    EXPECT_EQ(library.Version(), step.version) << step.name;
    wchar_t name[32];
    swprintf(name, 32, L"kv_mui.%04X.dll", static_cast<unsigned>(step.language));
    EXPECT_EQ(GetModuleHandleW(name) != nullptr,
              step.language == kTranslated || step.language == kHostile)
        << step.name;
  }
}

// The host runs full screen with the button hidden.
TEST(LibraryTest, ShowsTheInputPanelsButtonWhileAPresetIsNamed) {
  const test::InstallationFolder folder;
  const LoadedLibrary library;
  const HWND host =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);
  const test::DialogDriver namer(L"Edit File Name", [&](HWND dialog) {
    EXPECT_EQ(KelvoFullScreenState(host), SHFS_SHOWSIPBUTTON);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  const uint8_t setting[kEqualizerSettingBytes] = {};
  auto* const presets = static_cast<EqualizerPresets*>(library.Get(kFeatureEqualizerPresets));
  EXPECT_EQ(presets->SavePreset(setting, folder.path().c_str(), host), 0);
  EXPECT_EQ(KelvoFullScreenState(host), SHFS_HIDESIPBUTTON);
  DestroyWindow(host);
}

}  // namespace
}  // namespace kelvo
