// The outputs between the plug-ins and the device. (What the effects make of the sound:
// tests/host/windows/player_sound_path_test.cpp.)
#include <windows.h>

#include <cstring>
#include <vector>

#include "tests/player/rig.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"
#include "tests/support/recording_output.h"

namespace velmora {
namespace {

using test::Media;
using test::Rig;
using test::UseSink;
using Pcm = std::vector<int16_t>;

Pcm Samples(const std::vector<char>& bytes) {
  Pcm samples(bytes.size() / 2);
  memcpy(samples.data(), bytes.data(), samples.size() * 2);
  return samples;
}

TEST(PlayerSound, VolumeAndBalanceAreTheDevices) {
  UseSink(L"silence", true);
  Rig rig;
  rig.player.SetVolume(50);
  rig.player.SetBalance(-100);
  DWORD volume = 0;
  EXPECT_EQ(waveOutGetVolume(nullptr, &volume), MMSYSERR_NOERROR);
  EXPECT_EQ(volume, DeviceVolume(50, -100));
}

TEST(WaveOutput, AResetKeepsThePauseAndRefusalsAreRemembered) {
  UseSink(L"silence", true);
  WaveOutput output;
  output.Reset();
  EXPECT_NE(output.Drained(), 0) << "not open";
  ASSERT_TRUE(output.Open(2, 4096, 2, 44100, 16));
  const auto write = [&](kelvo::OutputBuffer* buffer) {
    buffer->length_bytes = buffer->valid_bytes = 4096;
    return output.Write(buffer, 0);
  };
  output.Pause(1);
  EXPECT_TRUE(write(output.GetBuffer()));
  output.Reset();
  kelvo::OutputBuffer* const buffer = output.GetBuffer();
  EXPECT_TRUE(write(buffer));
  Sleep(50);
  EXPECT_EQ(output.Drained(), 0);
  EXPECT_EQ(output.PlayedSamples(0, 0), 0u);
  EXPECT_FALSE(output.failed());
  EXPECT_FALSE(write(buffer)) << "queued already";
  EXPECT_TRUE(output.failed());
  output.Close();
  output.Pause(1);  // both may come just then, and change nothing
  output.Reset();
  ASSERT_TRUE(output.Open(2, 4096, 2, 44100, 16));
  EXPECT_FALSE(output.failed());
  EXPECT_TRUE(write(output.GetBuffer()));
  while (output.PlayedSamples(0, 0) < 1024) Sleep(1);
  EXPECT_NE(output.Drained(), 0);
  EXPECT_EQ(output.PlayedSamples(0, 0), 1024u);
}

TEST(PlayerSound, WindowsMediaGoesOnWithTheSampleThatFollows) {
  const auto record = [](const wchar_t* sink, bool pause) {
    UseSink(sink, !pause);
    Rig rig;
    rig.player.Add({Media(L"sample.wma")});
    EXPECT_TRUE(rig.player.PlayTrack(0));
    if (pause) {
      EXPECT_TRUE(rig.RunUntil([&] { return rig.player.status().position_ms > 2500; }));
      rig.player.TogglePause();
      rig.RunFor(200);
      rig.player.TogglePause();
    }
    EXPECT_TRUE(rig.RunUntilStopped());
    return kelvo::ReadWav(sink).samples;
  };
  const Pcm whole = record(L"wma_whole.wav", false), paused = record(L"wma_paused.wav", true);
  ASSERT_EQ(paused.size(), whole.size());
  int32_t furthest = 0;
  size_t at = 0;
  // The system's decoder begins a file with what its memory held before.
  for (size_t i = 2 * 44100; i < whole.size(); ++i) {
    const int32_t distance = std::abs(paused[i] - whole[i]);
    if (distance > furthest) {
      furthest = distance;
      at = i;
    }
  }
  EXPECT_LE(furthest, 4) << "at " << at;  // its arithmetic has a memory too
}

TEST(PlayerSound, NothingIsHeardBetweenTwoTracks) {
  const wchar_t* const tracks[] = {L"tone_8000_stereo.ogg", L"tone_8000_stereo.ogg"};
  UseSink(L"two_tracks.wav", false);
  Rig rig;
  Pcm want;
  for (const wchar_t* track : tracks) {
    rig.player.Add({Media(track)});
    const Pcm sound = Samples(kelvo::test::DecodeDirectly(
        kelvo::test::ReadMedia(std::string(track, track + wcslen(track)))));
    want.insert(want.end(), sound.begin(), sound.end());
  }
  rig.player.Play();
  ASSERT_TRUE(rig.RunUntil([&] { return rig.ends == 1; }));
  EXPECT_LT(kelvo::ReadWav(L"two_tracks.wav").samples.size(), want.size() / 2);
  EXPECT_LT(rig.player.status().position_ms, 500u) << "the one before is still heard";
  ASSERT_TRUE(rig.RunUntilStopped());
  EXPECT_EQ(kelvo::ReadWav(L"two_tracks.wav").samples, want) << "to the end, without a sample more";

  rig.player.PlayTrack(0);
  ASSERT_TRUE(rig.RunUntil([&] { return rig.player.status().position_ms > 200; }));
  rig.player.Stop();
  const size_t heard = kelvo::ReadWav(L"two_tracks-2.wav").samples.size();
  Sleep(300);
  EXPECT_EQ(kelvo::ReadWav(L"two_tracks-2.wav").samples.size(), heard) << "a stop is one at once";
}

// Doubles what it gets, and adds the number of bytes to the first sample.
class LoudEffects final : public kelvo::EffectsProcessor {
 public:
  void Destroy(uint32_t) noexcept override {}
  void SetBassMode(int32_t) noexcept override {}
  void ProcessBass(int16_t** samples, int32_t bytes) noexcept override {
    (*samples)[0] = static_cast<int16_t>((*samples)[0] + bytes);
  }
  void EnableEqualizer(int32_t) noexcept override {}
  void SetEqualizer(int32_t, const int32_t*) noexcept override {}
  int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override {
    for (int32_t i = 0; i < bytes / 2; ++i) (*samples)[i] = static_cast<int16_t>((*samples)[i] * 2);
    return bytes;
  }
};

TEST(EffectsOutput, TakesOneAndTwoChannels) {
  const struct {
    uint32_t channels;
    Pcm want;
  } cases[] = {
      {1, {2 + 6 * 4, 4, 6, 8, 10, 12}},
      {2, {2 + 3 * 4, 4, 6, 8, 10, 12}},
      {6, {1, 2, 3, 4, 5, 6}},
  };
  for (const auto& c : cases) {
    kelvo::test::RecordingOutput device;
    LoudEffects effects;
    EffectsOutput output(device, effects);
    ASSERT_TRUE(output.Open(8, 4096, c.channels, 44100, 16));
    kelvo::OutputBuffer* const buffer = output.GetBuffer();
    for (int16_t i = 0; i < 6; ++i) reinterpret_cast<int16_t*>(buffer->data)[i] = i + 1;
    buffer->length_bytes = buffer->valid_bytes = 12;
    output.Write(buffer, 4096 - 12);
    EXPECT_EQ(Samples(device.pcm()), c.want) << c.channels;
    EXPECT_FALSE(output.TakeClipped());
  }
}

TEST(PlayerSound, TheEqualizerClipsWhenItIsRaisedNotAsItComes) {
  for (const bool raised : {false, true}) {
    UseSink(L"silence", true);
    Rig rig;
    EqualizerState sound;
    sound.on = true;
    if (raised) sound.preamp = 0;
    rig.player.SetEqualizer(sound);
    rig.player.Add({Media(L"sample.ogg")});
    rig.player.Play();
    ASSERT_TRUE(rig.RunUntilStopped());
    EXPECT_EQ(rig.player.TakeClipped(), raised);
    EXPECT_FALSE(rig.player.TakeClipped()) << "taken";
    EXPECT_EQ(rig.player.TakeNotice().empty(), !raised);
    rig.player.SetEqualizer(EqualizerState());
  }
}

// Writes a ramp through a tap into an output that a test holds.
TEST(SampleTap, ShowsWhatIsHeard) {
  kelvo::test::RecordingOutput device;
  SampleTap tap(device);
  int16_t samples[kPictureSamples];
  EXPECT_FALSE(tap.Samples(samples)) << "not open";
  ASSERT_TRUE(tap.Open(8, 4096, 2, 11025, 16));
  EXPECT_FALSE(tap.written_any());
  device.SetHold(true);
  int16_t next = 0;
  const auto write = [&] {
    kelvo::OutputBuffer* const buffer = tap.GetBuffer();
    auto* frames = reinterpret_cast<int16_t*>(buffer->data);
    for (int i = 0; i < 1024; ++i) {
      frames[2 * i] = next++;
      frames[2 * i + 1] = -1;
    }
    buffer->length_bytes = buffer->valid_bytes = 4096;
    tap.Write(buffer, 0);
  };
  write();
  write();
  EXPECT_TRUE(tap.written_any());
  EXPECT_FALSE(tap.Samples(samples)) << "nothing has been heard";
  device.SetHold(false);  // 2048 frames are heard
  device.SetHold(true);
  ASSERT_TRUE(tap.Samples(samples));
  EXPECT_EQ(samples[kPictureSamples - 1], 2047) << "up to the end of what there is";
  EXPECT_FALSE(tap.Samples(samples)) << "nothing new";
  for (int i = 0; i < 20; ++i) {
    device.SetHold(false);
    device.SetHold(true);
    write();
  }
  device.SetHold(false);
  device.SetHold(true);
  const int16_t heard = next;
  for (int i = 0; i < 8; ++i) write();
  ASSERT_TRUE(tap.Samples(samples));
  EXPECT_EQ(samples[0], heard) << "all buffers wait: from what is heard on";
  EXPECT_EQ(samples[kPictureSamples - 1], heard + static_cast<int>(kPictureSamples) - 1);
  tap.Reset();
  EXPECT_FALSE(tap.Samples(samples));
}

}  // namespace
}  // namespace velmora
