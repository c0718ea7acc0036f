// Every order in which the player component's audio thread and the host's thread can come to the
// redirected output: while the tap is set up, parameters change, samples are read for a
// visualisation, and the library goes. Each block has to sound as if a whole change came before or
// after each stage, and reads have to see blocks that were stored, in their order.
#include <string.h>

#include <vector>

#include "base/sync/thread.h"
#include "effects/effects_processor.h"
#include "input/wma/output_redirection.h"
#include "tests/oracles/effects_model.h"
#include "tests/schedules/exploration.h"
#include "tests/support/other_processor.h"
#include "tests/wma/component.h"

namespace kelvo {
namespace {

using test::Fail;
using test::ReferenceEffects;

constexpr int kBlocks = 3;
constexpr int kSamples = 4;
constexpr UINT kWritten = 5;
constexpr int32_t kSliders[2][10] = {{14, 14, 14, 14, 14, 14, 14, 14, 14, 14},
                                     {0, 3, 27, 14, 9, 1, 22, 5, 0, 18}};

// What the host has decided after so many operations.
struct Decided {
  bool tapped = false;
  int32_t enabled = 1;
  int sliders = 0;
  int32_t mode = 0;
};

// Between which operations something happened, or between which blocks.
struct Span {
  size_t first, last;
};
struct Block {
  Span decided;
  int16_t before[kSamples], heard[kSamples];
};
struct Reading {
  Span stored;
  bool freed;
  int32_t result;
  int16_t samples[kVisualisationSamples];
};

bool g_component_ends;
const char* g_operations;
std::vector<Decided> g_decided;  // the last one may be under way
size_t g_done;                   // operations
std::vector<Block> g_blocks;
size_t g_stored;  // blocks that are through
std::vector<Reading> g_readings;

void AudioThread(void*) {
  for (int i = 0; i < kBlocks && !g_component_ends; ++i) {
    Block block = {};
    for (int s = 0; s < kSamples; ++s) block.before[s] = static_cast<int16_t>(1000 * i + 77 * s);
    block.decided.first = g_done;
    g_blocks.push_back(block);
    int16_t samples[kSamples];
    memcpy(samples, block.before, sizeof(samples));
    if (test::PlayBlock(i % 2, samples, sizeof(samples)) != kWritten) Fail("a block is lost");
    g_blocks.back().decided.last = g_decided.size() - 1;
    g_stored = g_blocks.size();
    test::Point();
  }
}

// Whether the readings fit when only `stored` (bits) of the blocks went into the tap; so many
// blocks have been before the one at `at`.
bool ReadingsFit(unsigned stored, size_t at, size_t blocks, int latest, uint32_t position) {
  if (at == g_readings.size()) return true;
  const Reading& reading = g_readings[at];
  for (size_t now = blocks; now <= reading.stored.last; ++now) {
    if (now > blocks && (stored >> (now - 1) & 1)) {
      latest = static_cast<int>(now) - 1;
      position = 0;
    }
    if (now < reading.stored.first) continue;
    int16_t want[kVisualisationSamples] = {};
    const uint32_t count = latest < 0 ? 0 : kSamples / 2;
    const bool more = !reading.freed && position <= count;
    for (uint32_t i = position; more && i < count; ++i) {
      want[i - position] = g_blocks[static_cast<size_t>(latest)].heard[2 * i];
    }
    if (reading.result == more && memcmp(want, reading.samples, sizeof(want)) == 0 &&
        ReadingsFit(stored, at + 1, now, latest, position + more * kVisualisationSamples)) {
      return true;
    }
  }
  return false;
}

// Whether what was decided explains the blocks from `at` on.
bool Explained(size_t at, const ReferenceEffects& before, unsigned stored) {
  if (at == g_blocks.size()) return ReadingsFit(stored, 0, 0, -1, 0);
  const Block& block = g_blocks[at];
  const auto sounds = [&](const int16_t(&samples)[kSamples]) {
    return memcmp(samples, block.heard, sizeof(samples)) == 0;
  };
  const size_t first = block.decided.first, last = block.decided.last;
  for (size_t i = first; i <= last; ++i) {
    if (!g_decided[i].tapped) {
      if (sounds(block.before) && Explained(at + 1, before, stored)) return true;
      continue;
    }
    for (size_t on = first; on <= last; ++on) {
      for (size_t set = on; set <= last; ++set) {
        for (size_t bass = set; bass <= last; ++bass) {
          ReferenceEffects model = before;
          int16_t samples[kSamples];
          memcpy(samples, block.before, sizeof(samples));
          model.enabled = g_decided[on].enabled;
          model.SetEqualizer(13, kSliders[g_decided[set].sliders]);
          model.ProcessEqualizer(samples, sizeof(samples));
          model.SetBassMode(g_decided[bass].mode);
          model.ProcessBass(samples, sizeof(samples));
          if (sounds(samples) && Explained(at + 1, model, stored | 1u << at)) return true;
        }
      }
    }
  }
  return false;
}

void Do(char operation, EffectsProcessor& effects, AudioTap& tap, Thread& audio) {
  const HMODULE module = test::ComponentModule();
  Decided decided = g_decided.back();
  if (operation == 'i') decided.tapped = true;
  if (operation == 'x') decided.tapped = false;
  if (strchr("dD", operation)) decided.enabled = operation == 'D';
  if (operation == 'e') decided.sliders = 1;
  if (strchr("014", operation)) decided.mode = operation - '0';
  g_decided.push_back(decided);
  if (operation == 'i') InstallOutputTap(module, module, &effects, &tap);
  if (strchr("dD", operation)) effects.EnableEqualizer(decided.enabled);
  if (operation == 'e') effects.SetEqualizer(13, kSliders[1]);
  if (strchr("014", operation)) effects.SetBassMode(decided.mode);
  if (operation == 'r') {
    Reading reading = {{g_stored, 0}, !audio.held(), 0, {}};
    reading.result = tap.Read(reading.samples);
    reading.stored.last = g_blocks.size();
    g_readings.push_back(reading);
  }
  if (operation == 'x') {
    RestoreOutput(module);
    g_component_ends = true;
    audio.Join();
    ForgetOutputTap();
    tap.FreeBuffer();
    effects.Destroy(0);
  }
  g_done = g_decided.size() - 1;
}

void Host() {
  test::ResetComponent();
  g_component_ends = false;
  g_decided.assign(1, {});
  g_done = g_stored = 0;
  g_blocks.clear();
  g_readings.clear();
  FixedPointEffects effects(test::g_other_processor);
  AudioTap tap;
  Thread audio;
  effects.SetEqualizer(13, kSliders[0]);
  if (!audio.Start(AudioThread, nullptr, kPriorityNormal)) Fail("no thread");
  for (const char* operation = g_operations; *operation; ++operation) {
    Do(*operation, effects, tap, audio);
  }
  Do('x', effects, tap, audio);
  Do('r', effects, tap, audio);
  if (!test::CallsTheSystem()) Fail("the component still calls the library");
  if (!Explained(0, ReferenceEffects(), 0)) Fail("nothing explains what is heard and seen");
}

class AudioTapSchedules : public test::Exploration {
 protected:
  std::string Scene() const override { return g_operations; }
};

TEST_F(AudioTapSchedules, OfOperationsAndBlocks) {
  // i redirects, e sets the sliders, d and D switch the equalizer, 0 1 4 set the bass, r reads.
  for (const char* operations : {"i", "ir", "irr", "ie", "id", "idDr", "i1", "i10", "i41", "i40er",
                                 "4i0", "14ied", "ierdr", "i1r0r"}) {
    g_operations = operations;
    if (!Explore(Host, Switches(2))) break;
  }
}

}  // namespace

UINT test::WaveOutWrite(HANDLE, void* header, UINT) {
  Point();
  memcpy(g_blocks.back().heard, static_cast<WAVEHDR*>(header)->lpData, sizeof(Block::heard));
  return kWritten;
}

}  // namespace kelvo

bool VirtualProtect(void*, size_t, DWORD, DWORD*) noexcept {
  kelvo::test::Point();
  return true;
}
