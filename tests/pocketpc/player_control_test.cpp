#include <windows.h>

#include <mmsystem.h>

#include "tests/pocketpc/hosted_player.h"
#include "tests/pocketpc/reference_decode.h"
#include "tests/pocketpc/wav_bytes.h"

namespace kelvo {
namespace {

// Compares sample by sample from `from` on.
void ExpectSameFrom(size_t from, const std::vector<int16_t>& got,
                    const std::vector<int16_t>& want) {
  ASSERT_EQ(got.size(), want.size());
  for (size_t i = from; i < want.size(); ++i) ASSERT_EQ(got[i], want[i]) << "sample " << i;
}

using Player = HostedPlayer;

TEST_F(Player, PlaysToTheEndAndTellsItOnce) {
  const Reference reference = DecodeWithSystem(kStereoFile);
  ASSERT_FALSE(reference.samples.empty()) << "no Windows Media decoding here: run scripts/setup.sh";
  UseSink(L"player_end.wav", true);
  ASSERT_EQ(Open(kStereoFile), S_OK);
  EXPECT_NEAR(Seconds(kPlayerGetDuration), 3.0, 0.2);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0);
  EXPECT_FALSE(ReadWav(L"player_end.wav").ok) << "opening does not play";
  ASSERT_EQ(Play(), S_OK);
  ASSERT_EQ(Play(), S_OK) << "playing already";
  ASSERT_TRUE(events_.WaitOver());
  ASSERT_EQ(Stop(), S_OK);  // its answer comes after any second event
  EXPECT_EQ(events_.Count(kPlayerEndEvent), 1);
  EXPECT_EQ(events_.CountOver(), 1);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0) << "ready to play again";

  const WavBytes wav = ReadWav(L"player_end.wav");
  ASSERT_TRUE(wav.ok);
  EXPECT_EQ(wav.rate, 44100u);
  ExpectSameFrom(reference.settled, wav.samples, reference.samples);

  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver(2));
  const WavBytes twice = ReadWav(L"player_end.wav");
  EXPECT_EQ(twice.samples.size(), 2 * reference.samples.size()) << "one recording per open file";
}

TEST_F(Player, MonoComesOutOnBothChannels) {
  const Reference reference = DecodeWithSystem(kMonoFile);
  ASSERT_FALSE(reference.samples.empty());
  std::vector<int16_t> doubled;
  for (const int16_t sample : reference.samples) doubled.insert(doubled.end(), 2, sample);
  UseSink(L"player_mono.wav", true);
  ASSERT_EQ(Open(kMonoFile), S_OK);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver());
  const WavBytes wav = ReadWav(L"player_mono.wav");
  EXPECT_EQ(wav.rate, 22050u);
  EXPECT_EQ(wav.channels, 2u);
  ExpectSameFrom(2 * reference.settled, wav.samples, doubled);
}

TEST_F(Player, PositionMovesAndStopIsSilent) {
  UseSink(L"player_position.wav", false);
  ASSERT_EQ(Open(kStereoFile), S_OK);
  ASSERT_EQ(Play(), S_OK);
  double last = 0;
  const ULONGLONG deadline = GetTickCount64() + 60000;
  while (last < 0.5 && GetTickCount64() < deadline) {
    const double now = Seconds(kPlayerGetPosition);
    ASSERT_GE(now, last);
    last = now;
    Sleep(5);
  }
  ASSERT_GE(last, 0.5);
  ASSERT_EQ(Stop(), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0);
  const size_t heard = ReadWav(L"player_position.wav").samples.size();
  EXPECT_GE(heard, 44100u);
  ASSERT_EQ(Stop(), S_OK) << "stopped already";
  EXPECT_EQ(events_.CountOver(), 0) << "the user knows that he stopped";
  EXPECT_GT(events_.Count(kPlayerChangeEvent), 0);
  EXPECT_EQ(ReadWav(L"player_position.wav").samples.size(), heard);
}

TEST_F(Player, SeeksBeforeAndWhilePlaying) {
  const Reference reference = DecodeWithSystem(kStereoFile);
  ASSERT_FALSE(reference.samples.empty());
  for (const bool playing : {false, true}) {
    SCOPED_TRACE(playing);
    const wchar_t* const path = playing ? L"player_seek_playing.wav" : L"player_seek.wav";
    UseSink(path, !playing);  // in real time, or it could be over before the seek
    ASSERT_EQ(Open(kStereoFile), S_OK);
    if (playing) {
      ASSERT_EQ(Play(), S_OK);
    }
    ASSERT_EQ(Seek(2.0), S_OK);
    EXPECT_GE(Seconds(kPlayerGetPosition), 2.0);
    ASSERT_EQ(Play(), S_OK);
    ASSERT_TRUE(events_.WaitOver(playing ? 2 : 1));
    const WavBytes wav = ReadWav(path);
    ASSERT_TRUE(wav.ok);
    // The last second; what was heard before a seek depends on the machine.
    const double heard = static_cast<double>(wav.samples.size()) / 88200;
    EXPECT_GT(heard, 0.5);
    if (!playing) {
      EXPECT_LT(heard, 1.5);
    }
    const size_t tail = 20000;
    ASSERT_GT(wav.samples.size(), tail);
    for (size_t i = 1; i <= tail; ++i) {
      // The decoder's rounding depends on where it began.
      ASSERT_NEAR(wav.samples[wav.samples.size() - i],
                  reference.samples[reference.samples.size() - i], 4)
          << i << " from the end";
    }
  }
}

