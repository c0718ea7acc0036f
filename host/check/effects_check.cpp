// The effects processor: its fields, what it refuses, and its simplest sounds. Whether every sample
// is right, kelvotool's effects says.
#include <algorithm>
#include <vector>

#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Effects = KelvoEffectsProcessor;
using Block = std::vector<int16_t>;

constexpr int32_t kBytes = 16;

int32_t Equalize(Effects* effects, Block& block, int32_t bytes) {
  int16_t* samples = block.data();
  const int32_t result = effects->table->ProcessEqualizer(KELVO_ON(effects), &samples, bytes);
  return samples == block.data() ? result : -1;
}

void Bass(Effects* effects, Block& block, int32_t bytes) {
  int16_t* samples = block.data();
  effects->table->ProcessBass(KELVO_ON(effects), &samples, bytes);
}

bool AllZero(const void* words, size_t bytes) {
  const auto* begin = static_cast<const char*>(words);
  return std::all_of(begin, begin + bytes, [](char byte) { return byte == 0; });
}

void CheckFresh(Effects* effects, Report& report) {
  report.Says("A fresh processor is enabled, of 10 bands, without gains, preamplifier or bass",
              effects->equalizer_enabled == 1 && effects->band_count == 10 &&
                  effects->preamp_index == 14 && effects->bass_mode == 0 &&
                  AllZero(effects->gains_q14, sizeof(effects->gains_q14)));
  report.Says("Its histories are empty and its rings stand at 0, 2 and 1",
              AllZero(effects->equalizer_history, sizeof(effects->equalizer_history)) &&
                  AllZero(effects->bass_history, sizeof(effects->bass_history)) &&
                  effects->equalizer_at[0] == 0 && effects->equalizer_at[1] == 2 &&
                  effects->equalizer_at[2] == 1 && effects->bass_at[0] == 0 &&
                  effects->bass_at[1] == 2 && effects->bass_at[2] == 1);
  report.Says(
      "Its tables hold the coefficients, and \"Utility.dll\" is loaded for one processor only",
      effects->equalizer_table[0] == 16289 && effects->equalizer_table[29] == -13245 &&
          effects->bass_table[0] == 266882570 && effects->bass_table[3] == 263966111 &&
          (effects->processor_matches ||
           (!effects->utility && !effects->utility_equalizer && !effects->utility_bass)));
  Block block = {0, 400, -400, 32767, -32768, 7, 0, 1};
  const Block want = {12500, 12600, 12400, 20691, 4308, 12501, 12500, 12500};
  const bool answers = Equalize(effects, block, kBytes) == kBytes;
  report.Says("Before SetEqualizer a sample becomes a quarter of itself plus 12500", block == want);
  report.Says("ProcessEqualizer answers the bytes and leaves the pointer", answers);
  const auto& band = effects->equalizer_history[9][1];
  const int32_t first = 6209 * 400 >> 14, second = (6209 * 32767 - 13245 * first) >> 14;
  report.Says("The rings hold what came in, and what the band's filter made of it",
              band[0][1] == 32767 && band[0][2] == 7 && band[0][0] == 1 && band[1][1] == second);
  report.Says("Four frames move each ring by four places, of three",
              effects->equalizer_at[0] == 1 && effects->equalizer_at[1] == 0 &&
                  effects->equalizer_at[2] == 2);
}

