#include "skins/zip/zip_heap.h"

#include <zlib.h>

#include "base/memory/heap.h"

namespace {

void* TakeItems(void*, unsigned count, unsigned bytes_each) {
  return kelvo::HeapTakeZeroed(count, bytes_each);
}

void GiveItems(void*, void* block) {
  kelvo::HeapGive(block);
}

}  // namespace

extern "C" {

void* KelvoZipTake(size_t bytes) {
  return kelvo::HeapTake(bytes);
}

void KelvoZipGive(void* block) {
  kelvo::HeapGive(block);
}

// Stands in for zlib's function of that kind: minizip chooses no allocator, we do.
int KelvoZipInflateInit(z_streamp stream, int window_bits, const char* version, int stream_bytes) {
  stream->zalloc = TakeItems;
  stream->zfree = GiveItems;
  return inflateInit2_(stream, window_bits, version, stream_bytes);
}

}  // extern "C"
