#include "effects/effects_processor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "base/memory/heap.h"
#include "tests/effects/reference_effects.h"
#include "tests/effects/signals.h"

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

// An empty identity is a desktop: nothing is ever loaded.
class FakePlatform final : public EffectsPlatform {
 public:
  ProcessorIdentity identity;
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

constexpr ProcessorIdentity kStrongArm = {2577, 4, 5};

class Effects : public ::testing::Test {
 protected:
  void SetUp() override { g_equalizer_call = g_bass_call = Call(); }

  FakePlatform platform_;
  int32_t bands_[kBands] = {10, 3, 14, 20, 5, 9, 14, 12, 7, 2};
};

TEST_F(Effects, SlotsAreInTheHostsOrder) {
#if defined(__i386__)
#define KELVO_SLOT_CALL __attribute__((thiscall))
#else
#define KELVO_SLOT_CALL
#endif
  using WordOperation = void(KELVO_SLOT_CALL*)(void*, int32_t);
  using StageOperation = int32_t(KELVO_SLOT_CALL*)(void*, int16_t**, int32_t);
  using SetOperation = void(KELVO_SLOT_CALL*)(void*, int32_t, const int32_t*);

  auto* effects = HeapNew<FixedPointEffects>(platform_);
  void* object = static_cast<EffectsProcessor*>(effects);
  void** slots = *static_cast<void***>(object);
  int16_t frame[2] = {1000, 1000};
  int16_t* samples = frame;

  reinterpret_cast<SetOperation>(slots[4])(object, 20, bands_);
  EXPECT_EQ(effects->equalizer().preamp_index(), 7);
  EXPECT_EQ(reinterpret_cast<StageOperation>(slots[5])(object, &samples, 4), 4);
  EXPECT_GT(frame[0], 12000);
  reinterpret_cast<WordOperation>(slots[3])(object, 0);
  EXPECT_EQ(reinterpret_cast<StageOperation>(slots[5])(object, &samples, 4), 0);
  reinterpret_cast<WordOperation>(slots[1])(object, 2);
  EXPECT_EQ(effects->bass_gains().a, 0x16666666);
  const int16_t before = frame[0];
  reinterpret_cast<StageOperation>(slots[2])(object, &samples, 4);
  EXPECT_LT(frame[0], before);
  EXPECT_EQ(samples, frame);
  reinterpret_cast<WordOperation>(slots[0])(object, 1);  // the sanitizer knows whether it is freed
}

TEST_F(Effects, LengthsAndPointers) {
  const struct {
    const char* name;
    int32_t bytes;
    int changed;  // samples, of 8
  } kCases[] = {
      {"nothing", 0, 0},       {"half a sample", 1, 0},
      {"negative", -4, 0},     {"most negative", INT32_MIN, 0},
      {"one sample", 2, 2},    {"one and a half", 3, 2},
      {"a frame", 4, 2},       {"a frame and a byte", 5, 2},
      {"three samples", 6, 4}, {"three frames", 12, 6},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    FixedPointEffects effects(platform_);
    effects.SetBassMode(1);
    int16_t equalized[8], boosted[8];
    for (int i = 0; i < 8; ++i) equalized[i] = boosted[i] = 10000;
    int16_t* samples = equalized;
    EXPECT_EQ(effects.ProcessEqualizer(&samples, c.bytes), c.bytes);
    samples = boosted;
    effects.ProcessBass(&samples, c.bytes);
    for (int i = 0; i < 8; ++i) {
      EXPECT_EQ(equalized[i] != 10000, i < c.changed) << i;
      EXPECT_EQ(boosted[i] != 10000, i < c.changed) << i;
    }
  }
  FixedPointEffects effects(platform_);
  effects.SetBassMode(1);
  int16_t* none = nullptr;
  EXPECT_EQ(effects.ProcessEqualizer(&none, 8), 8);
  EXPECT_EQ(effects.ProcessEqualizer(nullptr, 8), 8);
  effects.ProcessBass(&none, 8);
  effects.ProcessBass(nullptr, 8);
}

TEST_F(Effects, BassModes) {
  const struct {
    int32_t mode, a, b;
  } kCases[] = {
      {1, 0x0F333333, 0x0B333333},
      {7, 0x0F333333, 0x0B333333},
      {2, 0x16666666, 0x10000000},
      {-1, 0x16666666, 0x10000000},
      {3, 0x1B333333, 0x13333333},
      {0, 0, 0},
      {5, 0, 0},
      {4, 0x23333333, 0x13333333},
      {INT32_MIN, 0x23333333, 0x13333333},
  };
  FixedPointEffects effects(platform_);
  ReferenceBass reference;
  std::vector<int16_t> got(2), want(2);
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.mode);
    effects.SetBassMode(c.mode);
    EXPECT_EQ(effects.bass_gains().a, c.a);
    EXPECT_EQ(effects.bass_gains().b, c.b);
    got = want = {30000, -30000};
    int16_t* samples = got.data();
    effects.ProcessBass(&samples, 4);
    reference.gain = c.a;
    if (c.mode != 0) reference.Process(&want);
    EXPECT_EQ(got, want);
  }
}