void CheckEqualizer(Effects* effects, Report& report) {
  bool untouched = true;
  for (const int32_t bytes : {1, 0, -1, INT32_MIN}) {
    Block block = {5, 6};
    untouched &= Equalize(effects, block, bytes) == bytes && block == Block{5, 6};
  }
  report.Says("A block of less than 2 bytes is left alone, and its length is answered", untouched);
  Block odd = {0, 0, 0, 0, 1, 1};
  Equalize(effects, odd, 6);
  report.Says("A block of three samples is processed as if it had four",
              odd[2] != 0 && odd[3] != 0 && odd[4] == 1);
  effects->table->EnableEqualizer(KELVO_ON(effects), 0);
  Block off = {5, 6};
  report.Says(
      "A disabled equalizer answers 0 and leaves the block alone",
      Equalize(effects, off, 4) == 0 && off == Block{5, 6} && effects->equalizer_enabled == 0);
  effects->table->EnableEqualizer(KELVO_ON(effects), 1);

  const auto set = [&](int32_t preamp, const int32_t* bands) {
    effects->table->SetEqualizer(KELVO_ON(effects), preamp, bands);
  };
  const int32_t bands[10] = {0, 14, 27, 14, 14, 14, 14, 14, 14, 14};
  set(13, bands);
  report.Says("Sliders 0, 14 and 27 are gains of 16384, 6189 and -3276 in Q14",
              effects->gains_q14[0] == 16384 && effects->gains_q14[1] == 6189 &&
                  effects->gains_q14[2] == -3276);
  report.Says("The gains are there in Q28 too",
              effects->gains_q28[0] == 268435456 && effects->gains_q28[2] == -53687092);
  report.Says("Preamplifier 13 is index 14, which leaves the level alone",
              effects->preamp_index == 14);
  set(5, nullptr);
  report.Says("SetEqualizer without bands changes nothing",
              effects->preamp_index == 14 && effects->gains_q14[0] == 16384);
  int32_t middle[10];
  std::fill(middle, middle + 10, 14);
  const int32_t flat_before = effects->flat;
  set(40, middle);
  report.Says("The flat flag is set when all ten sliders are 14",
              !flat_before && effects->flat == 1);
  const int32_t beyond = effects->preamp_index;
  set(-5, middle);
  report.Says("A preamplifier beyond the ends is the nearest end",
              beyond == 0 && effects->preamp_index == 27);
  set(27, middle);
  Block silence(200, 0);
  Equalize(effects, silence, 400);
  report.Says(
      "The preamplifier's cut writes an eighth: silence stays at 12500 and the filters' rest",
      std::all_of(silence.begin(), silence.end(),
                  [](int16_t sample) { return sample > 0 && sample < 25000; }));
}

void CheckBass(Effects* effects, Report& report) {
  Block block = {1000, -1000};
  Bass(effects, block, 4);
  report.Says("In mode 0 the bass stage leaves the block alone",
              block == Block{1000, -1000} && effects->bass_at[0] == 0);
  const int32_t gains[5][2] = {{0, 0},
                               {0x0F333333, 0x0B333333},
                               {0x16666666, 0x10000000},
                               {0x1B333333, 0x13333333},
                               {0x23333333, 0x13333333}};
  bool set = true;
  for (int32_t mode = 0; mode < 5; ++mode) {
    effects->table->SetBassMode(KELVO_ON(effects), mode);
    set &= effects->bass_mode == mode && effects->gain_a_q28 == gains[mode][0] &&
           effects->gain_b_q28 == gains[mode][1];
  }
  report.Says("Modes 0 to 4 set the gains 0 to 2.2 and 0 to 1.2", set);
  effects->table->SetBassMode(KELVO_ON(effects), 9);
  report.Says("Another mode is stored and keeps the gains",
              effects->bass_mode == 9 && effects->gain_a_q28 == gains[4][0]);
  effects->table->SetBassMode(KELVO_ON(effects), 4);
  Bass(effects, block, 4);
  // x = 2048 s; u = 776442 x >> 28; v = u A >> 28; w = 776442 v >> 28; out = (w A + v + x) >> 12.
  const auto stage = [](int32_t sample) {
    const int64_t x = int64_t{sample} * 2048, a = 0x23333333, c1 = 776442;
    const int64_t v = (c1 * x >> 28) * a >> 28;
    return static_cast<int16_t>((((c1 * v >> 28) * a >> 28) + v + x) >> 12);
  };
  report.Says("The first sample of the bass stage is half of itself and what two filters add",
              block[0] == stage(1000) && block[1] == stage(-1000));
  Block loud(8, 32767);
  Bass(effects, loud, 1);
  report.Says("The bass stage leaves a block of less than 2 bytes alone", loud[0] == 32767);
  effects->table->SetBassMode(KELVO_ON(effects), 0);
}

}  // namespace

void CheckEffects(const Subject& subject, Report& report) {
  report.Begin("Effects");
  auto* effects = subject.Get<Effects>(KELVO_FEATURE_EFFECTS);
  CheckFresh(effects, report);
  CheckEqualizer(effects, report);
  CheckBass(effects, report);
}

}  // namespace velmora::check
