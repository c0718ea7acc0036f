#include "reference_decoder.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>

#include "fail.h"
#include "ivorbisfile.h"

void* KelvoDecoderMalloc(size_t bytes) {
  return malloc(bytes);
}
void* KelvoDecoderCalloc(size_t count, size_t bytes_each) {
  return calloc(count, bytes_each);
}
void* KelvoDecoderRealloc(void* block, size_t bytes) {
  return realloc(block, bytes);
}
void KelvoDecoderFree(void* block) {
  free(block);
}
void* KelvoDecoderScratch(size_t bytes) {
  return malloc(bytes);
}  // until the program ends
void KelvoDecoderAbandon() {
  bench::Fail("the decoder gives up");
}

namespace bench {
namespace {

struct Cursor {
  const std::vector<uint8_t>& bytes;
  size_t position;
};

size_t Read(void* to, size_t size, size_t count, void* source) {
  Cursor& cursor = *static_cast<Cursor*>(source);
  const size_t bytes = std::min(size * count, cursor.bytes.size() - cursor.position);
  memcpy(to, cursor.bytes.data() + cursor.position, bytes);
  cursor.position += bytes;
  return bytes / size;
}

int Seek(void* source, ogg_int64_t offset, int origin) {
  Cursor& cursor = *static_cast<Cursor*>(source);
  const int64_t from = origin == SEEK_SET   ? 0
                       : origin == SEEK_CUR ? static_cast<int64_t>(cursor.position)
                                            : static_cast<int64_t>(cursor.bytes.size());
  if (from + offset < 0 || from + offset > static_cast<int64_t>(cursor.bytes.size())) return -1;
  cursor.position = static_cast<size_t>(from + offset);
  return 0;
}

long Tell(void* source) {
  return static_cast<long>(static_cast<Cursor*>(source)->position);
}

}  // namespace

Decoded DecodeHere(const std::vector<uint8_t>& file, int64_t first_sample) {
  Cursor cursor{file, 0};
  OggVorbis_File stream;
  if (ov_open_callbacks(&cursor, &stream, nullptr, 0, {Read, Seek, nullptr, Tell}) < 0) {
    Fail("the decoder does not open the file");
  }
  if (first_sample != 0 && ov_pcm_seek(&stream, first_sample) != 0) Fail("the decoder cannot seek");
  Decoded decoded;
  decoded.channels = static_cast<uint32_t>(ov_info(&stream, -1)->channels);
  decoded.sample_rate = static_cast<uint32_t>(ov_info(&stream, -1)->rate);
  char chunk[4096];
  int section;
  for (;;) {
    const long bytes = ov_read(&stream, chunk, sizeof(chunk), &section);
    if (bytes <= 0) break;
    decoded.pcm.insert(decoded.pcm.end(), chunk, chunk + bytes);
  }
  ov_clear(&stream);
  return decoded;
}

}  // namespace bench
