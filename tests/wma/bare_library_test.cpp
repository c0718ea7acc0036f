// The library on a machine without the platform's parts for Windows Media: this program lies in a
// folder with the library and what it cannot be loaded without.
#include <gtest/gtest.h>
#include <windows.h>

#include "kelvo/effects_processor.h"
#include "kelvo/features.h"

namespace kelvo {
namespace {

TEST(BareLibraryTest, LoadsAndOffersTheRest) {
  for (int round = 0; round < 3; ++round) {
    HMODULE const module = LoadLibraryW(L"Kelvo.dll");
    ASSERT_TRUE(module) << round;
    const auto get = reinterpret_cast<GetFeatureFunction>(
        reinterpret_cast<void*>(GetProcAddress(module, "GetFeature")));
    EXPECT_FALSE(GetModuleHandleW(L"atlce300.dll"));
    EXPECT_FALSE(GetModuleHandleW(L"WMPCmn.dll"));
    EXPECT_FALSE(get(kFeatureWma));
    EXPECT_TRUE(get(kFeatureOggVorbis));
    ASSERT_TRUE(get(kFeatureEffects));
    int16_t samples[2] = {400, -400};
    int16_t* block = samples;
    EXPECT_EQ(static_cast<EffectsProcessor*>(get(kFeatureEffects))->ProcessEqualizer(&block, 4), 4);
    EXPECT_EQ(samples[0], 12600);
    FreeLibrary(module);
    EXPECT_FALSE(GetModuleHandleW(L"Kelvo.dll"));
  }
}

}  // namespace
}  // namespace kelvo
