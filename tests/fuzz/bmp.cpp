// Any bytes as a bitmap: a picture within the limits, or nothing.
#include "host/player/skin/bmp.h"
#include "tests/fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvo::fuzz::Require;
  velmora::Bitmap bitmap;
  if (velmora::DecodeBmp(data, size, &bitmap)) {
    Require(bitmap.width > 0 && bitmap.width <= velmora::kLargestBitmapSide);
    Require(bitmap.height > 0 && bitmap.height <= velmora::kLargestBitmapSide);
    Require(bitmap.pixels.size() == static_cast<size_t>(bitmap.width) * bitmap.height);
    Require(bitmap.pixels.size() <= velmora::kLargestBitmapPixels);
  } else {
    Require(bitmap.empty());
  }
  return 0;
}
