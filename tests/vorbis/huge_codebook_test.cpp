// A stream of 228 bytes that asks for a codebook of a million entries: the decoder takes scratch
// memory in proportion, which must not come from the stack.
#include <gtest/gtest.h>

#include <ogg/ogg.h>

#include <string>
#include <vector>

#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/vorbis_stream.h"
#include "tests/support/faults.h"
#include "tests/support/memory_reader.h"

namespace kelvo {
namespace {

class Bits {
 public:
  Bits& Put(uint32_t value, int count) {
    for (int i = 0; i < count; ++i, ++used_) {
      if (used_ % 8 == 0) bytes_ += '\0';
      bytes_.back() = static_cast<char>(bytes_.back() | (value >> i & 1) << used_ % 8);
    }
    return *this;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
  int used_ = 0;
};

std::string Page(const std::vector<std::string>& packets, int flags, int64_t position,
                 uint32_t number) {
  Bits head;
  head.Put(0x5367674F, 32).Put(0, 8).Put(static_cast<uint32_t>(flags), 8);
  head.Put(static_cast<uint32_t>(position), 32).Put(0, 32).Put(1, 32).Put(number, 32).Put(0, 32);
  head.Put(static_cast<uint32_t>(packets.size()), 8);
  std::string body;
  for (const std::string& packet : packets) {
    head.Put(static_cast<uint32_t>(packet.size()), 8);  // all below 255 bytes
    body += packet;
  }
  std::string page = head.bytes() + body;
  const long head_bytes = static_cast<long>(head.bytes().size());
  unsigned char* bytes = reinterpret_cast<unsigned char*>(page.data());
  ogg_page fields = {bytes, head_bytes, bytes + head_bytes, static_cast<long>(body.size())};
  ogg_page_checksum_set(&fields);
  return page;
}

// One codebook of 2^bits entries, all of that length; everything else as small as it can be.
std::vector<char> WithCodebook(int bits) {
  Bits identification, comments, setup;
  identification.Put(0, 32).Put(1, 8).Put(44100, 32).Put(0, 32).Put(64000, 32).Put(0, 32);
  identification.Put(0x88, 8).Put(1, 8);
  comments.Put(0, 32).Put(0, 32).Put(1, 8);
  setup.Put(0, 8).Put(0x564342, 24).Put(1, 16).Put(1u << bits, 24);
  setup.Put(1, 1).Put(static_cast<uint32_t>(bits) - 1, 5).Put(1u << bits, bits + 1).Put(0, 4);
  setup.Put(0, 6).Put(0, 16);                                              // times
  setup.Put(0, 6).Put(1, 16).Put(0, 5).Put(0, 2).Put(4, 4);                // a floor
  setup.Put(0, 6).Put(0, 16).Put(0, 24).Put(0, 24).Put(0, 24).Put(0, 18);  // a residue
  setup.Put(0, 6).Put(0, 16).Put(0, 4).Put(0, 24);                         // a mapping
  setup.Put(0, 6).Put(0, 1).Put(0, 16).Put(0, 16).Put(0, 8).Put(1, 1);     // a mode
  const std::string silence(1, '\0');
  const std::string file =
      Page({"\1vorbis" + identification.bytes()}, 2, 0, 0) +
      Page({"\3vorbis" + comments.bytes(), "\5vorbis" + setup.bytes()}, 0, 0, 1) +
      Page({silence, silence, silence}, 0, 200, 2) +
      Page({silence, silence, silence, silence, silence, silence}, 4, 900, 3);
  return {file.begin(), file.end()};
}

class HugeCodebookTest : public ::testing::Test {
 protected:
  void SetUp() override { DecoderHeap::AttachModule(); }
  void TearDown() override { DecoderHeap::DetachModule(); }
};

TEST_F(HugeCodebookTest, DoesNotOverrunTheStack) {
  // The largest has no room in the stream's heap either.
  for (const int bits : {8, 16, 20}) {
    test::MemoryReader reader(WithCodebook(bits));
    OpenVorbis stream = OpenVorbisReader(&reader);
    ASSERT_TRUE(stream) << bits;
    char chunk[8192];
    uint32_t count;
    EXPECT_EQ(ReadVorbis(stream.get(), chunk, sizeof(chunk), &count),
              bits < 20 ? kReadData : kReadError)
        << bits;
  }
}

TEST_F(HugeCodebookTest, GivesTheScratchMemoryBack) {
  const std::vector<char> file = WithCodebook(16);
  for (long n = 0;; ++n) {
    ASSERT_LT(n, 1000);
    test::HeapFaults faults(n);
    test::MemoryReader reader(file);
    OpenVorbis stream = OpenVorbisReader(&reader);
    EXPECT_EQ(!stream, faults.triggered()) << n;
    stream.Close();
    if (!faults.triggered()) break;
  }
}

}  // namespace
}  // namespace kelvo
