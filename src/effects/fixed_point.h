// The fixed numbers of both stages, and arithmetic on them.
#pragma once

#include <stdint.h>

namespace kelvo {

constexpr int kChannels = 2;
constexpr int kBands = 10;

// A stage does a block in passes of at most as many frames; even, as the loops do two a round.
constexpr int kPassFrames = 64;

// Every filter here is a resonator
//   y = c1 * (x - x two back) - c0 * (y two back) + c2 * (y one back)
// whose gain is about 1 at its centre.
struct ResonatorCoefficients {
  int32_t c0;  // how slowly it rings down, below 1
  int32_t c1;  // (1 - c0) / 2: the gain of its input
  int32_t c2;  // its centre frequency, -2 to 2
};

// Q14, lowest band first.
constexpr ResonatorCoefficients kBandCoefficients[kBands] = {
    {16289, 47, 32672},  {16111, 136, 32485},  {15885, 249, 32238}, {15427, 478, 31695},
    {14819, 782, 30887}, {12114, 2134, 25934}, {8961, 3711, 16635}, {5082, 5650, -2972},
    {4377, 6003, -8538}, {3965, 6209, -13245},
};

// Q28. The built-in stage runs the first one twice; the second belongs to external processing.
constexpr ResonatorCoefficients kBassCoefficients[2] = {
    {266882570, 776442, 535298466},
    {263966111, 2234672, 532245407},
};

struct BassGains {
  int32_t a;  // Q28, 0 to 2.2: after each pass of the built-in stage
  int32_t b;  // Q28, 0 to 1.2: for external processing only
};

constexpr int32_t kBassModes = 5;
constexpr BassGains kBassGains[kBassModes] = {
    {0, 0},
    {0x0F333333, 0x0B333333},  // 0.95, 0.7
    {0x16666666, 0x10000000},  // 1.4,  1.0
    {0x1B333333, 0x13333333},  // 1.7,  1.2
    {0x23333333, 0x13333333},  // 2.2,  1.2
};

// Arithmetic of 32 bits that wraps around, as the device's multiplier does.
constexpr int32_t WrapAdd(int32_t a, int32_t b) noexcept {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

constexpr int32_t WrapSubtract(int32_t a, int32_t b) noexcept {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

constexpr int32_t WrapMultiply(int32_t a, int32_t b) noexcept {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

template <class Integer>
constexpr int16_t ClampToSample(Integer value) noexcept {
  return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

}  // namespace kelvo
