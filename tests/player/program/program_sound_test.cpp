// The whole way of the sound: files through plug-ins, effects and output into recordings, while a
// user turns the knobs of the real program.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/player/views/equalizer_view.h"
#include "host/player/views/main_view.h"
#include "tests/player/program/expected_sound.h"
#include "tests/player/program/player_process.h"
#include "tests/player/program/recordings.h"
#include "tests/pocketpc/reference_decode.h"
#include "tests/support/media_files.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

using kelvo::test::ReadMedia;

void SetSlider(const PlayerProcess& player, int slider, int value) {
  const int x = slider == 0 ? 28 : 85 + 18 * (slider - 1);
  player.Click(player.equalizer(), x, kGainSlider.ThumbAt(value) + kGainSlider.thumb / 2);
}

TEST(ProgramSound, IsThatOfTheFilesAndTheEffectsToTheLastBit) {
  const Installed installed;
  const Recordings recordings(installed, false);
  PlayerProcess player;
  ASSERT_TRUE(player.Start(installed,
                           L"..\\..\\media\\sample.ogg ..\\..\\media\\sample.ogg "
                           L"..\\..\\media\\sample.wma"));
  EqualizerState settings;
  SoundCheck check(settings);
  std::vector<EqualizerState> first, second, third;

  ASSERT_TRUE(recordings.WaitForMore(player, 1));
  player.Click(player.equalizer(), 27, 24);  // on
  settings.on = true;
  first.push_back(settings);
  SetSlider(player, 3, 2);
  settings.bands[2] = 2;
  first.push_back(settings);
  ASSERT_TRUE(recordings.WaitForMore(player, 1));

  constexpr int kSought = 125;  // of 1000, of a bit more than eight seconds
  const int x = kPositionSlider.ThumbAt(kSought) + kPositionSlider.thumb / 2;
  const int sought = kPositionSlider.ValueAt(x);
  player.Click(player.main(), x, 77);
  ASSERT_TRUE(recordings.WaitForMore(player, 1));
  player.Click(player.equalizer(), 56, 24);  // bass
  settings.bass = 1;
  second.push_back(settings);
  SetSlider(player, 0, 20);
  settings.preamp = 20;
  second.push_back(settings);
  ASSERT_TRUE(recordings.WaitForMore(player, 1));

  player.Click(player.main(), 119, 97);  // next
  ASSERT_TRUE(player.WaitForSong("2. "));
  ASSERT_TRUE(recordings.WaitForMore(player, 2));
  player.Click(player.equalizer(), 27, 24);  // off
  settings.on = false;
  third.push_back(settings);
  for (const uint8_t bass : {2, 3, 4, 0}) {
    player.Click(player.equalizer(), 56, 24);
    settings.bass = bass;
    third.push_back(settings);
  }
  ASSERT_TRUE(player.WaitForSong("3. The Ring Buffers - Sixteen Strings"));
  ASSERT_TRUE(player.WaitUntilStopped());
  ASSERT_TRUE(player.Quit());

  const std::vector<char> ogg = ReadMedia("sample.ogg");
  const Blocks blocks = DecodeOgg(ogg);
  size_t frames = 0;
  for (const Samples& block : blocks) frames += block.size() / 2;
  const uint64_t length_ms = uint64_t{frames} * 1000 / 44100;
  const Blocks after_seek = DecodeOgg(ogg, static_cast<uint32_t>(length_ms * sought / 1000));
  const Samples next = recordings.Read(2);

  check.Begin(recordings.Read(1));
  for (const EqualizerState& change : first) check.Expect(change);
  check.PlaySome(blocks, after_seek[0]);
  for (const EqualizerState& change : second) check.Expect(change);
  check.PlaySome(after_seek, blocks[0], &next);
  for (const EqualizerState& change : third) check.Expect(change);
  check.PlayAll(blocks);
  check.End();
  // Without effects: what the system's reader gives first is not the same each time.
  const kelvo::Reference wma = kelvo::DecodeWithSystem(L"..\\..\\media\\sample.wma");
  const Samples third_recorded = recordings.Read(3);
  ASSERT_EQ(third_recorded.size(), wma.samples.size());
  EXPECT_EQ(wma.FirstDifference(third_recorded), wma.samples.size());
}

}  // namespace
}  // namespace velmora::test
