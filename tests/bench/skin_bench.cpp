// What reading a skin's bitmap out of an archive costs over minizip on its own files, and over
// inflating the same bytes in memory. Prints ratios of the fastest of many rounds, taken in turn so
// that other work on the machine meets all three alike.
#include <stdio.h>
#include <stdlib.h>
#include <unzip.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <string>

#include "kelvo/skin_reader.h"
#include "skins/skin_feature.h"
#include "tests/support/zip_builder.h"

namespace {

constexpr char kPath[] = "skin_bench.zip";
constexpr int kRounds = 400;

// 275 by 116 pixels of 24 bits are a main window; it packs like drawn surfaces with some noise.
std::string Bitmap() {
  std::string bytes(100 * 1024, '\0');
  uint32_t state = 1;
  for (size_t i = 0; i < bytes.size(); ++i) {
    state = state * 1664525u + 1013904223u;
    bytes[i] = static_cast<char>(i / 300 + i % 3 * 40 + (state >> 30));
  }
  return bytes;
}

template <class Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Require(bool holds, const char* what) {
  if (holds) return;
  fprintf(stderr, "bench_skins: %s failed\n", what);
  exit(1);
}

void WithLibrary(kelvo::SkinReader& reader, size_t want) {
  uint32_t size;
  void* block = reader.ReadFromArchive(L"skin_bench.zip", kelvo::kSkinMain, &size);
  Require(block && size == want, "the library");
  free(block);
}

void WithMinizip(size_t want) {
  unzFile zip = unzOpen64(kPath);
  Require(zip && unzLocateFile(zip, "main.bmp", 1) == UNZ_OK, "opening with minizip");
  unz_file_info64 info;
  unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0);
  void* block = malloc(info.uncompressed_size);
  unzOpenCurrentFile(zip);
  const int got = unzReadCurrentFile(zip, block, static_cast<unsigned>(info.uncompressed_size));
  Require(static_cast<size_t>(got) == want && unzCloseCurrentFile(zip) == UNZ_OK, "minizip");
  unzClose(zip);
  free(block);
}

void WithInflate(const std::string& packed, size_t want) {
  void* block = malloc(want);
  z_stream stream = {};
  inflateInit2(&stream, -MAX_WBITS);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = static_cast<Bytef*>(block);
  stream.avail_out = static_cast<uInt>(want);
  Require(inflate(&stream, Z_FINISH) == Z_STREAM_END, "inflate");
  inflateEnd(&stream);
  free(block);
}

}  // namespace

int main() {
  const std::string bitmap = Bitmap();
  const std::string packed = kelvo::test::ZipBuilder::Deflate(bitmap);
  kelvo::test::ZipBuilder zip;
  for (const char* name : {"balance.bmp", "cbuttons.bmp", "eqmain.bmp", "pledit.bmp"}) {
    zip.Add({name, std::string(1000, 'x')});
  }
  const std::string bytes = zip.Add({"main.bmp", bitmap}).Add({"volume.bmp", "x"}).Bytes();
  FILE* file = fopen(kPath, "wb");
  Require(file && fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "writing");
  fclose(file);

  kelvo::SkinReaderFeature feature(kelvo::SystemFiles());
  double library = 1e9;
  double minizip = 1e9;
  double inflate_alone = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    library = std::min(library, Seconds([&] { WithLibrary(feature, bitmap.size()); }));
    minizip = std::min(minizip, Seconds([&] { WithMinizip(bitmap.size()); }));
    inflate_alone = std::min(inflate_alone, Seconds([&] { WithInflate(packed, bitmap.size()); }));
  }
  remove(kPath);
  printf("skin bitmap of %zu bytes (%zu packed): %.3f ms\n", bitmap.size(), packed.size(),
         library * 1e3);
  printf("skin read / minizip alone     %.3f  (goal <= 1.02)\n", library / minizip);
  printf("skin read / bare inflate      %.3f  (goal <= 1.5)\n", library / inflate_alone);
}
