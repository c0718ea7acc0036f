#include "tests/player/program/expected_sound.h"

#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>

#include "tests/support/ogg_files.h"

namespace velmora::test {
namespace {

constexpr size_t kBufferBytes = 16384;       // of sound above 22050 Hz
constexpr size_t kSmallestRoomBytes = 4096;  // a buffer with less is full
constexpr size_t kMostWaiting = 10;          // buffers on their way to the device

}  // namespace

void ReferenceEffects::Set(const EqualizerState& state) {
  int32_t bands[kEqualizerBands];
  std::copy_n(state.bands, kEqualizerBands, bands);
  effects_.SetEqualizer(state.preamp, bands);
  effects_.SetBassMode(state.bass);
  effects_.enabled = state.on;
}

void ReferenceEffects::Process(Samples* samples) {
  const auto bytes = static_cast<int32_t>(samples->size() * sizeof(int16_t));
  effects_.ProcessEqualizer(samples->data(), bytes);
  effects_.ProcessBass(samples->data(), bytes);
}

Blocks DecodeOgg(const std::vector<char>& file, uint32_t start_ms) {
  const int64_t first_frame = start_ms > 0 ? int64_t{44100} * start_ms / 1000 : -1;
  Blocks blocks;
  for (const std::vector<char>& bytes :
       kelvo::test::DecodeIntoBuffers(file, first_frame, kBufferBytes, kSmallestRoomBytes)) {
    Samples block(bytes.size() / 2);
    memcpy(block.data(), bytes.data(), bytes.size());
    blocks.push_back(block);
  }
  EXPECT_FALSE(blocks.empty());
  return blocks;
}

void SoundCheck::Begin(Samples recorded) {
  recorded_ = std::move(recorded);
  at_ = 0;
}

// Whether the recording goes on with this block.
bool SoundCheck::Matches(const Samples& block, ReferenceEffects* effects) const {
  if (recorded_.size() - at_ < block.size()) return false;
  Samples heard = block;
  effects->Process(&heard);
  return std::equal(heard.begin(), heard.end(), recorded_.begin() + static_cast<ptrdiff_t>(at_));
}

// Tries the settings as they are, then one change more after the other.
bool SoundCheck::MatchesWithChanges(const Samples& block) {
  for (size_t changes = 0; changes <= changes_.size(); ++changes) {
    ReferenceEffects effects = effects_;
    if (changes > 0) effects.Set(changes_[changes - 1]);
    if (!Matches(block, &effects)) continue;
    effects_ = effects;
    changes_.erase(changes_.begin(), changes_.begin() + static_cast<ptrdiff_t>(changes));
    at_ += block.size();
    return true;
  }
  return false;
}

void SoundCheck::PlayAll(const Blocks& blocks) {
  for (size_t i = 0; i < blocks.size(); ++i) {
    if (MatchesWithChanges(blocks[i])) continue;
    Samples want = blocks[i];
    effects_.Process(&want);
    const auto from = recorded_.begin() + static_cast<ptrdiff_t>(at_);
    const auto differs = std::mismatch(want.begin(), want.end(), from, recorded_.end());
    const auto place = static_cast<size_t>(differs.first - want.begin());
    ADD_FAILURE() << "block " << i << " of " << blocks.size() << " with " << want.size()
                  << " samples, which begins at sample " << at_ << " of " << recorded_.size()
                  << ", is not as it must be from its sample " << place << " on";
    return;
  }
}

// The number of the first block that does not match.
size_t SoundCheck::PlayWhileMatching(const Blocks& blocks) {
  size_t i = 0;
  while (i < blocks.size() && MatchesWithChanges(blocks[i])) ++i;
  EXPECT_GT(i, 0u) << "not even the first block";
  EXPECT_TRUE(changes_.empty()) << "a change was not heard";
  return i;
}

void SoundCheck::PlayUntilQuit(const Blocks& blocks) {
  PlayWhileMatching(blocks);
  End();
}

void SoundCheck::PlaySome(const Blocks& blocks, const Samples& next, const Samples* next_recorded) {
  size_t i = PlayWhileMatching(blocks);
  if (next_recorded) {
    End();
    Begin(*next_recorded);
  }
  const size_t most = std::min(blocks.size(), i + kMostWaiting);
  for (ReferenceEffects effects = effects_;; ++i) {
    ReferenceEffects tried = effects;
    if (Matches(next, &tried)) {
      effects_ = effects;
      return;
    }
    if (i == most) break;
    Samples unheard = blocks[i];
    effects.Process(&unheard);
  }
  ADD_FAILURE() << "what comes after sample " << at_ << " of " << recorded_.size()
                << " is not as it must be";
}

void SoundCheck::End() {
  EXPECT_EQ(at_, recorded_.size()) << "more was played than the file has";
  EXPECT_TRUE(changes_.empty()) << "a change was not heard";
}

}  // namespace velmora::test
