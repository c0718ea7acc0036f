#include "host/player/skin/bmp.h"

#include <gtest/gtest.h>

#include "tests/host/views/bmp_builder.h"

namespace velmora {
namespace {

using test::BmpBuilder;
using test::Bytes;
using Pixels = std::vector<Colour>;

const std::vector<uint32_t> kPalette = {0x000000, 0xFF0000, 0x00FF00, 0x0000FF};
constexpr Colour kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF, kBlack = 0;

bool Decode(const std::string& file, Bitmap* bitmap) {
  // A copy of the exact size, so that a look beyond it is noticed.
  const std::vector<uint8_t> exact(file.begin(), file.end());
  return DecodeBmp(exact.data(), exact.size(), bitmap);
}

BmpBuilder With(int width, int height, int bits, const char* pixels,
                const std::vector<uint32_t>& palette = {}) {
  BmpBuilder bmp;
  bmp.width = width;
  bmp.height = height;
  bmp.bits = static_cast<uint16_t>(bits);
  bmp.pixels = Bytes(pixels);
  bmp.palette = palette;
  return bmp;
}

BmpBuilder RunLength(int width, int height, int bits, const char* pixels) {
  BmpBuilder bmp = With(width, height, bits, pixels, kPalette);
  bmp.code = bits == 8 ? 1 : 2;
  return bmp;
}

BmpBuilder Masked(int bits, const char* pixels, std::vector<uint32_t> masks) {
  BmpBuilder bmp = With(1, 1, bits, pixels);
  bmp.code = 3;
  bmp.masks = std::move(masks);
  return bmp;
}

BmpBuilder Old(BmpBuilder bmp) {
  bmp.header_bytes = 12;
  return bmp;
}

BmpBuilder LongHeader(BmpBuilder bmp) {
  bmp.header_bytes = 124;
  bmp.masks.assign((124 - 40) / 4, 0);
  return bmp;
}

struct GoodCase {
  const char* name;
  BmpBuilder bmp;
  Pixels want;  // rows from the top
};

const GoodCase kGoodCases[] = {
    {"1 bit, nine pixels a row",
     With(9, 1, 1, "a0 80 00 00", kPalette),
     {kRed, kBlack, kRed, kBlack, kBlack, kBlack, kBlack, kBlack, kRed}},
    {"4 bits, odd width",
     With(3, 2, 4, "12 30 00 00 30 00 00 00", kPalette),
     {kBlue, kBlack, kBlack, kRed, kGreen, kBlue}},
    {"8 bits", With(2, 2, 8, "01 02 00 00 03 00 00 00", kPalette), {kBlue, kBlack, kRed, kGreen}},
    {"8 bits, top row first",
     With(2, -2, 8, "01 02 00 00 03 00 00 00", kPalette),
     {kRed, kGreen, kBlue, kBlack}},
    {"16 bits are 5 each", With(2, 1, 16, "00 7c 1f 00"), {kRed, kBlue}},
    {"16 bits, six for green", Masked(16, "e0 07", {0xF800, 0x07E0, 0x001F}), {kGreen}},
    {"24 bits, last padding missing", With(1, 2, 24, "ff 00 00 00 00 00 ff"), {kRed, kBlue}},
    {"32 bits", With(1, 1, 32, "01 02 03 ff"), {0x030201}},
    {"32 bits, swapped masks", Masked(32, "01 02 03 00", {0xFF, 0xFF00, 0xFF0000}), {0x010203}},
    {"a mask of nothing", Masked(32, "01 02 03 00", {0, 0xFF00, 0}), {0x000200}},
    {"old header", Old(With(2, 1, 8, "01 02 00 00", kPalette)), {kRed, kGreen}},
    {"long header", LongHeader(With(2, 1, 8, "01 02 00 00", kPalette)), {kRed, kGreen}},
    {"run length: runs, single ones, rows",
     RunLength(3, 2, 8, "03 01 00 00 00 03 01 02 03 00 00 01"),
     {kRed, kGreen, kBlue, kRed, kRed, kRed}},
    {"run length: a move",
     RunLength(2, 2, 8, "00 02 01 01 01 03 00 01"),
     {kBlack, kBlue, kBlack, kBlack}},
    {"run length: no end mark", RunLength(2, 1, 8, "01 01"), {kRed, kBlack}},
    {"run length of 4 bits: alternating",
     RunLength(5, 1, 4, "05 12 00 01"),
     {kRed, kGreen, kRed, kGreen, kRed}},
    {"run length of 4 bits: single ones",
     RunLength(5, 1, 4, "00 05 12 31 20 00 00 01"),
     {kRed, kGreen, kBlue, kRed, kGreen}},
};

TEST(BmpDecoderTest, ReadsEveryForm) {
  for (const GoodCase& c : kGoodCases) {
    SCOPED_TRACE(c.name);
    Bitmap bitmap;
    ASSERT_TRUE(Decode(c.bmp.Build(), &bitmap));
    EXPECT_EQ(bitmap.width, c.bmp.width);
    EXPECT_EQ(bitmap.height, std::abs(c.bmp.height));
    EXPECT_EQ(bitmap.pixels, c.want);
  }
}

TEST(BmpDecoderTest, EveryCutOfAPlainPictureIsRefused) {
  const std::string whole = With(3, 2, 4, "12 30 00 00 30 00", kPalette).Build();
  Bitmap bitmap;
  ASSERT_TRUE(Decode(whole, &bitmap));
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(Decode(whole.substr(0, length), &bitmap)) << length;
  }
}

}  // namespace
}  // namespace velmora
