#pragma once

#include "kelvo/ogg_vorbis_input.h"

namespace kelvo::selftest {

// What came out of playing the tone.
struct Played {
  bool opened, ended;
  uint32_t bytes;
  uint32_t hash;  // FNV-1a, 32 bits, over the bytes
  uint32_t milliseconds;
};

// Plays the tone from memory, as fast as it is decoded, on the plug-in's own thread.
Played PlayTone(OggVorbisInput& plugin) noexcept;

}  // namespace kelvo::selftest
