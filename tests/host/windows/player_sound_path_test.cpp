// The whole way of the sound: files through plug-ins, effects and output into recordings, while a
// user turns the knobs of the player. The effects keep their memory for the life of the process:
// nothing may have been played before.
#include <string.h>

#include <algorithm>

#include "tests/host/windows/player_driver.h"
#include "tests/host/windows/recordings.h"
#include "tests/oracles/effects_model.h"
#include "tests/pocketpc/reference_decode.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"

namespace velmora::test {
namespace {

using Samples = std::vector<int16_t>;
using Blocks = std::vector<Samples>;

// In their slow and obvious form; their histories last as long as the program.
using Effects = kelvo::test::ReferenceEffects;

void Set(Effects* effects, const EqualizerState& state) {
  int32_t bands[kEqualizerBands];
  std::copy_n(state.bands, kEqualizerBands, bands);
  effects->SetEqualizer(state.preamp, bands);
  effects->SetBassMode(state.bass);
  effects->enabled = state.on;
}

Samples Processed(Samples samples, Effects* effects) {
  const auto bytes = static_cast<int32_t>(samples.size() * sizeof(int16_t));
  effects->ProcessEqualizer(samples.data(), bytes);
  effects->ProcessBass(samples.data(), bytes);
  return samples;
}

constexpr size_t kBufferBytes = 16384;       // of sound above 22050 Hz
constexpr size_t kSmallestRoomBytes = 4096;  // a buffer with less is full
constexpr size_t kMostWaiting = 10;          // buffers on their way to the device

// An Ogg Vorbis file in the blocks in which the player's decoding thread fills its buffers, from
// a place in the file on.
Blocks DecodeOgg(const std::vector<char>& file, uint32_t start_ms = 0) {
  const int64_t first_frame = start_ms > 0 ? int64_t{44100} * start_ms / 1000 : -1;
  Blocks blocks;
  for (const std::vector<char>& bytes :
       kelvo::test::DecodeIntoBuffers(file, first_frame, kBufferBytes, kSmallestRoomBytes)) {
    Samples block(bytes.size() / 2);
    memcpy(block.data(), bytes.data(), bytes.size());
    blocks.push_back(block);
  }
  return blocks;
}

// Follows a recording from block to block: every sample counts, but when a change of the settings
// is heard is not known beforehand, except that it is between two buffers.
class SoundCheck {
 public:
  explicit SoundCheck(const EqualizerState& settings) { Set(&effects_, settings); }

  // Starts to compare a recording.
  void Begin(Samples recorded) {
    recorded_ = std::move(recorded);
    at_ = 0;
  }
  // Compares with these blocks up to their end, while the user makes these settings.
  void PlayAll(const Blocks& blocks, std::vector<EqualizerState> changes) {
    changes_ = std::move(changes);
    EXPECT_EQ(PlayWhileMatching(blocks), blocks.size()) << "differs after sample " << at_;
    End();
  }
  // Compares with these blocks as long as the recording has them, and throws away those that the
  // player had given to the effects without playing them, so that `next` comes next. At the end of
  // a recording `next` is what the next recording begins with.
  void PlaySome(const Blocks& blocks, std::vector<EqualizerState> changes, const Samples& next,
                const Samples* next_recorded = nullptr) {
    changes_ = std::move(changes);
    size_t i = PlayWhileMatching(blocks);
    EXPECT_GT(i, 0u) << "not even the first block";
    if (next_recorded) {
      End();
      Begin(*next_recorded);
    }
    const size_t most = std::min(blocks.size(), i + kMostWaiting);
    for (Effects effects = effects_;; ++i) {
      Effects tried = effects;
      if (Matches(next, &tried)) {
        effects_ = effects;
        return;
      }
      if (i == most) break;
      Processed(blocks[i], &effects);
    }
    ADD_FAILURE() << "what comes after sample " << at_ << " of " << recorded_.size()
                  << " is not as it must be";
  }