TEST_F(Effects, DisablingLeavesTheBlockAndTheHistories) {
  FixedPointEffects effects(platform_), undisturbed(platform_);
  effects.SetEqualizer(13, bands_);
  effects.SetEqualizer(3, nullptr);  // changes nothing
  undisturbed.SetEqualizer(13, bands_);
  std::vector<int16_t> first = AllSignals(100).back().samples, same = first;
  int16_t* a = first.data();
  int16_t* b = same.data();
  effects.ProcessEqualizer(&a, 400);
  undisturbed.ProcessEqualizer(&b, 400);
  effects.EnableEqualizer(0);
  const std::vector<int16_t> before = first;
  EXPECT_EQ(effects.ProcessEqualizer(&a, 400), 0);
  EXPECT_EQ(first, before);
  effects.EnableEqualizer(-8);
  EXPECT_EQ(effects.ProcessEqualizer(&a, 400), 400);
  undisturbed.ProcessEqualizer(&b, 400);
  EXPECT_EQ(first, same);
}

TEST_F(Effects, ExternalLibraryOnItsProcessorsOnly) {
  const char* const kAll = "open Utility.dll; 1; 2; close";
  const struct {
    ProcessorIdentity identity;
    const char* log;
  } kCases[] = {
      {{2577, 4, 3}, kAll}, {{2577, 4, 4}, kAll}, {{2577, 4, 5}, kAll}, {{2577, 4, 6}, kAll},
      {{2577, 4, 2}, ""},   {{2577, 4, 7}, ""},   {{2577, 4, 0}, ""},   {{2577, 4, 0x10003}, ""},
      {{2577, 3, 5}, ""},   {{2577, 5, 5}, ""},   {{2576, 4, 5}, ""},   {{586, 4, 5}, ""},
      {{0, 0, 0}, ""},
  };
  for (const auto& c : kCases) {
    platform_.identity = c.identity;
    platform_.log.clear();
    { FixedPointEffects effects(platform_); }
    EXPECT_EQ(platform_.log, c.log)
        << c.identity.type << " " << c.identity.level << " " << c.identity.revision;
  }
}

