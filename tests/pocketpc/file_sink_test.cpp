// waveOut through the stand-in, into a file.
#include <windows.h>

#include <gtest/gtest.h>
#include <mmsystem.h>

#include <functional>
#include <vector>

#include "tests/pocketpc/wav_bytes.h"

namespace kelvo {
namespace {

constexpr DWORD kWaitMs = 60000;
constexpr WORD kCompressed = 2;  // any tag but WAVE_FORMAT_PCM

WAVEFORMATEX Format(DWORD rate) {
  return {WAVE_FORMAT_PCM, 2, rate, rate * 4, 4, 16, 0};
}

// An open device and one header of `frames` stereo frames, samples counting up from `first`.
struct Device {
  HWAVEOUT handle = nullptr;
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);

  explicit Device(DWORD rate) {
    WAVEFORMATEX format = Format(rate);
    EXPECT_EQ(waveOutOpen(&handle, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(event), 0,
                          CALLBACK_EVENT),
              MMSYSERR_NOERROR);
  }
  ~Device() {
    waveOutReset(handle);
    EXPECT_EQ(waveOutClose(handle), MMSYSERR_NOERROR);
    CloseHandle(event);
  }
  DWORD PositionBytes() {
    MMTIME time = {};
    time.wType = TIME_BYTES;
    EXPECT_EQ(waveOutGetPosition(handle, &time, sizeof(time)), MMSYSERR_NOERROR);
    return time.u.cb;
  }
};

struct Block {
  Device& device;
  std::vector<int16_t> samples;
  WAVEHDR header = {};

