// The decoder's heap by itself, and under a stream of 228 bytes that asks for a codebook of a
// million entries: the decoder takes scratch memory in proportion, which must not come from the
// stack.
#include "input/vorbis/decoder_heap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "input/vorbis/vorbis_stream.h"
#include "tests/support/faults.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"

namespace kelvo {
namespace {

// One codebook of many entries, all else as small as it can be.
std::vector<char> WithCodebook(const std::string& size) {
  return test::ReadMedia("../../tests/fuzz/corpus/vorbis_open/" + size + "_codebook");
}

class DecoderHeapTest : public ::testing::Test {
 protected:
  void SetUp() override { DecoderHeap::AttachModule(); }
  void TearDown() override { DecoderHeap::DetachModule(); }
};

TEST_F(DecoderHeapTest, KeepsEveryBlockThroughARandomLife) {
  struct Model {
    unsigned char* payload;
    size_t bytes;
    unsigned char fill;
  };
  std::vector<Model> blocks;
  std::minstd_rand random(1);
  DecoderHeap heap;
  bool intact = true;
  EXPECT_TRUE(heap.Run([&] {
    for (int i = 0; i < 10000; ++i) {
      const size_t bytes = random() % (i % 50 == 0 ? 100000 : 40);
      const size_t at = blocks.empty() ? 0 : random() % blocks.size();
      // More and more blocks first, then as many as are freed.
      if (blocks.empty() || random() % 9 < (i < 5000 ? 4 : 3)) {
        blocks.push_back({static_cast<unsigned char*>(heap.Allocate(bytes)), bytes, 0});
        if (bytes < 40) memset(heap.AllocateScratch(bytes), 1, bytes);
      } else if (random() % 2 == 0) {
        const size_t kept = std::min(blocks[at].bytes, bytes);
        blocks[at].payload = static_cast<unsigned char*>(heap.Resize(blocks[at].payload, bytes));
        blocks[at].bytes = bytes;
        for (size_t b = 0; b < kept; ++b) intact &= blocks[at].payload[b] == blocks[at].fill;
        std::swap(blocks[at], blocks.back());
      } else {
        for (size_t b = 0; b < blocks[at].bytes; ++b) {
          intact &= blocks[at].payload[b] == blocks[at].fill;
        }
        heap.Free(blocks[at].payload);
        blocks[at] = blocks.back();
        blocks.pop_back();
        continue;
      }
      blocks.back().fill = static_cast<unsigned char>(i);
      memset(blocks.back().payload, i, blocks.back().bytes);
    }
  }));
  EXPECT_TRUE(intact);
  EXPECT_GT(blocks.size(), 100u) << "what is left is freed with the heap";
}

TEST_F(DecoderHeapTest, HoldsSixteenMegabytesAndNotMore) {
  constexpr size_t kMega = 1u << 20;
  const struct {
    const char* name;
    size_t blocks, bytes, resized;
    bool fits;
  } kCases[] = {
      {"one block", 1, 16 * kMega - 64, 0, true},
      {"one block too large", 1, 16 * kMega, 0, false},
      {"many", 15, kMega, 0, true},
      {"one too many", 16, kMega, 0, false},
      {"small ones cost more", 1u << 19, 1, 0, false},
      {"grown", 1, kMega, 15 * kMega, true},
      {"grown too far", 2, kMega, 15 * kMega, false},
      {"as large as can be", 1, SIZE_MAX, 0, false},
      {"grown as far", 1, 1, SIZE_MAX, false},
  };
  for (const auto& c : kCases) {
    DecoderHeap heap;
    const auto fill = [&] {
      void* last = nullptr;
      for (size_t i = 0; i < c.blocks; ++i) last = heap.Allocate(c.bytes);
      if (c.resized != 0) heap.Resize(last, c.resized);
    };
    EXPECT_EQ(heap.Run(fill), c.fits) << c.name;
    EXPECT_EQ(heap.Run([] {}), c.fits) << c.name << ": an abandoned heap stays abandoned";
  }
  // What is freed makes room.
  DecoderHeap heap;
  EXPECT_TRUE(heap.Run([&] {
    for (int i = 0; i < 100; ++i) heap.Free(heap.Resize(heap.Allocate(4 * kMega), 5 * kMega));
    heap.AllocateScratch(15 * kMega);
  }));
  EXPECT_TRUE(heap.Run([&] { heap.Allocate(15 * kMega); })) << "scratch memory is given back";
}

TEST_F(DecoderHeapTest, RefusesBlocksThatAreNotItsOwn) {
  static char foreign[16];
  const struct {
    const char* name;
    void (*work)(DecoderHeap& heap);
  } kCases[] = {
      {"free", [](DecoderHeap& heap) { heap.Free(foreign); }},
      {"free beside others", [](DecoderHeap& heap) { heap.Allocate(8), heap.Free(foreign); }},
      {"resize", [](DecoderHeap& heap) { heap.Resize(foreign, 32); }},
      {"free twice",
       [](DecoderHeap& heap) {
         void* block = heap.Allocate(8);
         heap.Free(block);
         heap.Free(block);
       }},
  };
  for (const auto& c : kCases) {
    DecoderHeap heap;
    EXPECT_FALSE(heap.Run([&] { c.work(heap); })) << c.name;
  }
  DecoderHeap heap;
  EXPECT_TRUE(heap.Run([&] { heap.Free(nullptr), heap.Free(heap.Resize(nullptr, 5)); }));
}

TEST_F(DecoderHeapTest, GrowsALargeBlockInFewSteps) {
  DecoderHeap heap;
  test::HeapFaults requests(1000000);
  EXPECT_TRUE(heap.Run([&] {
    void* block = nullptr;
    for (size_t bytes = 1; bytes < (4u << 20); bytes += 4096) block = heap.Resize(block, bytes);
  }));
  EXPECT_LT(requests.made(), 40);
}

TEST_F(DecoderHeapTest, KeepsAHugeCodebookOffTheStack) {
  // The largest has no room in the stream's heap either.
  for (const char* size : {"small", "large", "huge"}) {
    test::MemoryReader reader(WithCodebook(size));
    OpenVorbis stream = OpenVorbisReader(&reader);
    ASSERT_TRUE(stream) << size;
    char chunk[8192];
    uint32_t count;
    EXPECT_EQ(ReadVorbis(stream.get(), chunk, sizeof(chunk), &count),
              size[0] == 'h' ? kReadError : kReadData)
        << size;
  }
}

TEST_F(DecoderHeapTest, GivesTheScratchMemoryBackWhateverFails) {
  const std::vector<char> file = WithCodebook("large");
  bool triggered = true;
  for (long n = 0; triggered; ++n) {
    ASSERT_LT(n, 1000);
    test::HeapFaults faults(n);
    test::MemoryReader reader(file);
    OpenVorbis stream = OpenVorbisReader(&reader);
    triggered = faults.triggered();
    EXPECT_EQ(!stream, triggered) << n;
  }
}

}  // namespace
}  // namespace kelvo
