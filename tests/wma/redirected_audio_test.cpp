// The component's audio thread and the host's, truly at once: for the thread sanitizer.
#include <gtest/gtest.h>
#include <string.h>

#include <atomic>
#include <thread>

#include "effects/effects_processor.h"
#include "input/wma/output_redirection.h"
#include "tests/support/other_processor.h"
#include "tests/wma/component.h"

namespace kelvo {
namespace {

constexpr UINT kWritten = 5;
constexpr int kSamples = 64;
std::atomic<bool> g_over;
std::atomic<int> g_blocks, g_lost;

void PlayMusic() {
  for (int i = 0; !g_over; ++i) {
    int16_t samples[kSamples] = {};
    g_lost += test::PlayBlock(i % 2, samples, sizeof(samples)) != kWritten;
    ++g_blocks;
  }
}

TEST(RedirectedAudio, IsSetUpSteeredSeenAndGivenBackWhileItPlays) {
  const HMODULE module = test::ComponentModule();
  g_lost = 0;
  int seen = 0;
  for (int round = 0; round < 50; ++round) {
    test::ResetComponent();
    FixedPointEffects effects(test::g_other_processor);
    AudioTap tap;
    g_over = false;
    g_blocks = 0;
    std::thread audio(PlayMusic);
    InstallOutputTap(module, module, &effects, &tap);
    for (int32_t i = 0; g_blocks < 200; ++i) {
      int32_t sliders[kBands];
      for (int32_t& slider : sliders) slider = i % 28;
      effects.SetEqualizer(i % 28, sliders);
      effects.SetBassMode(i % 5);
      effects.EnableEqualizer(i % 3);
      int16_t samples[kVisualisationSamples];
      // What is stored has the equalizer's constant in it, or not.
      if (tap.Read(samples)) seen += samples[0] != 0;
    }
    RestoreOutput(module);
    g_over = true;
    audio.join();
    ForgetOutputTap();
    tap.FreeBuffer();
    EXPECT_TRUE(test::CallsTheSystem());
  }
  EXPECT_EQ(g_lost, 0);
  EXPECT_GT(seen, 0);
}

}  // namespace

UINT test::WaveOutWrite(HANDLE, void*, UINT) {
  return kWritten;
}

}  // namespace kelvo

bool VirtualProtect(void*, size_t, DWORD, DWORD*) noexcept {
  std::this_thread::yield();
  return true;
}
