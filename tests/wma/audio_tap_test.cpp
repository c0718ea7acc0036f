#include "input/wma/audio_tap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

#include "tests/support/faults.h"

namespace kelvo {
namespace {

constexpr size_t kRead = kVisualisationSamples;

// 1, 2, 3, ... : the first channel is odd, the second even.
std::vector<int16_t> Counting(size_t count) {
  std::vector<int16_t> samples(count);
  std::iota(samples.begin(), samples.end(), int16_t{1});
  return samples;
}

// All that can be read, with the padding of the last read.
std::vector<int16_t> ReadAll(AudioTap& tap) {
  std::vector<int16_t> all;
  int16_t samples[kRead];
  while (tap.Read(samples)) all.insert(all.end(), samples, samples + kRead);
  return all;
}

TEST(AudioTapTest, KeepsTheFirstChannelOfTheLatestBlock) {
  const struct {
    const char* name;
    size_t samples;
    uint32_t bytes;
    size_t stored;
    size_t reads;  // the one that begins at the end of the samples gives silence
  } kCases[] = {
      {"empty", 2, 0, 0, 1},
      {"one sample", 2, 2, 1, 1},
      {"a sample and a half", 2, 3, 1, 1},
      {"one frame", 2, 4, 1, 1},
      {"512 frames", 1024, 2048, 512, 2},
      {"513 frames", 1026, 2052, 513, 2},
      {"a sample less than fits", 262142, 524284, 131071, 256},
      {"what fits", 262144, 524288, 131072, 257},
      {"longer than fits", 400000, 800000, 131072, 257},
  };
  AudioTap tap;
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const std::vector<int16_t> block = Counting(c.samples);
    tap.Store(block.data(), c.bytes);
    std::vector<int16_t> want(c.reads * kRead);
    for (size_t i = 0; i < c.stored; ++i) want[i] = block[2 * i];
    EXPECT_EQ(ReadAll(tap), want);
    int16_t untouched = 7;
    EXPECT_FALSE(tap.Read(&untouched));
    EXPECT_EQ(untouched, 7);
  }
}

TEST(AudioTapTest, GivesSilenceOnceAndStoredSamplesAnewAfterANullBlock) {
  AudioTap tap;
  EXPECT_FALSE(tap.Read(nullptr));
  EXPECT_EQ(ReadAll(tap), std::vector<int16_t>(kRead));
  const std::vector<int16_t> block = Counting(20);
  tap.Store(block.data(), 40);
  const std::vector<int16_t> first = ReadAll(tap);
  tap.Store(nullptr, 40);
  EXPECT_EQ(ReadAll(tap), first);
  EXPECT_EQ(first[9], 19);
  tap.FreeBuffer();
  int16_t samples[kRead];
  EXPECT_FALSE(tap.Read(samples));
  const test::HeapFaults faults(0);
  AudioTap without_memory;
  without_memory.Store(block.data(), 40);
  EXPECT_FALSE(without_memory.Read(samples));
}

// A block of one number is never seen in halves, and never mixed with another one's.
TEST(AudioTapTest, ReadsWholeBlocksWhileOthersAreStored) {
  AudioTap tap;
  std::atomic<bool> over = false;
  std::thread audio([&] {
    for (int i = 1; i <= 100000; ++i) {
      const std::vector<int16_t> block(64, static_cast<int16_t>(i));
      tap.Store(block.data(), 128);
    }
    over = true;
  });
  int torn = 0;
  for (bool last = false; !last;) {
    last = over;
    int16_t samples[kRead];
    if (!tap.Read(samples)) continue;
    for (size_t i = 0; i < 32; ++i) torn += samples[i] != samples[0];
  }
  audio.join();
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace kelvo
