#include "effects/external_library.h"

#include <gtest/gtest.h>

#include <string>

#include "effects/effects_processor.h"

namespace kelvo::test {
namespace {

struct Call {
  EffectsProcessor* processor = nullptr;
  int16_t** samples = nullptr;
  int32_t bytes = 0;
  int count = 0;
};
Call g_equalizer_call, g_bass_call;

int32_t FakeEqualizer(EffectsProcessor* processor, int16_t** samples, int32_t bytes) {
  g_equalizer_call = {processor, samples, bytes, g_equalizer_call.count + 1};
  return 4711;
}

void FakeBass(EffectsProcessor* processor, int16_t** samples, int32_t bytes) {
  g_bass_call = {processor, samples, bytes, g_bass_call.count + 1};
}

class FakePlatform final : public EffectsPlatform {
 public:
  ProcessorIdentity identity = {2577, 4, 5};
  bool has_library = true;
  void* entries[3] = {nullptr, reinterpret_cast<void*>(&FakeEqualizer),
                      reinterpret_cast<void*>(&FakeBass)};
  std::string log;

  ProcessorIdentity Identify() noexcept override { return identity; }
  void* OpenLibrary(const wchar_t* name) noexcept override {
    log += "open ";
    for (; *name; ++name) log += static_cast<char>(*name);
    return has_library ? this : nullptr;
  }
  void* FindEntry(void* library, uint32_t ordinal) noexcept override {
    EXPECT_EQ(library, this);
    log += "; " + std::to_string(ordinal);
    return ordinal < 3 ? entries[ordinal] : nullptr;
  }
  void CloseLibrary(void* library) noexcept override {
    EXPECT_EQ(library, this);
    log += "; close";
  }
};

const EffectsState& StateOf(const FixedPointEffects& effects) {
  return *reinterpret_cast<const EffectsState*>(reinterpret_cast<const void* const*>(&effects) + 1);
}

class ExternalLibrary : public ::testing::Test {
 protected:
  void SetUp() override { g_equalizer_call = g_bass_call = Call(); }

  FakePlatform platform_;
  int16_t frame_[2] = {5, 6};
  int16_t* samples_ = frame_;
};

TEST_F(ExternalLibrary, IsUsedOnItsProcessorsAsFarAsItIsThere) {
  constexpr char kBoth[] = "open Utility.dll; 1; 2; close";
  const struct {
    ProcessorIdentity identity;
    bool fits, library, equalizer, bass;
    const char* log;
  } kCases[] = {
      {{2577, 4, 3}, true, true, true, true, kBoth},
      {{2577, 4, 4}, true, true, true, true, kBoth},
      {{2577, 4, 6}, true, true, true, true, kBoth},
      {{2577, 4, 2}, false, true, true, true, ""},
      {{2577, 4, 7}, false, true, true, true, ""},
      {{2577, 4, 0x10003}, false, true, true, true, ""},
      {{2577, 3, 5}, false, true, true, true, ""},
      {{2577, 5, 5}, false, true, true, true, ""},
      {{2576, 4, 5}, false, true, true, true, ""},
      {{586, 4, 5}, false, true, true, true, ""},
      {{2577, 4, 5}, true, false, true, true, "open Utility.dll"},
      {{2577, 4, 5}, true, true, false, true, kBoth},
      {{2577, 4, 5}, true, true, true, false, kBoth},
      {{2577, 4, 5}, true, true, false, false, kBoth},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(&c - kCases);
    SetUp();
    FakePlatform platform;
    platform.identity = c.identity;
    platform.has_library = c.library;
    if (!c.equalizer) platform.entries[1] = nullptr;
    if (!c.bass) platform.entries[2] = nullptr;
    {
      FixedPointEffects effects(platform);
      const EffectsState& state = StateOf(effects);
      const bool open = c.fits && c.library;
      EXPECT_EQ(state.processor_matches, c.fits);
      EXPECT_EQ(state.library, open ? &platform : nullptr);
      EXPECT_EQ(state.external_equalizer, open && c.equalizer ? &FakeEqualizer : nullptr);
      EXPECT_EQ(state.external_bass, open && c.bass ? &FakeBass : nullptr);
      effects.SetBassMode(4);
      frame_[0] = 0;
      EXPECT_EQ(effects.ProcessEqualizer(&samples_, 4), open && c.equalizer ? 4711 : 4);
      EXPECT_EQ(frame_[0], open && c.equalizer ? 0 : 12500);
      effects.ProcessBass(&samples_, 4);
      EXPECT_EQ(g_bass_call.count, open && c.bass ? 1 : 0);
    }
    EXPECT_EQ(platform.log, c.log);
  }
}

// The equalizer's entry decides about the enabled flag and lengths itself; the mode 0 is decided
// before the bass entry.
TEST_F(ExternalLibrary, EntriesGetTheSameArguments) {
  FixedPointEffects effects(platform_);
  effects.EnableEqualizer(0);
  EXPECT_EQ(effects.ProcessEqualizer(&samples_, -3), 4711);
  EXPECT_EQ(g_equalizer_call.processor, &effects);
  EXPECT_EQ(g_equalizer_call.samples, &samples_);
  EXPECT_EQ(g_equalizer_call.bytes, -3);
  effects.ProcessBass(&samples_, 4);
  EXPECT_EQ(g_bass_call.count, 0);
  effects.SetBassMode(9);
  effects.ProcessBass(&samples_, 1);
  EXPECT_EQ(g_bass_call.count, 1);
  EXPECT_EQ(g_bass_call.processor, &effects);
  EXPECT_EQ(g_bass_call.samples, &samples_);
  EXPECT_EQ(g_bass_call.bytes, 1);
  EXPECT_EQ(frame_[0], 5);

  // Destroyed in place, as a static object may be before its destructor runs.
  effects.Destroy(2);
  effects.Destroy(0);
  EXPECT_EQ(platform_.log, "open Utility.dll; 1; 2; close");
  EXPECT_EQ(effects.ProcessEqualizer(&samples_, 4), 0) << "the built-in one, and it is off";
}

}  // namespace
}  // namespace kelvo::test