TEST_F(Player, SeekBeyondTheEndEndsAtOnce) {
  UseSink(L"player_beyond.wav", true);
  ASSERT_EQ(Open(kStereoFile), S_OK);
  ASSERT_EQ(Seek(1000), S_OK);
  EXPECT_EQ(Seconds(kPlayerGetPosition), Seconds(kPlayerGetDuration));
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver());
  EXPECT_LT(ReadWav(L"player_beyond.wav").samples.size(), 44100u);
}

TEST_F(Player, EventsMayCallTheControl) {
  UseSink(L"player_chain.wav", true);
  LONG rounds = 0;
  events_.on_event = [&](DISPID event) {
    if (event != kPlayerEndEvent || rounds++ > 0) return;
    EXPECT_EQ(Stop(), S_OK);
    EXPECT_EQ(Open(kMonoFile), S_OK);
    EXPECT_EQ(Play(), S_OK);
  };
  ASSERT_EQ(Open(kStereoFile), S_OK);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver(2));
  EXPECT_EQ(ReadWav(L"player_chain.wav").rate, 44100u);
  EXPECT_EQ(ReadWav(L"player_chain-2.wav").rate, 22050u);
}

TEST_F(Player, LettingGoWhilePlayingIsSilence) {
  UseSink(L"player_let_go.wav", false);
  ASSERT_EQ(Open(kStereoFile), S_OK);
  ASSERT_EQ(Play(), S_OK);
  DestroyWindow(window_);  // the container closes the control; we still hold it
  window_ = nullptr;
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0);
  ASSERT_EQ(Play(), S_OK) << "but it still works";
  LetGo();
  EXPECT_EQ(events_.CountOver(), 0);
}

// What the library does to hear the samples: from the anchor, word by word, to the import slot.
using WaveOutWrite = MMRESULT(WINAPI*)(HWAVEOUT, WAVEHDR*, UINT);
WaveOutWrite original = nullptr;
volatile LONG tapped_bytes = 0;

MMRESULT WINAPI Tap(HWAVEOUT device, WAVEHDR* header, UINT bytes) {
  InterlockedExchangeAdd(&tapped_bytes, static_cast<LONG>(header->dwBufferLength));
  return original(device, header, bytes);
}

TEST_F(Player, ImportSlotIsFoundBehindTheAnchor) {
  const HMODULE component = GetModuleHandleW(kPlayerModule);
  ASSERT_NE(component, nullptr);
  const auto anchor = reinterpret_cast<uintptr_t>(GetProcAddress(component, kPlayerAnchorExport));
  const auto wanted =
      reinterpret_cast<uintptr_t>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), "waveOutWrite"));
  ASSERT_NE(anchor, 0u);
  ASSERT_NE(wanted, 0u);
  EXPECT_EQ(anchor % 16, 0u);
  uintptr_t* slot = nullptr;
  auto* word = reinterpret_cast<uintptr_t*>(anchor);
  for (int i = 0; i < 100000 && !IsBadReadPtr(word, sizeof(*word)); ++i, ++word) {
    if (*word != wanted) continue;
    EXPECT_EQ(slot, nullptr) << "a second one";
    slot = word;
  }
  ASSERT_NE(slot, nullptr);
  DWORD protection;
  ASSERT_TRUE(VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection));
  original = reinterpret_cast<WaveOutWrite>(wanted);
  tapped_bytes = 0;
  *slot = reinterpret_cast<uintptr_t>(&Tap);

  UseSink(L"player_tap.wav", true);
  EXPECT_EQ(Open(kMonoFile), S_OK);
  EXPECT_EQ(Play(), S_OK);
  EXPECT_TRUE(events_.WaitOver());
  *slot = wanted;
  EXPECT_GT(tapped_bytes, 0);
  EXPECT_EQ(static_cast<size_t>(tapped_bytes), ReadWav(L"player_tap.wav").samples.size() * 2);
}

}  // namespace
}  // namespace kelvo
