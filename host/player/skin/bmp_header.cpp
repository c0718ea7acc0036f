#include "host/player/skin/bmp.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr size_t kFileHeader = 14;
constexpr size_t kOldInfoHeader = 12;  // 16-bit sizes, palette of three bytes a colour
constexpr size_t kInfoHeader = 40;
constexpr uint32_t kMaskCode = 3;

uint32_t LoadLittle16(const uint8_t* p) {
  return p[0] | static_cast<uint32_t>(p[1]) << 8;
}

uint32_t LoadLittle32(const uint8_t* p) {
  return LoadLittle16(p) | LoadLittle16(p + 2) << 16;
}

int64_t LoadSigned32(const uint8_t* p) {
  return static_cast<int32_t>(LoadLittle32(p));
}

bool SizesAreFine(int64_t width, int64_t height) {
  return width > 0 && height > 0 && width <= kLargestBitmapSide && height <= kLargestBitmapSide &&
         width * height <= kLargestBitmapPixels;
}

bool ReadCode(uint32_t code, BmpHeader* header) {
  const int bits = header->bits;
  header->code = BmpCode::kPlain;
  switch (code) {
    case 0:
      return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case 1:
      header->code = BmpCode::kRunLength8;
      return bits == 8 && !header->top_down;
    case 2:
      header->code = BmpCode::kRunLength4;
      return bits == 4 && !header->top_down;
    case kMaskCode:
      return bits == 16 || bits == 32;
    default:
      return false;
  }
}

void SetUsualMasks(BmpHeader* header) {
  const int bits = header->bits == 16 ? 5 : 8;
  const uint32_t mask = (1u << bits) - 1;
  for (int i = 0; i < 3; ++i) header->masks[i] = mask << (bits * (2 - i));
}

void ReadPalette(const uint8_t* data, size_t size, size_t at, size_t bytes_each, size_t count,
                 BmpHeader* header) {
  std::fill_n(header->palette, 256, Colour{0});
  for (size_t i = 0; i < count && at <= size && size - at >= bytes_each; ++i, at += bytes_each) {
    header->palette[i] = LoadLittle16(data + at) | static_cast<Colour>(data[at + 2]) << 16;
  }
}

}  // namespace

bool ReadBmpHeader(const uint8_t* data, size_t size, BmpHeader* header) {
  if (size < kFileHeader + kOldInfoHeader || data[0] != 'B' || data[1] != 'M') return false;
  const uint8_t* info = data + kFileHeader;
  const size_t info_bytes = LoadLittle32(info);
  const bool old = info_bytes == kOldInfoHeader;
  if (!old && (info_bytes < kInfoHeader || info_bytes > size - kFileHeader)) return false;

  BmpHeader read = {};
  const int64_t width = old ? int64_t{LoadLittle16(info + 4)} : LoadSigned32(info + 4);
  const int64_t height = old ? int64_t{LoadLittle16(info + 6)} : LoadSigned32(info + 8);
  if (!SizesAreFine(width, height < 0 ? -height : height)) return false;
  read.width = static_cast<int>(width);
  read.height = static_cast<int>(height < 0 ? -height : height);
  read.top_down = height < 0;
  read.bits = static_cast<int>(LoadLittle16(info + (old ? 10 : 14)));
  read.pixels_at = LoadLittle32(data + 10);
  const uint32_t code = old ? 0 : LoadLittle32(info + 16);
  if (!ReadCode(code, &read)) return false;

  SetUsualMasks(&read);
  if (code == kMaskCode) {
    if (size - kFileHeader - kInfoHeader < 12) return false;
    for (int i = 0; i < 3; ++i) read.masks[i] = LoadLittle32(info + kInfoHeader + i * 4);
  }
  if (read.bits <= 8) {
    const size_t most = size_t{1} << read.bits;
    const size_t used = old ? 0 : LoadLittle32(info + 32);
    ReadPalette(data, size, kFileHeader + info_bytes, old ? 3 : 4,
                used == 0 ? most : std::min(used, most), &read);
  }
  *header = read;
  return true;
}

}  // namespace velmora
