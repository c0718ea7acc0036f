// Without arguments: what the effects cost, and what the faster of the equalizer's two loops gains.
//   bench_effects copy|equalizer IN.wav OUT.raw
// runs 16-bit stereo samples from file to file, for tests/bench/compare_effects.sh.
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <vector>

#include "effects/stages.h"
#include "tests/bench/measure.h"

namespace {

constexpr int32_t kSliders[kelvo::kBands] = {10, 3, 14, 20, 5, 9, 14, 12, 7, 2};
constexpr size_t kWavHeader = 44;
constexpr uint32_t kBlockFrames = 4096;

int RunFile(bool equalize, const char* in_path, const char* out_path) {
  FILE* in = fopen(in_path, "rb");
  FILE* out = fopen(out_path, "wb");
  static int16_t block[kBlockFrames * kelvo::kChannels];
  bool fine = in && out && fread(block, 1, kWavHeader, in) == kWavHeader;
  kelvo::EffectsState state;
  kelvo::EqualizerPass pass;
  kelvo::SetEqualizer(state, 13, kSliders);
  while (fine) {
    const size_t frames = fread(block, sizeof(int16_t) * kelvo::kChannels, kBlockFrames, in);
    if (frames == 0) break;
    if (equalize) {
      kelvo::RunEqualizer(state, pass, kelvo::RunBands, block, static_cast<uint32_t>(frames));
    }
    fine = fwrite(block, sizeof(int16_t) * kelvo::kChannels, frames, out) == frames;
  }
  if (!fine) fprintf(stderr, "cannot process %s\n", in_path);
  if (in) fclose(in);
  if (out) fclose(out);
  return fine ? 0 : 1;
}

void Measure() {
  std::vector<int16_t> samples(44100 * 2);
  uint32_t noise = 1;
  for (int16_t& sample : samples) {
    noise = noise * 1664525u + 1013904223u;
    sample = static_cast<int16_t>(static_cast<int16_t>(noise >> 16) / 3);
  }
  const uint32_t frames = static_cast<uint32_t>(samples.size() / 2);
  kelvo::EffectsState state;
  kelvo::EqualizerPass pass;
  kelvo::SetEqualizer(state, 13, kSliders);
  // Each round works on the same input: what was processed once is at the rails.
  std::vector<int16_t> work;
  kelvo::bench::Compare(
      "side by side / band by band", 0.8,
      [&] {
        work = samples;
        kelvo::RunEqualizer(state, pass, kelvo::RunBands, work.data(), frames);
      },
      [&] {
        work = samples;
        kelvo::RunEqualizer(state, pass, kelvo::RunBandByBand, work.data(), frames);
      });
  kelvo::bench::Compare(
      "bass / equalizer", 1.0,
      [&] {
        work = samples;
        kelvo::RunBass(state, kelvo::kBassGains[4].a, work.data(), frames);
      },
      [&] {
        work = samples;
        kelvo::RunEqualizer(state, pass, kelvo::RunBands, work.data(), frames);
      });
  printf("(each on one second of 44.1 kHz stereo)\n");
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 1) {
    Measure();
    return 0;
  }
  if (count != 4) {
    fprintf(stderr, "usage: bench_effects [copy|equalizer IN.wav OUT.raw]\n");
    return 2;
  }
  return RunFile(strcmp(arguments[1], "equalizer") == 0, arguments[2], arguments[3]);
}