  Block(Device& d, size_t frames, int16_t first) : device(d), samples(frames * 2) {
    for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<int16_t>(first + i);
    header.lpData = reinterpret_cast<char*>(samples.data());
    header.dwBufferLength = static_cast<DWORD>(samples.size() * 2);
  }
  MMRESULT Prepare() { return waveOutPrepareHeader(device.handle, &header, sizeof(header)); }
  MMRESULT Unprepare() { return waveOutUnprepareHeader(device.handle, &header, sizeof(header)); }
  MMRESULT Write() { return waveOutWrite(device.handle, &header, sizeof(header)); }
  bool done() const { return *static_cast<volatile const DWORD*>(&header.dwFlags) & WHDR_DONE; }
  bool WaitDone() {
    while (!done()) {
      if (WaitForSingleObject(device.event, kWaitMs) != WAIT_OBJECT_0) return false;
    }
    return true;
  }
};

TEST(FileSink, RefusesFormats) {
  UseSink(L"sink_refused.wav", true);
  const struct {
    const char* name;
    WORD tag;
    DWORD rate;
    DWORD flags;
    MMRESULT want;
  } cases[] = {
      {"compressed", kCompressed, 44100, 0, WAVERR_BADFORMAT},
      {"no rate", WAVE_FORMAT_PCM, 0, 0, WAVERR_BADFORMAT},
      {"asking only", WAVE_FORMAT_PCM, 44100, WAVE_FORMAT_QUERY, MMSYSERR_NOERROR},
      {"asking only, compressed", kCompressed, 44100, WAVE_FORMAT_QUERY, WAVERR_BADFORMAT},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    WAVEFORMATEX format = Format(c.rate);
    format.wFormatTag = c.tag;
    HWAVEOUT handle = nullptr;
    EXPECT_EQ(waveOutOpen(&handle, WAVE_MAPPER, &format, 0, 0, c.flags), c.want);
    EXPECT_EQ(handle, nullptr);
  }
  EXPECT_FALSE(ReadWav(L"sink_refused.wav").ok) << "a file without a device";
  UseSink(L"no such folder\\sink.wav", true);
  WAVEFORMATEX format = Format(44100);
  HWAVEOUT handle = nullptr;
  EXPECT_NE(waveOutOpen(&handle, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL), MMSYSERR_NOERROR);
}

TEST(FileSink, RefusesMisuse) {
  UseSink(L"sink_misuse.wav", true);
  Device device(44100);
  Block block(device, 100, 0);
  ASSERT_EQ(waveOutPause(device.handle), MMSYSERR_NOERROR);
  const struct {
    const char* name;
    std::function<MMRESULT()> call;
    MMRESULT want;
  } steps[] = {
      {"write unprepared", [&] { return block.Write(); }, WAVERR_UNPREPARED},
      {"short header",
       [&] { return waveOutPrepareHeader(device.handle, &block.header, sizeof(WAVEHDR) - 1); },
       MMSYSERR_INVALPARAM},
      {"no header", [&] { return waveOutWrite(device.handle, nullptr, sizeof(WAVEHDR)); },
       MMSYSERR_INVALPARAM},
      {"prepare", [&] { return block.Prepare(); }, MMSYSERR_NOERROR},
      {"write", [&] { return block.Write(); }, MMSYSERR_NOERROR},
      {"write again", [&] { return block.Write(); }, WAVERR_STILLPLAYING},
      {"unprepare queued", [&] { return block.Unprepare(); }, WAVERR_STILLPLAYING},
      {"close while queued", [&] { return waveOutClose(device.handle); }, WAVERR_STILLPLAYING},
      {"reset", [&] { return waveOutReset(device.handle); }, MMSYSERR_NOERROR},
      {"unprepare", [&] { return block.Unprepare(); }, MMSYSERR_NOERROR},
  };
  for (const auto& step : steps) EXPECT_EQ(step.call(), step.want) << step.name;
  EXPECT_TRUE(block.done());
  EXPECT_TRUE(ReadWav(L"sink_misuse.wav").samples.empty()) << "what a reset drops is not heard";
}

TEST(FileSink, RecordsBlocksInOrder) {
  UseSink(L"sink_order.wav", true);
  std::vector<int16_t> want;
  Device device(22050);
  Block blocks[] = {{device, 100, 0}, {device, 1, 500}, {device, 0, 0}, {device, 3000, -9}};
  for (Block& block : blocks) {
    ASSERT_EQ(block.Prepare(), MMSYSERR_NOERROR);
    ASSERT_EQ(block.Write(), MMSYSERR_NOERROR);
    want.insert(want.end(), block.samples.begin(), block.samples.end());
  }
  ASSERT_TRUE(blocks[3].WaitDone());
  for (const Block& block : blocks) EXPECT_TRUE(block.done());
  EXPECT_EQ(device.PositionBytes(), want.size() * 2);
  const WavBytes wav = ReadWav(L"sink_order.wav");  // whole although the device is open
  EXPECT_TRUE(wav.ok);
  EXPECT_EQ(wav.channels, 2u);
  EXPECT_EQ(wav.rate, 22050u);
  EXPECT_EQ(wav.samples, want);

  Device second(44100);
  Block other(second, 7, 70);
  ASSERT_EQ(other.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(other.Write(), MMSYSERR_NOERROR);
  ASSERT_TRUE(other.WaitDone());
  EXPECT_EQ(ReadWav(L"sink_order-2.wav").samples, other.samples);
  EXPECT_EQ(ReadWav(L"sink_order.wav").samples, want);
}

TEST(FileSink, PausedDeviceHoldsItsBlocks) {
  UseSink(L"sink_pause.wav", true);
  Device device(44100);
  Block block(device, 50, 3);
  ASSERT_EQ(waveOutPause(device.handle), MMSYSERR_NOERROR);
  ASSERT_EQ(block.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(block.Write(), MMSYSERR_NOERROR);
  EXPECT_FALSE(block.done());
  EXPECT_EQ(device.PositionBytes(), 0u);
  ASSERT_EQ(waveOutRestart(device.handle), MMSYSERR_NOERROR);
  ASSERT_TRUE(block.WaitDone());
  EXPECT_EQ(ReadWav(L"sink_pause.wav").samples, block.samples);
  ASSERT_EQ(waveOutReset(device.handle), MMSYSERR_NOERROR);
  EXPECT_EQ(device.PositionBytes(), 0u);
}

// 400 ms on the device's clock cannot be over before 400 ms on ours.
TEST(FileSink, RealTimePaceTakesItsTime) {
  UseSink(L"sink_pace.wav", false);
  Device device(8000);
  Block first(device, 1600, 0);
  Block second(device, 1600, 0);
  ASSERT_EQ(first.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(second.Prepare(), MMSYSERR_NOERROR);
  const ULONGLONG start = GetTickCount64();
  ASSERT_EQ(first.Write(), MMSYSERR_NOERROR);
  ASSERT_EQ(second.Write(), MMSYSERR_NOERROR);
  ASSERT_TRUE(second.WaitDone());
  EXPECT_GE(GetTickCount64() - start + 32, 400u) << "two ticks of the coarse clock are allowed";
}

TEST(FileSink, APauseKeepsThePlaceInsideABlock) {
  UseSink(L"sink_place.wav", false);
  Device device(8000);
  Block block(device, 80000, 0);
  ASSERT_EQ(block.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(block.Write(), MMSYSERR_NOERROR);
  while (device.PositionBytes() < 3200) Sleep(5);  // the block takes 320000
  ASSERT_EQ(waveOutPause(device.handle), MMSYSERR_NOERROR);
  const DWORD place = device.PositionBytes();
  EXPECT_LT(place, 320000u);
  Sleep(60);
  EXPECT_EQ(device.PositionBytes(), place);
  ASSERT_EQ(waveOutPause(device.handle), MMSYSERR_NOERROR);
  EXPECT_EQ(device.PositionBytes(), place) << "paused twice";
  ASSERT_EQ(waveOutRestart(device.handle), MMSYSERR_NOERROR);
  EXPECT_GE(device.PositionBytes(), place);
  while (device.PositionBytes() <= place) Sleep(5);
}

TEST(FileSink, SilenceLeavesNoFile) {
  UseSink(L"silence", true);
  Device device(44100);
  Block block(device, 1000, 5);
  ASSERT_EQ(block.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(block.Write(), MMSYSERR_NOERROR);
  ASSERT_TRUE(block.WaitDone());
  EXPECT_EQ(device.PositionBytes(), 4000u);
  EXPECT_EQ(GetFileAttributesW(L"silence"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(waveOutGetNumDevs(), 1u);
}

TEST(FileSink, TheVolumeIsEverybodys) {
  UseSink(L"sink_volume.wav", true);
  DWORD volume = 0;
  EXPECT_EQ(waveOutGetVolume(nullptr, &volume), MMSYSERR_NOERROR);
  EXPECT_EQ(volume, 0xFFFFFFFF);
  EXPECT_EQ(waveOutGetVolume(nullptr, nullptr), MMSYSERR_INVALPARAM);
  ASSERT_EQ(waveOutSetVolume(nullptr, 0x80000000), MMSYSERR_NOERROR);
  Device device(44100);
  EXPECT_EQ(waveOutGetVolume(device.handle, &volume), MMSYSERR_NOERROR);
  EXPECT_EQ(volume, 0x80000000);
  Block block(device, 5000, -5000);
  std::vector<int16_t> want = block.samples;
  for (size_t i = 0; i < want.size(); ++i) {
    want[i] = static_cast<int16_t>(i % 2 ? want[i] * 0x8000 / 0xFFFF : 0);
  }
  ASSERT_EQ(block.Prepare(), MMSYSERR_NOERROR);
  ASSERT_EQ(block.Write(), MMSYSERR_NOERROR);
  ASSERT_TRUE(block.WaitDone());
  EXPECT_EQ(ReadWav(L"sink_volume.wav").samples, want);
  ASSERT_EQ(waveOutSetVolume(device.handle, 0xFFFFFFFF), MMSYSERR_NOERROR);
}

void CALLBACK CountMessages(HWAVEOUT, UINT message, DWORD_PTR context, DWORD_PTR, DWORD_PTR) {
  auto* const counts = reinterpret_cast<volatile LONG*>(context);
  InterlockedIncrement(counts + (message - WOM_OPEN));
}

TEST(FileSink, CallsTheClientBack) {
  UseSink(L"sink_callback.wav", true);
  volatile LONG counts[3] = {};  // open, close, done
  WAVEFORMATEX format = Format(44100);
  HWAVEOUT handle = nullptr;
  ASSERT_EQ(waveOutOpen(&handle, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(&CountMessages),
                        reinterpret_cast<DWORD_PTR>(counts), CALLBACK_FUNCTION),
            MMSYSERR_NOERROR);
  int16_t frame[2] = {1, 2};
  WAVEHDR header = {};
  header.lpData = reinterpret_cast<char*>(frame);
  header.dwBufferLength = sizeof(frame);
  ASSERT_EQ(waveOutPause(handle), MMSYSERR_NOERROR);
  ASSERT_EQ(waveOutPrepareHeader(handle, &header, sizeof(header)), MMSYSERR_NOERROR);
  ASSERT_EQ(waveOutWrite(handle, &header, sizeof(header)), MMSYSERR_NOERROR);
  ASSERT_EQ(waveOutReset(handle), MMSYSERR_NOERROR);
  ASSERT_EQ(waveOutClose(handle), MMSYSERR_NOERROR);
  EXPECT_EQ(counts[WOM_OPEN - WOM_OPEN], 1);
  EXPECT_EQ(counts[WOM_DONE - WOM_OPEN], 1);
  EXPECT_EQ(counts[WOM_CLOSE - WOM_OPEN], 1);
}

}  // namespace
}  // namespace kelvo
