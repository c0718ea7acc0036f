// Feature 9 as the host sees it: an in-place processor for 16-bit PCM, two channels interleaved.
//
// The object lives from the load of the library to its unload; the host never destroys it. Every
// operation may be called from any thread: the audio thread runs the two stages while the host's
// user-interface thread sets parameters. A stage holds the object's lock for the whole block, and
// SetEqualizer waits for it; EnableEqualizer and SetBassMode never wait and take effect with the
// next block. Nothing allocates and nothing fails.
//
// A block is given by the address of the pointer to its samples (the pointer is read, never moved)
// and by its length in bytes. Lengths below 2, and negative ones, are empty blocks. Half frames are
// rounded up: a block with an odd number of samples is processed as if it had one sample more,
// which is read and written, so the caller passes whole frames of 4 bytes. Filters remember the end
// of a block; a stream may be cut into blocks of any size.
//
// The order of the operations is the order of the slots. There is no virtual destructor: it would
// take two slots.
//
// Generated from tools/contract/effects_processor.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

// The object's words behind the table of operations, by their places on 32 bits. For "Utility.dll",
// which is handed the object and reads it (docs/effects.md). What follows is the library's own; so
// is changing any of this.
//     4  int32_t equalizer_history[10][2][2][3]: band, channel, samples in and out, ring
//   484  int32_t bass_history[2][2][2][3]: channel, stage, samples in and out, ring
//   580  int32_t equalizer_at[3]: places in the rings: current, one back, two back
//   592  int32_t bass_at[3]
//   604  int32_t gains_q14[10]
//   644  int32_t gains_q28[10]
//   684  int32_t flat: 1: every band in the middle
//   688  int32_t preamp_index: 27 - preamp
//   692  int32_t equalizer_enabled
//   696  int32_t band_count
//   700  int32_t bass_mode
//   704  int32_t gain_a_q28
//   708  int32_t gain_b_q28
//   712  const int32_t* equalizer_table: three Q14 numbers a band
//   716  const int32_t* bass_table: two triples in Q28
//   720  int32_t processor_matches: this processor is the one that "Utility.dll" is for
//   724  void* utility: its handle and its two functions; null without it
//   728  void* utility_equalizer
//   732  void* utility_bass
class EffectsProcessor {
 public:
  // Slot 0. Releases what the object holds; with bit 0 of `flags` set, also its memory, which must
  // then have come from the C heap. No other operation may follow or be under way.
  virtual void Destroy(uint32_t flags) noexcept = 0;

  // Slot 1. Strength of the bass stage: 0 is off, 1 to 4 rise from 0.95 to 2.2. Any other mode is
  // stored, which switches the stage on, and the strength stays that of the last known mode (none
  // after 0). Initially 0.
  virtual void SetBassMode(int32_t mode) noexcept = 0;

  // Slot 2. Runs the bass stage over the block; in mode 0 the block is untouched.
  virtual void ProcessBass(int16_t** samples, int32_t bytes) noexcept = 0;

  // Slot 3. Switches the equalizer on (any value but 0) or off. Initially on.
  virtual void EnableEqualizer(int32_t enabled) noexcept = 0;

  // Slot 4. `preamp` is a slider position: 0 is the strongest boost (29/16), 13 leaves the level
  // alone, 27 is the strongest cut (2/16), values beyond mean the nearest end. `bands` points to 10
  // slider positions from the lowest band to the highest, each 0 (strongest boost) to 27 (strongest
  // cut) with 14 in the middle; it is read during the call. With a null `bands` nothing changes.
  // Until the first call the bands contribute nothing and the level is left alone.
  virtual void SetEqualizer(int32_t preamp, const int32_t* bands) noexcept = 0;

  // Slot 5. Runs preamplifier and equalizer over the block. Result: `bytes`, or 0 with the block
  // untouched while the equalizer is off. Every processed sample carries a constant offset of
  // 12500, whatever the sliders say.
  virtual int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept = 0;

 protected:
  ~EffectsProcessor() = default;
};

}  // namespace kelvo
