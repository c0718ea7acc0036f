#include "base/memory/heap.h"

extern "C" {

void* KelvoZipAllocate(size_t bytes) {
  return kelvo::HeapTake(bytes);
}

void KelvoZipFree(void* block) {
  kelvo::HeapGive(block);
}

}  // extern "C"