 private:
  // Whether the recording goes on with this block.
  bool Matches(const Samples& block, Effects* effects) const {
    if (recorded_.size() - at_ < block.size()) return false;
    const Samples heard = Processed(block, effects);
    return std::equal(heard.begin(), heard.end(), recorded_.begin() + static_cast<ptrdiff_t>(at_));
  }
  // Tries the settings as they are, then one change more after the other.
  bool MatchesWithChanges(const Samples& block) {
    for (size_t changes = 0; changes <= changes_.size(); ++changes) {
      Effects effects = effects_;
      if (changes > 0) Set(&effects, changes_[changes - 1]);
      if (!Matches(block, &effects)) continue;
      effects_ = effects;
      changes_.erase(changes_.begin(), changes_.begin() + static_cast<ptrdiff_t>(changes));
      at_ += block.size();
      return true;
    }
    return false;
  }
  // The number of the first block that does not match.
  size_t PlayWhileMatching(const Blocks& blocks) {
    size_t i = 0;
    while (i < blocks.size() && MatchesWithChanges(blocks[i])) ++i;
    EXPECT_TRUE(changes_.empty()) << "a change was not heard";
    return i;
  }
  void End() { EXPECT_EQ(at_, recorded_.size()) << "more was played than the file has"; }

  Effects effects_;
  std::vector<EqualizerState> changes_;
  Samples recorded_;
  size_t at_ = 0;
};

void SetSlider(const PlayerDriver& player, int slider, int value) {
  const int x = slider == 0 ? 28 : 85 + 18 * (slider - 1);
  player.Click(player.equalizer(), {x, kGainSlider.ThumbAt(value) + kGainSlider.thumb / 2});
}

TEST(SoundPath, IsThatOfTheFilesAndTheEffectsToTheLastBit) {
  const kelvo::test::InstallationFolder folder;
  const Recordings recordings(folder, L"sound", false);
  const std::wstring song = Media(L"sample.ogg");
  PlayerDriver player({{song, song, Media(L"sample.wma")}, L"", folder.Path(L"session")});
  EqualizerState settings;
  SoundCheck check(settings);
  std::vector<EqualizerState> first, second, third;

  ASSERT_TRUE(recordings.WaitForMore(1));
  player.Click(player.equalizer(), {27, 24});  // on
  settings.on = true;
  first.push_back(settings);
  SetSlider(player, 3, 2);
  settings.bands[2] = 2;
  first.push_back(settings);
  ASSERT_TRUE(recordings.WaitForMore(1));

  constexpr int kSought = 125;  // of 1000, of a bit more than eight seconds
  const int x = kPositionSlider.ThumbAt(kSought) + kPositionSlider.thumb / 2;
  const int sought = kPositionSlider.ValueAt(x);
  player.Click(player.main(), {x, 77});
  ASSERT_TRUE(recordings.WaitForMore(1));
  player.Click(player.equalizer(), {56, 24});  // bass
  settings.bass = 1;
  second.push_back(settings);
  SetSlider(player, 0, 20);
  settings.preamp = 20;
  second.push_back(settings);
  ASSERT_TRUE(recordings.WaitForMore(1));

  player.Click(player.main(), {119, 97});  // next
  ASSERT_TRUE(player.WaitForSong("2. "));
  ASSERT_TRUE(recordings.WaitForMore(2));
  player.Click(player.equalizer(), {27, 24});  // off
  settings.on = false;
  third.push_back(settings);
  for (const uint8_t bass : {2, 3, 4, 0}) {
    player.Click(player.equalizer(), {56, 24});
    settings.bass = bass;
    third.push_back(settings);
  }
  ASSERT_TRUE(player.WaitForSong("3. The Ring Buffers - Sixteen Strings"));
  ASSERT_TRUE(player.WaitUntilStopped());
  player.Quit();

  const std::vector<char> ogg = kelvo::test::ReadMedia("sample.ogg");
  const Blocks blocks = DecodeOgg(ogg);
  size_t frames = 0;
  for (const Samples& block : blocks) frames += block.size() / 2;
  const uint64_t length_ms = uint64_t{frames} * 1000 / 44100;
  const Blocks after_seek = DecodeOgg(ogg, static_cast<uint32_t>(length_ms * sought / 1000));
  const Samples next = recordings.Read(2);

  check.Begin(recordings.Read(1));
  check.PlaySome(blocks, first, after_seek[0]);
  check.PlaySome(after_seek, second, blocks[0], &next);
  check.PlayAll(blocks, third);
  // Without effects: what the system's reader gives first is not the same each time.
  const kelvo::Reference wma = kelvo::DecodeWithSystem(L"..\\..\\media\\sample.wma");
  const Samples third_recorded = recordings.Read(3);
  ASSERT_EQ(third_recorded.size(), wma.samples.size());
  EXPECT_EQ(wma.FirstDifference(third_recorded), wma.samples.size());
}

}  // namespace
}  // namespace velmora::test
