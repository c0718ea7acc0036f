#include "base/memory/heap.h"

extern "C" {

void* KelvoZipTake(size_t bytes) {
  return kelvo::HeapTake(bytes);
}

void KelvoZipGive(void* block) {
  kelvo::HeapGive(block);
}

}  // extern "C"
