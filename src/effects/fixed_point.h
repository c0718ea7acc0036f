// 32-bit arithmetic that wraps around, as the device's multiplier does, and the final clamp.
#pragma once

#include <stdint.h>

namespace kelvo {

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
