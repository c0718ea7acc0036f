// What reaches the device is what the decoder and the effects made of the file. The effects keep
// their memory for the life of the process: the first test needs it empty.
#include <windows.h>

#include <vector>

#include "effects/stages.h"
#include "host/file_reader.h"
#include "kelvo/ogg_vorbis_input.h"
#include "tests/player/rig.h"
#include "tests/pocketpc/wav_bytes.h"
#include "tests/support/recording_output.h"

namespace velmora {
namespace {

using kelvo::ReadWav;
using test::Media;
using test::Rig;
using test::SendSoundTo;
using Pcm = std::vector<int16_t>;

Pcm Decode(const std::wstring& path) {
  auto* const ogg = test::TheLibrary().Get<kelvo::OggVorbisInput>(kelvo::kFeatureOggVorbis);
  FileReader reader;
  kelvo::test::RecordingOutput output;
  ogg->SetReader(&reader);
  ogg->SetOutput(&output);
  EXPECT_TRUE(ogg->Open(path.c_str(), 0));
  ogg->Play();
  while (ogg->GetState() != kelvo::kStopped) Sleep(5);
  const std::vector<char> bytes = output.pcm();  // Stop drops it
  ogg->Stop();
  ogg->Close(0, 0);
  const auto* samples = reinterpret_cast<const int16_t*>(bytes.data());
  return Pcm(samples, samples + bytes.size() / 2);
}

const std::wstring& Song() {
  static const std::wstring song = Media(L"sample.ogg");
  return song;
}

EqualizerState SomeEffects() {
  EqualizerState state;
  state.on = true;
  state.preamp = 15;
  state.bands[2] = 3;
  state.bands[8] = 25;
  state.bass = 2;
  return state;
}

Pcm PlayInto(const wchar_t* wav, Rig* rig) {
  SendSoundTo(wav, true);
  rig->player.Clear();
  rig->player.Add({Song()});
  EXPECT_TRUE(rig->player.PlayTrack(0));
  EXPECT_TRUE(rig->RunUntilStopped());
  return ReadWav(wav).samples;
}

TEST(PlayerSound, RunsThroughTheEffects) {
  Pcm want = Decode(Song());
  ASSERT_GT(want.size(), 2u * 7 * 44100);
  Rig rig;
  EXPECT_TRUE(PlayInto(L"sound_plain.wav", &rig) == want) << "at first they are off";

  const EqualizerState state = SomeEffects();
  kelvo::EffectsState effects;
  kelvo::EqualizerPass pass;
  int32_t bands[kEqualizerBands];
  std::copy_n(state.bands, kEqualizerBands, bands);
  kelvo::SetEqualizer(effects, state.preamp, bands);
  const uint32_t frames = static_cast<uint32_t>(want.size() / 2);
  kelvo::RunEqualizer(effects, pass, kelvo::RunBands, want.data(), frames);
  kelvo::RunBass(effects, kelvo::kBassGains[state.bass].a, want.data(), frames);
  rig.player.SetEqualizer(state);
  EXPECT_TRUE(PlayInto(L"sound_effects.wav", &rig) == want);
}

TEST(PlayerSound, EffectsComeAndGoWhileItPlays) {
  const Pcm plain = Decode(Song());
  SendSoundTo(L"sound_live.wav", false);
  Rig rig;
  rig.player.SetEqualizer(EqualizerState());
  rig.player.Add({Song()});
  ASSERT_TRUE(rig.player.PlayTrack(0));
  const auto reached = [&](uint32_t ms) {
    return [&rig, ms] { return rig.player.status().position_ms >= ms; };
  };
  ASSERT_TRUE(rig.RunUntil(reached(300)));
  rig.player.SetEqualizer(SomeEffects());
  ASSERT_TRUE(rig.RunUntil(reached(2500)));
  rig.player.SetEqualizer(EqualizerState());
  ASSERT_TRUE(rig.RunUntil(reached(5000)));
  rig.player.Stop();
  const Pcm heard = ReadWav(L"sound_live.wav").samples;
  const auto differs = [&](size_t from_ms, size_t to_ms) {
    const size_t from = from_ms * 441 / 10 * 2, to = to_ms * 441 / 10 * 2;
    return to > heard.size() ||
           !std::equal(heard.begin() + from, heard.begin() + to, plain.begin() + from);
  };
  EXPECT_FALSE(differs(0, 300));
  EXPECT_TRUE(differs(2000, 2500)) << "at most eight buffers, 0.75 s, later";
  EXPECT_FALSE(differs(4500, 4800));
}

TEST(PlayerSound, VolumeAndBalance) {
  const Pcm plain = Decode(Song());
  const struct {
    const char* name;
    const wchar_t* wav;
    int volume, balance;
    int32_t left, right;  // in 65535ths
  } cases[] = {
      {"half", L"sound_half.wav", 50, 0, 0x3FFF, 0x3FFF},
      {"left", L"sound_left.wav", 100, -100, 0xFFFF, 0},
      {"full again", L"sound_full.wav", 100, 0, 0xFFFF, 0xFFFF},
  };
  for (const auto& c : cases) {
    Rig rig;
    rig.player.SetEqualizer(EqualizerState());
    rig.player.SetVolume(c.volume);
    rig.player.SetBalance(c.balance);
    Pcm want = plain;
    for (size_t i = 0; i < want.size(); ++i) {
      want[i] = static_cast<int16_t>(int64_t{want[i]} * (i % 2 ? c.right : c.left) / 0xFFFF);
    }
    EXPECT_TRUE(PlayInto(c.wav, &rig) == want) << c.name;
  }
}

TEST(PlayerSound, VolumeReachesThePluginWithItsOwnOutput) {
  SendSoundTo(L"sound_wma.wav", true);
  Rig rig;
  rig.player.SetBalance(100);
  rig.player.Add({Media(L"sample.wma")});
  ASSERT_TRUE(rig.player.PlayTrack(0));
  ASSERT_TRUE(rig.RunUntilStopped());
  const Pcm heard = ReadWav(L"sound_wma.wav").samples;
  ASSERT_GT(heard.size(), 2u * 7 * 44100);
  int32_t loudest[2] = {};
  for (size_t i = 0; i < heard.size(); ++i) {
    loudest[i % 2] = std::max(loudest[i % 2], std::abs(int32_t{heard[i]}));
  }
  EXPECT_EQ(loudest[0], 0);
  EXPECT_GT(loudest[1], 1000);
}

TEST(WaveOutput, AResetKeepsThePauseAndRefusalsAreRemembered) {
  SendSoundTo(L"silence", true);
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
  ASSERT_TRUE(output.Open(2, 4096, 2, 44100, 16));
  EXPECT_FALSE(output.failed());
  EXPECT_TRUE(write(output.GetBuffer()));
  while (!output.Drained()) Sleep(1);
  EXPECT_EQ(output.PlayedSamples(0, 0), 1024u);
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
    const std::vector<char> bytes = device.pcm();
    const auto* samples = reinterpret_cast<const int16_t*>(bytes.data());
    EXPECT_EQ(Pcm(samples, samples + bytes.size() / 2), c.want) << c.channels;
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
