#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo::selftest {

// tone.ogg, in the program: two seconds of two tones that grow and fade, 44.1 kHz, stereo.
extern const uint8_t kTone[];
extern const size_t kToneBytes;
// What every decoder makes of it that computes as ours does.
inline constexpr uint32_t kTonePcmBytes = 352800;
inline constexpr uint32_t kTonePcmHash = 0xE0FA335A;  // FNV-1a, 32 bits
inline constexpr uint32_t kToneMs = 2000;

}  // namespace kelvo::selftest
