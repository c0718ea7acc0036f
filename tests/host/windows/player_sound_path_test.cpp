// The whole way of the sound: files through plug-ins, effects and output into recordings, while a
// user turns the knobs of the player. The effects keep their memory for the life of the process:
// nothing may have been played before.
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#include <wmsdkidl.h>

#include <algorithm>

#include "base/windows/com_ptr.h"
#include "tests/host/windows/player_driver.h"
#include "tests/host/windows/recordings.h"
#include "tests/oracles/effects_model.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"

namespace velmora::test {
namespace {

using Samples = std::vector<int16_t>;

constexpr Point kOn = {27, 24}, kBass = {56, 24};

void SetSlider(const PlayerDriver& player, int slider, int value) {
  const int x = slider == 0 ? 28 : 85 + 18 * (slider - 1);
  player.Click(player.equalizer(), {x, kGainSlider.ThumbAt(value) + kGainSlider.thumb / 2});
}

// A whole file as the system's reader decodes it. Its first block is never the same twice, and the
// second overlaps it: from the third on, where `settled` is, decodings agree; the decoder's
// rounding depends on what came before, so agreeing means within a few steps.
struct Reference {
  Samples samples;
  size_t settled = 0;

  explicit Reference(const wchar_t* path) {
    using Create = HRESULT(WINAPI*)(IUnknown*, DWORD, IWMSyncReader**);
    const auto create = reinterpret_cast<Create>(reinterpret_cast<void*>(
        GetProcAddress(LoadLibraryW(L"wmvcore.dll"), "WMCreateSyncReader")));
    kelvo::ComPtr<IWMSyncReader> reader;
    if (!create || FAILED(create(nullptr, 0, reader.Receive())) || FAILED(reader->Open(path))) {
      return;
    }
    reader->SetReadStreamSamples(1, FALSE);
    for (int blocks = 1;; ++blocks) {
      kelvo::ComPtr<INSSBuffer> buffer;
      QWORD time, length;
      DWORD flags, output, bytes;
      WORD stream;
      BYTE* data;
      if (FAILED(reader->GetNextSample(1, buffer.Receive(), &time, &length, &flags, &output,
                                       &stream))) {
        break;
      }
      buffer->GetBufferAndLength(&data, &bytes);
      if (blocks == 3) settled = samples.size();
      const auto* pcm = reinterpret_cast<const int16_t*>(data);
      samples.insert(samples.end(), pcm, pcm + bytes / sizeof(int16_t));
    }
    reader->Close();
  }
};

TEST(SoundPath, IsThatOfTheFilesAndTheEffectsToTheLastBit) {
  const kelvo::test::InstallationFolder folder;
  const Recordings recordings(folder, L"sound", true);
  PlayerDriver player({{}, L"", folder.Path(L"session")});
  const std::vector<char> pcm = kelvo::test::DecodeDirectly(kelvo::test::ReadMedia("sample.ogg"));
  Samples song(pcm.size() / sizeof(int16_t));
  memcpy(song.data(), pcm.data(), pcm.size());
  kelvo::test::ReferenceEffects effects;
  const auto processed = [&] {
    Samples samples = song;
    const auto bytes = static_cast<int32_t>(pcm.size());
    effects.ProcessEqualizer(samples.data(), bytes);
    effects.ProcessBass(samples.data(), bytes);
    return samples;
  };
  const auto wait = [&](int recording, const Samples& want) {
    return recordings.WaitForSamples(recording, want.size()) && player.WaitUntilStopped();
  };

  player.Click(player.equalizer(), kOn);
  player.Click(player.equalizer(), kBass);
  SetSlider(player, 3, 2);
  SetSlider(player, 0, 20);
  const int32_t bands[kEqualizerBands] = {14, 14, 2, 14, 14, 14, 14, 14, 14, 14};
  effects.SetEqualizer(20, bands);
  effects.SetBassMode(1);
  player.Drop(player.main(), {Media(L"sample.ogg")});
  ASSERT_TRUE(wait(1, song));
  EXPECT_EQ(recordings.Read(1), processed());

  player.Click(player.equalizer(), kOn);  // off
  player.Click(player.equalizer(), kBass);
  effects.enabled = 0;
  effects.SetBassMode(2);
  player.Click(player.main(), {50, 97});  // play
  ASSERT_TRUE(wait(2, song));
  EXPECT_EQ(recordings.Read(2), processed());

  // Without effects: what the system's reader gives first is not the same each time.
  for (int bass = 2; bass < 5; ++bass) player.Click(player.equalizer(), kBass);
  const Reference wma(L"..\\..\\media\\sample.wma");
  player.Drop(player.main(), {Media(L"sample.wma")});
  ASSERT_TRUE(wait(3, wma.samples));
  const Samples heard_wma = recordings.Read(3);
  ASSERT_EQ(heard_wma.size(), wma.samples.size());
  ASSERT_GT(wma.settled, 0u);
  for (size_t i = wma.settled; i < heard_wma.size(); ++i) {
    ASSERT_LE(abs(heard_wma[i] - wma.samples[i]), 4) << i;
  }

  // What is changed while a song plays is heard in it, at a time that is not known beforehand.
  const Recordings live(folder, L"live", false);
  player.Drop(player.main(), {Media(L"sample.ogg")});
  ASSERT_TRUE(live.WaitForMore(1));
  player.Click(player.equalizer(), kOn);
  ASSERT_TRUE(live.WaitForMore(1));
  player.Quit();
  const Samples heard = live.Read(1);
  const auto changed = std::mismatch(heard.begin(), heard.end(), song.begin(), song.end()).first;
  EXPECT_GT(changed, heard.begin() + 8192);
  EXPECT_LT(changed, heard.end());
}

}  // namespace
}  // namespace velmora::test
