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
    void* payload = nullptr;
    std::string content;
  };
  std::vector<Model> blocks(200);
  std::minstd_rand random(1);
  DecoderHeap heap;
  EXPECT_TRUE(heap.Run([&] {
    for (int i = 0; i < 10000; ++i) {
      Model& block = blocks[random() % blocks.size()];
      const size_t bytes = random() % (i % 50 == 0 ? 100000 : 40);
      if (bytes < 40) memset(heap.AllocateScratch(bytes), 1, bytes);
      if (random() % 3 == 0) {
        heap.Free(std::exchange(block.payload, nullptr));
        block.content.clear();
        continue;
      }
      block.payload = block.payload ? heap.Resize(block.payload, bytes) : heap.Allocate(bytes);
      const size_t kept = std::min(block.content.size(), bytes);
      ASSERT_EQ(block.content.compare(0, kept, static_cast<char*>(block.payload), kept), 0);
      block.content.assign(bytes, static_cast<char>(i));
      memset(block.payload, i, bytes);
    }
  })) << "what is left is freed with the heap";
}

TEST_F(DecoderHeapTest, HoldsSixteenMegabytesAndNotMore) {
  constexpr size_t kMega = 1u << 20;
  constexpr size_t kMost = 16 * kMega - 4 * sizeof(void*);  // each block costs some words beside
  const struct {
    const char* name;
    size_t blocks, bytes, resized;
    bool fits;
  } kCases[] = {
      {"one block", 1, kMost, 0, true},
      {"one block too large", 1, kMost + 1, 0, false},
      {"many", 15, kMega, 0, true},
      {"one too many", 16, kMega, 0, false},
      {"small ones cost more", 16644, 1000, 0, false},
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
  // What is freed makes room again, with all that it cost.
  DecoderHeap heap;
  EXPECT_TRUE(heap.Run([&] {
    for (int i = 0; i < 3; ++i) heap.Free(heap.Resize(heap.Allocate(1), 2));
    for (int i = 0; i < 3; ++i) heap.AllocateScratch(1);
    heap.Free(heap.Allocate(14 * kMega));
  }));
  EXPECT_TRUE(heap.Run([&] { heap.Allocate(kMost); }));
}

TEST_F(DecoderHeapTest, RefusesBlocksThatAreNotItsOwn) {
  static char foreign[16];
  for (int kind = 0; kind < 4; ++kind) {
    DecoderHeap heap;
    EXPECT_FALSE(heap.Run([&] {
      void* own = kind == 0 ? foreign : heap.Allocate(8);
      if (kind == 1) heap.Resize(foreign, 32);
      if (kind == 2) heap.Free(foreign);
      heap.Free(own);
      heap.Free(own);
    })) << kind;
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

}  // namespace
}  // namespace kelvo
