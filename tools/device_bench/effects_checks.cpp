#include <stdio.h>
#include <string.h>

#include <algorithm>

#include "checks.h"
#include "effects/effects_processor.h"
#include "process.h"

namespace bench {
namespace {

constexpr uint32_t kFrames = 6000;

struct NoLibrary final : kelvo::EffectsPlatform {
  kelvo::ProcessorIdentity Identify() noexcept override { return {}; }
  void* OpenLibrary(const wchar_t*) noexcept override { return nullptr; }
  void* FindEntry(void*, uint32_t) noexcept override { return nullptr; }
  void CloseLibrary(void*) noexcept override {}
};

struct Setting {
  const char* name;
  int32_t preamp;
  int32_t bands[10];
  int32_t bass;
  uint32_t block_frames;
};
constexpr Setting kSettings[] = {
    {"flat", 13, {14, 14, 14, 14, 14, 14, 14, 14, 14, 14}, 1, 4096},
    {"all boosted", 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 4, 1},
    {"all cut", 27, {27, 27, 27, 27, 27, 27, 27, 27, 27, 27}, 2, 577},
    {"mixed", 9, {3, 25, 7, 19, 0, 27, 14, 11, 22, 5}, 3, 1024},
    {"beyond the ends", 99, {-5, 40, 14, 14, 14, 14, 14, 14, -1, 28}, 9, 333},
};

// Noise over the whole range, with stretches of both rails and of silence.
std::vector<int16_t> TestSignal() {
  std::vector<int16_t> signal(2 * kFrames);
  uint32_t state = 12345;
  for (size_t i = 0; i < signal.size(); ++i) {
    state = state * 1664525 + 1013904223;
    const uint32_t stretch = static_cast<uint32_t>(i / 500 % 8);
    signal[i] = stretch == 3   ? INT16_MAX
                : stretch == 6 ? INT16_MIN
                : stretch == 7 ? int16_t{0}
                               : int16_t(state >> 16);
  }
  return signal;
}

// Every position of every slider in some block, in blocks that end in all places of a pass.
Setting SweepSetting(int32_t number) {
  Setting setting = {"sweep", number % 30 - 1, {}, number % 6, static_cast<uint32_t>(number % 131)};
  for (int32_t b = 0; b < 10; ++b) setting.bands[b] = (number + 11 * b) % 28;
  if (setting.block_frames == 0) setting.block_frames = 1;
  return setting;
}

// Both objects keep what their filters remember from one setting to the next.
class Pair {
 public:
  Pair(Process& process, uint32_t object)
      : here_(platform_), process_(process), object_(object), block_(process.heap.Take(48)) {}
  ~Pair() { process_.heap.Give(block_); }

  void Set(const Setting& setting) {
    here_.SetEqualizer(setting.preamp, setting.bands);
    here_.SetBassMode(setting.bass);
    memcpy(process_.machine.At(block_, 40), setting.bands, 40);
    process_.CallSlot(object_, 4, {static_cast<uint32_t>(setting.preamp), block_});
    process_.CallSlot(object_, 1, {static_cast<uint32_t>(setting.bass)});
  }

  // True when the same samples come out, and every word behind the table of operations is the same;
  // `instructions` are those of the device.
  bool Run(bool bass, std::vector<int16_t> signal, uint32_t block_frames, uint64_t* instructions) {
    const uint32_t bytes = static_cast<uint32_t>(2 * signal.size());
    const uint32_t samples = process_.heap.Take(bytes);
    memcpy(process_.machine.At(samples, bytes), signal.data(), bytes);
    bool same = true;
    const uint64_t before = process_.machine.instructions();
    for (uint32_t at = 0; at < bytes;) {
      const uint32_t part = std::min(4 * block_frames, bytes - at);
      int16_t* there = signal.data() + at / 2;
      process_.machine.SetWord(block_, samples + at);
      const uint32_t result = process_.CallSlot(object_, bass ? 2 : 5, {block_, part});
      if (bass) {
        here_.ProcessBass(&there, static_cast<int32_t>(part));
      } else {
        same = here_.ProcessEqualizer(&there, static_cast<int32_t>(part)) ==
                   static_cast<int32_t>(result) &&
               same;
      }
      at += part;
    }
    *instructions = process_.machine.instructions() - before;
    same = same && memcmp(process_.machine.At(samples, bytes), signal.data(), bytes) == 0 &&
           memcmp(process_.machine.At(object_ + 4, kWords), Fields(), kWords) == 0;
    process_.heap.Give(samples);
    return same;
  }

 private:
  static constexpr uint32_t kWords = 708;  // up to the first pointer
  const void* Fields() const { return reinterpret_cast<const void* const*>(&here_) + 1; }

  NoLibrary platform_;
  kelvo::FixedPointEffects here_;
  Process& process_;
  const uint32_t object_;
  const uint32_t block_;
};

uint32_t Pointed(Machine& machine, uint32_t pointer) {
  return machine.Word(machine.Word(pointer));
}

}  // namespace

void CheckEffects(Report& report, const std::string& dll) {
  Process process(".");
  process.Load(dll);
  report.Equal("attach", process.Attach(), 1u);
  const uint32_t object = process.CallExport("GetFeature", {9});
  report.Check("the effects", object != 0);
  const std::vector<int16_t> signal = TestSignal();
  {
    Pair pair(process, object);
    uint64_t used = 0;
    report.Check("before any setting", pair.Run(false, signal, 1000, &used));
    for (const Setting& setting : kSettings) {
      pair.Set(setting);
      const std::string name = setting.name;
      report.Check("equalizer: " + name, pair.Run(false, signal, setting.block_frames, &used));
      report.Check("bass: " + name, pair.Run(true, signal, setting.block_frames, &used));
    }
    bool same = true;
    for (int32_t number = 0; number < 60; ++number) {
      const Setting setting = SweepSetting(number);
      const auto from = signal.begin() + number * 150;
      pair.Set(setting);
      for (const bool bass : {false, true}) {
        same = pair.Run(bass, {from, from + 600}, setting.block_frames, &used) && same;
      }
    }
    report.Check("all sliders and modes", same);
    for (const bool bass : {false, true}) {
      pair.Set(kSettings[3]);
      report.Check("in blocks of 4096 frames", pair.Run(bass, signal, 4096, &used));
      const double frame = static_cast<double>(used) / kFrames;
      const char* name = bass ? "bass_frame" : "equalizer_frame";
      printf("     %s %.1f instructions\n", name, frame);
      report.WithinBudget(name, frame, "instructions");
    }
  }
  report.Equal("a ring position", process.machine.Word(object + 584), 2u);
  report.Equal("the preamplifier", process.machine.Word(object + 688), 27u - 9u);
  report.Equal("the equalizer's table", Pointed(process.machine, object + 712), 16289u);
  report.Equal("the bass table", Pointed(process.machine, object + 716), 266882570u);
  process.CallSlot(object, 3, {0});
  const uint32_t block = process.heap.TakeZeroed(8);
  process.machine.SetWord(block, block + 4);
  report.Equal("an equalizer that is off", process.CallSlot(object, 5, {block, 4}), 0u);
  report.Equal("leaves the block alone", process.machine.Word(block + 4), 0u);
  process.heap.Give(block);
  report.Equal("detach", process.Detach(), 1u);
}

}  // namespace bench
