// The processor written down literally, slow and obvious: every field in its place, every sample by
// itself.
#pragma once

#include <cstdint>
#include <cstring>
#include <iterator>

namespace kelvo::test {

struct ReferenceEffects {
  struct Rings {
    int32_t in[3], out[3];
  };
  Rings equalizer[10][2] = {};
  Rings bass[2][2] = {};
  int32_t equalizer_at[3] = {0, 2, 1};  // current, one back, two back
  int32_t bass_at[3] = {0, 2, 1};
  int32_t q14[10] = {}, q28[10] = {};
  int32_t flat = 0, preamp_index = 14, enabled = 1, band_count = 10;
  int32_t mode = 0, gain_a = 0, gain_b = 0;

  void SetBassMode(int32_t to) {
    static const int32_t kGains[5][2] = {{0, 0},
                                         {0x0F333333, 0x0B333333},
                                         {0x16666666, 0x10000000},
                                         {0x1B333333, 0x13333333},
                                         {0x23333333, 0x13333333}};
    mode = to;
    if (to < 0 || to > 4) return;
    gain_a = kGains[to][0];
    gain_b = kGains[to][1];
  }

  void SetEqualizer(int32_t preamp, const int32_t* sliders) {
    if (!sliders) return;
    flat = 1;
    for (int k = 0; k < 10; ++k) {
      // Each step rounded as its type says, also by processors that calculate more precisely.
      volatile double gain = (27.0 - sliders[k]) * 0.044444444444444446;
      gain = gain - 0.2;
      const volatile float single = static_cast<float>(gain);
      q14[k] = LowWord(single * 16384.0f);
      q28[k] = LowWord(single * 268435456.0f);
      if (sliders[k] != 14) flat = 0;
    }
    preamp_index = preamp < 0 ? 27 : preamp > 27 ? 0 : 27 - preamp;
  }

  int32_t ProcessEqualizer(int16_t* samples, int32_t bytes) {
    static const int32_t kTable[10][3] = {
        {16289, 47, 32672},  {16111, 136, 32485},  {15885, 249, 32238}, {15427, 478, 31695},
        {14819, 782, 30887}, {12114, 2134, 25934}, {8961, 3711, 16635}, {5082, 5650, -2972},
        {4377, 6003, -8538}, {3965, 6209, -13245},
    };
    if (enabled == 0) return 0;
    for (int frame = 0; frame < Frames(bytes); ++frame, Advance(equalizer_at)) {
      for (int c = 0; c < 2; ++c, ++samples) {
        int32_t s = *samples;
        if (preamp_index != 14) s = ((preamp_index + 2) * s) >> 4;
        int64_t sum = 0;
        for (int k = 0; k < 10; ++k) {
          const int64_t y = Filter(equalizer[k][c], equalizer_at, kTable[k], s, 14);
          sum += y * q14[k];
        }
        *samples = Clamp((sum >> 12) + (s >> 2) + 12500);
      }
    }
    return bytes;
  }

  void ProcessBass(int16_t* samples, int32_t bytes) {
    static const int32_t kNumbers[3] = {266882570, 776442, 535298466};
    if (mode == 0) return;
    for (int frame = 0; frame < Frames(bytes); ++frame, Advance(bass_at)) {
      for (int c = 0; c < 2; ++c, ++samples) {
        const int32_t x = *samples * 2048;
        const int64_t u = Filter(bass[c][0], bass_at, kNumbers, x, 28);
        const int32_t v = static_cast<int32_t>(u * gain_a >> 28);
        const int64_t w = Filter(bass[c][1], bass_at, kNumbers, v, 28);
        *samples = Clamp(((w * gain_a >> 28) + v + x) >> 12);
      }
    }
  }

 private:
  static int32_t Frames(int32_t bytes) { return bytes < 2 ? 0 : (bytes / 2 - 1) / 2 + 1; }

  // Cut towards zero; of what 32 bits do not hold the low ones remain.
  static int32_t LowWord(float value) { return static_cast<int32_t>(static_cast<int64_t>(value)); }

  static int16_t Clamp(int64_t value) {
    return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
  }

  static void Advance(int32_t (&at)[3]) {
    for (int32_t& position : at) position = position == 2 ? 0 : position + 1;
  }

  static int32_t Filter(Rings& rings, const int32_t (&at)[3], const int32_t (&c)[3], int32_t x,
                        int shift) {
    const int64_t sum = int64_t{c[1]} * (int64_t{x} - rings.in[at[2]]) -
                        int64_t{c[0]} * rings.out[at[2]] + int64_t{c[2]} * rings.out[at[1]];
    rings.in[at[0]] = x;
    // The equalizer's sums are cut to 32 bits before the shift.
    const int64_t cut = shift == 14 ? static_cast<int32_t>(sum) : sum;
    return rings.out[at[0]] = static_cast<int32_t>(cut >> shift);
  }
};

// The words behind an object's table of operations that differ from the reference's: their offset
// on 32 bits (the first one's), or 0.
inline size_t DifferingOffset(const void* fields, const ReferenceEffects& want) {
  int32_t words[2][sizeof(want) / 4];
  std::memcpy(words[0], fields, sizeof(want));
  std::memcpy(words[1], &want, sizeof(want));
  for (size_t i = 0; i < std::size(words[0]); ++i) {
    if (words[0][i] != words[1][i]) return 4 + 4 * i;
  }
  return 0;
}

}  // namespace kelvo::test
