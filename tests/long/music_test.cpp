// Music for hours, as fast as it can be decoded. KELVO_MUSIC_HOURS says for how many; a day of it
// is part of the campaign.
#include <gtest/gtest.h>
#include <malloc.h>
#include <stdlib.h>

#include "input/vorbis/ogg_vorbis_plugin.h"
#include "tests/support/end_messages.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"

namespace kelvo {
namespace {

// Its clock goes on with each buffer that is written. The decoding thread is the only other one
// that calls it, and the host asks only when that has ended.
class Clock final : public AudioOutput {
 public:
  uint64_t frames = 0;  // since Open
  uint32_t sum = 0;     // over all samples

  int32_t Open(uint32_t, uint32_t bytes, uint32_t channels, uint32_t, uint32_t) noexcept override {
    data_.resize(bytes);
    buffer_.data = data_.data();
    frame_bytes_ = 2 * channels;
    frames = sum = 0;
    return 1;
  }
  void Close() noexcept override {}
  OutputBuffer* GetBuffer() noexcept override { return &buffer_; }
  int32_t Write(OutputBuffer* buffer, uint32_t) noexcept override {
    frames += buffer->valid_bytes / frame_bytes_;
    for (uint32_t i = 0; i < buffer->valid_bytes; ++i) {
      sum = sum * 31 + static_cast<unsigned char>(buffer->data[i]);
    }
    return 1;
  }
  void Pause(uint32_t) noexcept override {}
  void Reset() noexcept override {}
  uint32_t PlayedSamples(HostWord, HostWord) noexcept override {
    return static_cast<uint32_t>(frames);
  }
  int32_t Drained() noexcept override { return 1; }

 private:
  OutputBuffer buffer_ = {};
  std::vector<char> data_;
  uint32_t frame_bytes_ = 1;
};

TEST(Music, PlaysForHoursAndSoundsTheSame) {
  const char* const set = getenv("KELVO_MUSIC_HOURS");
  const double hours = set ? atof(set) : 0.01;
  const std::vector<char> sample = test::ReadMedia("sample.ogg");
  constexpr uint64_t kSampleFrames = 8 * 44100;
  const std::vector<char> want_pcm = test::DecodeDirectly(sample);
  uint32_t want = 0;
  test::EndMessages ends;
  test::MemoryReader reader(sample);
  Clock clock;
  OggVorbisPlugin plugin(SystemFiles());
  plugin.SetReader(&reader);
  plugin.SetOutput(&clock);
  plugin.SetNotifyWindow(ends.window());
  double played_s = 0;
  size_t heap = 0;
  long files = 0;
  for (; played_s < hours * 3600; ++files) {
    ASSERT_EQ(plugin.Open(L"x.ogg", 0), 1) << files;
    ASSERT_EQ(plugin.Play(), 1);
    ends.WaitForNext();
    plugin.Stop();
    ASSERT_EQ(plugin.GetState(), kStopped);
    ASSERT_EQ(clock.frames, kSampleFrames) << files;
    if (files == 0) {
      for (char byte : want_pcm) want = want * 31 + static_cast<unsigned char>(byte);
    }
    ASSERT_EQ(clock.sum, want) << files;
    ASSERT_EQ(plugin.Close(0, 0), 1);
    reader.log.clear();
    played_s += static_cast<double>(clock.frames) / 44100;
    if (files == 1) heap = mallinfo2().uordblks;
  }
  EXPECT_EQ(ends.count(), 0);
  // (The address sanitizer counts for itself, and finds what nobody holds any more.)
  // A block that is lost with each file would be 24 bytes at least; caches grow by less.
  EXPECT_LE(mallinfo2().uordblks, heap + 16384 + 8 * static_cast<size_t>(files));
  printf("%.2f hours of music in %ld files\n", played_s / 3600, files);
}

}  // namespace
}  // namespace kelvo
