// Kelvo.dll as a host meets it: loaded, asked, switched to other languages, unloaded.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "kelvo/features.h"
#include "tests/support/language_value.h"
#include "tests/support/loaded_library.h"
#include "tests/support/owned_objects.h"

namespace kelvo {
namespace {

using test::LoadedLibrary;

constexpr char kEnglish[] = "Velmora Feature Pack\rversion 2.51 installed.";

// Made for tests: tests/languages/
constexpr DWORD kTranslated = 0x0503;
constexpr DWORD kHostile = 0x0504;
constexpr DWORD kMissing = 0x0C0B;

TEST(LibraryTest, OffersItsFeaturesAndNothingElse) {
  const LoadedLibrary library;
  void* ogg = library.Get(kFeatureOggVorbis);
  EXPECT_TRUE(ogg);
  EXPECT_EQ(library.Get(kFeatureOggVorbis), ogg);
  for (int32_t id : {INT32_MIN, -1, 0, 2, 10, 15, 20, 22, INT32_MAX}) {
    EXPECT_EQ(library.Get(id), nullptr) << id;
  }
  EXPECT_EQ(library.Get(kFeatureVersionText), library.Get(kFeatureVersionText));
  EXPECT_EQ(library.Version(), kEnglish);
}

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

TEST(LibraryTest, KeepsTheLanguageWhenTheValueCannotBeRead) {
  test::LanguageValue language;
  language.Set(kTranslated);
  const LoadedLibrary library;
  EXPECT_EQ(library.Version(), "Pecyn\rfersiwn 2.51") << "read at load";
  const std::function<void()> changes[] = {[&] { language.Write(REG_BINARY, "abc", 3); },
                                           [&] { language.Write(REG_SZ, L"1033", 10); },
                                           [&] { language.Remove(); }};
  for (const auto& change : changes) {
    change();
    library.Get(kFeatureSwitchLanguage);
    EXPECT_EQ(library.Version(), "Pecyn\rfersiwn 2.51");
  }
}

TEST(LibraryTest, CanBeLoadedAndUnloadedAgainAndAgain) {
  // These keep the system's libraries in, of which each load costs handles.
  const HMODULE kept[] = {LoadLibraryW(L"WMPCmn.dll"), LoadLibraryW(L"atlce300.dll")};
  DWORD handles = 0;
  for (int round = 0; round < 40; ++round) {
    {
      const LoadedLibrary library;
      EXPECT_TRUE(library.Get(kFeatureOggVorbis));
    }
    EXPECT_EQ(GetModuleHandleW(L"Kelvo.dll"), nullptr) << round;
    // The first rounds fill caches of the system.
    if (round == 9) handles = test::Handles();
  }
  EXPECT_LE(test::Handles(), handles + 2);
  for (HMODULE module : kept) FreeLibrary(module);
}

}  // namespace
}  // namespace kelvo
