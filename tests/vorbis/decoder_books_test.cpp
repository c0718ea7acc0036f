// Vectors for two channels, added by our function and by the decoder's own: random books, also with
// codewords longer than our function takes by itself, and packets that end anywhere.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "input/vorbis/decoder_heap.h"

extern "C" {
#include "codebook.h"
long DecoderAddVectors(codebook* book, ogg_int32_t** a, long offset, int ch, oggpack_buffer* b,
                       int n, int point);
}

namespace kelvo {
namespace {

class RandomBook {
 public:
  // Half of the codes are split evenly, half grow long on one side.
  explicit RandomBook(std::minstd_rand& random) {
    const size_t entries = 1 + random() % (random() % 2 ? 300 : 40);
    const bool even = random() % 2;
    lengths_ = {entries == 1 ? 1 : 0};
    while (lengths_.size() < entries) {
      const auto leaf = even ? std::min_element(lengths_.begin(), lengths_.end()) - lengths_.begin()
                             : static_cast<ptrdiff_t>(lengths_.size() - 1);
      if (lengths_[static_cast<size_t>(leaf)] == 30) break;
      lengths_.push_back(++lengths_[static_cast<size_t>(leaf)]);
    }
    for (size_t unused = random() % 5; unused > 0; --unused) {
      lengths_.insert(lengths_.begin() + static_cast<ptrdiff_t>(random() % lengths_.size()), 0);
    }
    static_codebook plan = {};
    plan.dim = 1 + static_cast<long>(random() % 8);
    plan.entries = static_cast<long>(lengths_.size());
    plan.lengthlist = lengths_.data();
    for (long i = 0; i < plan.dim * plan.entries; ++i) {
      values_.push_back(static_cast<long>(random() % 128));
    }
    plan.maptype = 2;
    plan.q_min = static_cast<long>(0x80000000u | 788u << 21 | 50u);  // -50
    plan.q_delta = 788 << 21 | 1;
    plan.q_quant = 7;
    plan.quantlist = values_.data();
    EXPECT_EQ(vorbis_book_init_decode(&book_, &plan), 0);
  }
  ~RandomBook() { vorbis_book_clear(&book_); }
  RandomBook(const RandomBook&) = delete;
  RandomBook& operator=(const RandomBook&) = delete;

  codebook* get() { return &book_; }

 private:
  std::vector<long> lengths_, values_;
  codebook book_ = {};
};

struct Outcome {
  std::vector<long> results;
  std::vector<ogg_int32_t> left, right;
  long byte, bit;
};

// Adds until the packet has ended twice.
Outcome AddAll(decltype(&vorbis_book_decodevv_add) add, codebook* book,
               std::vector<unsigned char> packet, int count, int shift) {
  Outcome outcome = {{}, std::vector<ogg_int32_t>(64, 7), std::vector<ogg_int32_t>(64, 9), 0, 0};
  ogg_int32_t* channels[] = {outcome.left.data(), outcome.right.data()};
  oggpack_buffer bits = {};
  oggpack_readinit(&bits, packet.data(), static_cast<int>(packet.size()));
  for (int call = 0;
       call < 200 && std::count(outcome.results.begin(), outcome.results.end(), -1) < 2; ++call) {
    outcome.results.push_back(
        add(book, channels, call % 20, 2, &bits, count, book->binarypoint + shift));
  }
  outcome.byte = bits.endbyte;
  outcome.bit = bits.endbit;
  return outcome;
}

TEST(DecoderBooks, TwoChannelsGetWhatTheDecoderGivesThem) {
  DecoderHeap::AttachModule();
  std::minstd_rand random(1);
  size_t ended = 0, long_words = 0;
  for (int round = 0; round < 2000; ++round) {
    DecoderHeap heap;
    EXPECT_TRUE(heap.Run([&] {
      RandomBook book(random);
      std::vector<unsigned char> packet(random() % 60);
      for (auto& byte : packet) byte = random() % 4 ? static_cast<unsigned char>(random()) : 0xFF;
      const int count = static_cast<int>(random() % 40), shift = static_cast<int>(random() % 9) - 4;
      const Outcome ours = AddAll(vorbis_book_decodevv_add, book.get(), packet, count, shift);
      const Outcome theirs = AddAll(DecoderAddVectors, book.get(), packet, count, shift);
      EXPECT_EQ(ours.results, theirs.results) << round;
      EXPECT_EQ(ours.left, theirs.left) << round;
      EXPECT_EQ(ours.right, theirs.right) << round;
      EXPECT_EQ(ours.byte, theirs.byte) << round;
      EXPECT_EQ(ours.bit, theirs.bit) << round;
      ended += theirs.results.back() == -1;
      long_words += book.get()->dec_maxlength > 24;
    }));
  }
  DecoderHeap::DetachModule();
  EXPECT_GT(ended, 1000u);
  EXPECT_GT(long_words, 100u);
}

}  // namespace
}  // namespace kelvo
