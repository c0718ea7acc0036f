// What the files and the effects must give, worked out without the player, and compared with what
// it has played. Every sample counts; only when a change of the settings is heard is not known
// beforehand, except that it is between two buffers.
#pragma once

#include <stdint.h>

#include <string>
#include <vector>

#include "host/sound_state.h"
#include "tests/effects/reference_effects.h"

namespace velmora::test {

using Samples = std::vector<int16_t>;
using Blocks = std::vector<Samples>;

// The effects in their slow and obvious form; their histories last as long as the program.
class ReferenceEffects {
 public:
  void Set(const EqualizerState& state);
  void Process(Samples* samples);

 private:
  kelvo::test::ReferenceEffects effects_;
};

// An Ogg Vorbis file in the blocks in which the player's decoding thread fills its buffers, from
// a place in the file on.
Blocks DecodeOgg(const std::vector<char>& file, uint32_t start_ms = 0);

// Follows a recording from block to block.
class SoundCheck {
 public:
  explicit SoundCheck(const EqualizerState& settings) { effects_.Set(settings); }

  // Starts to compare a recording.
  void Begin(Samples recorded);
  // Some settings that the user made one after the other while the next stretch played.
  void Expect(const EqualizerState& settings) { changes_.push_back(settings); }
  // Compares with these blocks up to their end.
  void PlayAll(const Blocks& blocks);
  // Compares with these blocks as long as the recording has them, and throws away those that the
  // player had given to the effects without playing them, so that `next` comes next. At the end of
  // a recording `next` is what the next recording begins with.
  void PlaySome(const Blocks& blocks, const Samples& next, const Samples* next_recorded = nullptr);
  // Compares with these blocks as long as the recording has them; it ends with one of them.
  void PlayUntilQuit(const Blocks& blocks);
  // The recording is over.
  void End();

 private:
  bool Matches(const Samples& block, ReferenceEffects* effects) const;
  bool MatchesWithChanges(const Samples& block);
  size_t PlayWhileMatching(const Blocks& blocks);

  ReferenceEffects effects_;
  std::vector<EqualizerState> changes_;
  Samples recorded_;
  size_t at_ = 0;
};

}  // namespace velmora::test