TEST_F(Effects, ExternalEntriesGetTheSameArguments) {
  platform_.identity = kStrongArm;
  FixedPointEffects effects(platform_);
  int16_t frame[2] = {5, 6};
  int16_t* samples = frame;

  // The equalizer's entry decides about the enabled flag and lengths itself; the mode 0 is decided
  // before the bass entry.
  effects.EnableEqualizer(0);
  EXPECT_EQ(effects.ProcessEqualizer(&samples, -3), 4711);
  EXPECT_EQ(g_equalizer_call.processor, &effects);
  EXPECT_EQ(g_equalizer_call.samples, &samples);
  EXPECT_EQ(g_equalizer_call.bytes, -3);
  effects.ProcessBass(&samples, 4);
  EXPECT_EQ(g_bass_call.count, 0);
  effects.SetBassMode(9);
  effects.ProcessBass(&samples, 1);
  EXPECT_EQ(g_bass_call.count, 1);
  EXPECT_EQ(g_bass_call.processor, &effects);
  EXPECT_EQ(g_bass_call.samples, &samples);
  EXPECT_EQ(g_bass_call.bytes, 1);
  EXPECT_EQ(frame[0], 5);

  // Destroyed in place, as a static object may be before its destructor runs.
  effects.Destroy(2);
  effects.Destroy(0);
  EXPECT_EQ(platform_.log, "open Utility.dll; 1; 2; close");
}

TEST_F(Effects, MissingLibraryOrEntriesMeanTheBuiltInStages) {
  const struct {
    const char* name;
    bool library;
    bool equalizer, bass;
    const char* log;
  } kCases[] = {
      {"no library", false, true, true, "open Utility.dll"},
      {"no equalizer", true, false, true, "open Utility.dll; 1; 2; close"},
      {"no bass", true, true, false, "open Utility.dll; 1; 2; close"},
      {"neither", true, false, false, "open Utility.dll; 1; 2; close"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    SetUp();
    FakePlatform platform;
    platform.identity = kStrongArm;
    platform.has_library = c.library;
    if (!c.equalizer) platform.entries[1] = nullptr;
    if (!c.bass) platform.entries[2] = nullptr;
    {
      FixedPointEffects effects(platform);
      effects.SetBassMode(4);
      int16_t frame[2] = {};
      int16_t* samples = frame;
      const bool external = c.library && c.equalizer;
      EXPECT_EQ(effects.ProcessEqualizer(&samples, 4), external ? 4711 : 4);
      EXPECT_EQ(frame[0], external ? 0 : 12500);
      effects.ProcessBass(&samples, 4);
      EXPECT_EQ(g_bass_call.count, c.library && c.bass ? 1 : 0);
    }
    EXPECT_EQ(platform.log, c.log);
  }
}

// Gains do not enter the histories: whatever the setter does meanwhile, each block comes out as
// with one of the two settings from its first sample to its last.
TEST_F(Effects, AChangeFromAnotherThreadFallsBetweenBlocks) {
  const int32_t up[kBands] = {}, down[kBands] = {27, 27, 27, 27, 27, 27, 27, 27, 27, 27};
  FixedPointEffects effects(platform_), always_up(platform_), always_down(platform_);
  effects.SetEqualizer(13, up);
  always_up.SetEqualizer(13, up);
  always_down.SetEqualizer(13, down);
  std::atomic<bool> done{false};
  std::thread setter([&] {
    for (int i = 0; !done; ++i) {
      effects.SetEqualizer(13, i % 2 ? up : down);
      effects.SetBassMode(0);
      effects.EnableEqualizer(1);
      std::this_thread::yield();
    }
  });
  int seen_up = 0, seen_down = 0;
  for (int block = 0; block < 100000 && (block < 300 || !seen_up || !seen_down); ++block) {
    std::vector<int16_t> got(512), want_up(512), want_down(512);
    for (int i = 0; i < 512; ++i) got[i] = static_cast<int16_t>(NoiseAt(block * 512 + i) / 16);
    want_up = want_down = got;
    int16_t* samples[] = {got.data(), want_up.data(), want_down.data()};
    effects.ProcessEqualizer(&samples[0], 1024);
    always_up.ProcessEqualizer(&samples[1], 1024);
    always_down.ProcessEqualizer(&samples[2], 1024);
    seen_up += got == want_up;
    seen_down += got == want_down;
    if (seen_up + seen_down != block + 1) {
      ADD_FAILURE() << "block " << block << " is a mixture";
      break;
    }
  }
  done = true;
  setter.join();
  EXPECT_GT(seen_up, 0);
  EXPECT_GT(seen_down, 0);
}

}  // namespace
}  // namespace kelvo::test
