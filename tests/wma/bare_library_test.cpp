// The library on a machine without the platform's parts for Windows Media: this program lies in a
// folder with the library and what it cannot be loaded without.
#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

#include "tests/support/loaded_library.h"

namespace kelvo {
namespace {

TEST(BareLibraryTest, LoadsAndOffersTheRest) {
  for (int round = 0; round < 3; ++round) {
    auto library = std::make_unique<test::LoadedLibrary>();
    EXPECT_FALSE(GetModuleHandleW(L"atlce300.dll"));
    EXPECT_FALSE(GetModuleHandleW(L"WMPCmn.dll"));
    EXPECT_FALSE(library->Get(kFeatureWma));
    EXPECT_TRUE(library->Get(kFeatureOggVorbis));
    EXPECT_TRUE(library->Get(kFeatureEffects));
    library.reset();
    EXPECT_FALSE(GetModuleHandleW(L"Kelvo.dll"));
  }
}

}  // namespace
}  // namespace kelvo
