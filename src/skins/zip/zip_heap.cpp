#include "base/memory/heap.h"

extern "C" {

void* KelvoZipAllocate(size_t bytes) {
  return kelvo::HeapAllocate(bytes);
}

void KelvoZipFree(void* block) {
  kelvo::HeapFree(block);
}

}  // extern "C"
