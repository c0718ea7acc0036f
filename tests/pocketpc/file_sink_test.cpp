// waveOut through the stand-in, into a file.
#include <windows.h>

#include <gtest/gtest.h>
#include <mmsystem.h>

#include <vector>

#include "tests/pocketpc/wav_bytes.h"

namespace kelvo {
namespace {

// An open device, stereo of 16 bits.
struct Device {
  HWAVEOUT handle = nullptr;
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);

  explicit Device(DWORD rate) {
    const WAVEFORMATEX format = {WAVE_FORMAT_PCM, 2, rate, rate * 4, 4, 16, 0};
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

// One header of `frames` frames, samples counting up from `first`.
struct Block {
  Device& device;
  std::vector<int16_t> samples;
  WAVEHDR header = {};

  Block(Device& d, size_t frames, int16_t first) : device(d), samples(frames * 2) {
    for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<int16_t>(first + i);
    header.lpData = reinterpret_cast<char*>(samples.data());
    header.dwBufferLength = static_cast<DWORD>(samples.size() * 2);
  }
  bool PrepareAndWrite() {
    return waveOutWrite(device.handle, &header, sizeof(header)) == WAVERR_UNPREPARED &&
           waveOutPrepareHeader(device.handle, &header, sizeof(header)) == MMSYSERR_NOERROR &&
           waveOutWrite(device.handle, &header, sizeof(header)) == MMSYSERR_NOERROR;
  }
  bool done() const { return *static_cast<volatile const DWORD*>(&header.dwFlags) & WHDR_DONE; }
  bool WaitDone() {
    while (!done()) {
      if (WaitForSingleObject(device.event, 60000) != WAIT_OBJECT_0) return false;
    }
    return true;
  }
};

TEST(FileSink, RecordsBlocksInOrderAsLoudAsTheyAreHeard) {
  UseSink(L"sink_order.wav", true);
  std::vector<int16_t> want;
  Device device(22050);
  Block blocks[] = {{device, 100, 0}, {device, 1, 500}, {device, 0, 0}, {device, 3000, -9}};
  for (Block& block : blocks) {
    ASSERT_TRUE(block.PrepareAndWrite());
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

  DWORD volume = 0;
  ASSERT_EQ(waveOutSetVolume(nullptr, 0x80000000), MMSYSERR_NOERROR);
  Device second(44100);
  EXPECT_EQ(waveOutGetVolume(second.handle, &volume), MMSYSERR_NOERROR);
  EXPECT_EQ(volume, 0x80000000) << "it is everybody's";
  Block quiet(second, 5000, -5000);
  want = quiet.samples;
  for (size_t i = 0; i < want.size(); ++i) {
    want[i] = static_cast<int16_t>(i % 2 ? want[i] * 0x8000 / 0xFFFF : 0);
  }
  ASSERT_TRUE(quiet.PrepareAndWrite());
  ASSERT_TRUE(quiet.WaitDone());
  EXPECT_EQ(ReadWav(L"sink_order-2.wav").samples, want);
  ASSERT_EQ(waveOutSetVolume(nullptr, 0xFFFFFFFF), MMSYSERR_NOERROR);
}

}  // namespace
}  // namespace kelvo
