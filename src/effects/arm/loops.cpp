// The loops for the device; what is done frame by frame is in loops.S.
#include "effects/stages.h"

namespace kelvo {
namespace {

// As loops.S reads them. `end` is an even number of frames, but not 0, behind the first.
struct Band {
  int32_t minus_c0, c1, c2;  // c0 is negated for the multiply-and-add instruction
  int32_t gain;
  int32_t newer[kChannels], older[kChannels];
};

struct Stage {
  int32_t minus_c0, c1, c2;
  int32_t gain;
  BassPass::Memory memory;
};

static_assert(sizeof(Band) == 32 && sizeof(Stage) == 32 && sizeof(BandsFrame) == 24);

extern "C" {
// Replaces the sums by the band's share, or adds it.
void KelvoStartSums(Band* band, BandsFrame* first, const BandsFrame* end) noexcept;
void KelvoAddToSums(Band* band, BandsFrame* first, const BandsFrame* end) noexcept;
// One channel; `samples` goes from frame to frame, `wet` is between the stages.
void KelvoBassFirstStage(Stage* stage, int16_t* samples, int32_t* wet, const int32_t* end) noexcept;
void KelvoBassSecondStage(Stage* stage, int16_t* samples, int32_t* wet,
                          const int32_t* end) noexcept;
}

}  // namespace

void RunBands(const EffectsState& state, EqualizerPass& pass) noexcept {
  if (pass.frames == 1) return RunBandByBand(state, pass);
  for (int b = 0; b < kBands; ++b) {
    const ResonatorCoefficients& numbers = state.equalizer_table[b];
    int32_t(&newer)[kChannels] = pass.newer[b];
    int32_t(&older)[kChannels] = pass.older[b];
    Band band = {-numbers.c0,        numbers.c1,           numbers.c2,
                 state.gains_q14[b], {newer[0], newer[1]}, {older[0], older[1]}};
    const auto loop = b == 0 ? KelvoStartSums : KelvoAddToSums;
    loop(&band, pass.work, pass.work + pass.frames);
    for (int c = 0; c < kChannels; ++c) {
      newer[c] = band.newer[c];
      older[c] = band.older[c];
    }
  }
}

void RunBassStages(BassPass& pass, int16_t* samples) noexcept {
  if (pass.frames == 1) return RunBassByStage(pass, samples);
  int32_t wet[kPassFrames];
  for (int c = 0; c < kChannels; ++c) {
    for (int s = 0; s < kBassStages; ++s) {
      Stage stage = {-pass.numbers.c0, pass.numbers.c1, pass.numbers.c2, pass.gain,
                     pass.memory[c][s]};
      const auto loop = s == 0 ? KelvoBassFirstStage : KelvoBassSecondStage;
      loop(&stage, samples + c, wet, wet + pass.frames);
      pass.memory[c][s] = stage.memory;
    }
  }
}

}  // namespace kelvo
