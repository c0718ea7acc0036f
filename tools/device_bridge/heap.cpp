#include "device_functions.h"

#include <windows.h>

#include <malloc.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include <atomic>
#include <mutex>
#include <unordered_map>

#include "faults.h"

namespace bridge {
namespace {

// Behind every block; what lies before it is this machine's heap's own, and its to check.
constexpr unsigned char kEnd[8] = {0xE7, 0x5A, 0xE7, 0xA5, 0xE7, 0x5A, 0xE7, 0xA5};

std::mutex g_lock;
// Bytes of each block. One that the host freed stays until its address is handed out again.
std::unordered_map<void*, size_t> g_blocks;
std::atomic<int32_t> g_requests_left{-1};  // that are met; below 0: all

void* Adopt(void* block, size_t bytes) {
  if (!block) return nullptr;
  memcpy(static_cast<char*>(block) + bytes, kEnd, sizeof(kEnd));
  const std::lock_guard<std::mutex> guard(g_lock);
  g_blocks[block] = bytes;
  return block;
}

// The block's bytes; it is the heap's again.
size_t Release(void* block) {
  size_t bytes = 0;
  {
    const std::lock_guard<std::mutex> guard(g_lock);
    const auto found = g_blocks.find(block);
    if (found == g_blocks.end()) Fail("free of %p, which is no block", block);
    bytes = found->second;
    g_blocks.erase(found);
  }
  if (memcmp(static_cast<char*>(block) + bytes, kEnd, sizeof(kEnd)) != 0) {
    Fail("a block of %u bytes is overrun", bytes);
  }
  if (!HeapValidate(reinterpret_cast<HANDLE>(_get_heap_handle()), 0, block)) {
    Fail("what lies before a block of %u bytes is overwritten", bytes);
  }
  return bytes;
}

}  // namespace

void* __cdecl HeapAllocate(size_t bytes) {
  if (bytes > SIZE_MAX - sizeof(kEnd) || g_requests_left == 0) return nullptr;
  if (g_requests_left > 0) --g_requests_left;
  return Adopt(malloc(bytes + sizeof(kEnd)), bytes);
}

void* __cdecl HeapAllocateZeroed(size_t count, size_t bytes_each) {
  if (bytes_each != 0 && count > SIZE_MAX / bytes_each) return nullptr;
  void* block = HeapAllocate(count * bytes_each);
  return block ? memset(block, 0, count * bytes_each) : nullptr;
}

void* __cdecl HeapResize(void* block, size_t bytes) {
  if (!block) return HeapAllocate(bytes);
  if (bytes == 0) {
    HeapFreeBlock(block);
    return nullptr;
  }
  void* next = HeapAllocate(bytes);
  if (!next) return nullptr;
  const size_t old_bytes = Release(block);
  memcpy(next, block, old_bytes < bytes ? old_bytes : bytes);
  free(block);
  return next;
}

void __cdecl HeapFreeBlock(void* block) {
  if (!block) return;
  Release(block);
  free(block);
}

}  // namespace bridge

// For tests: the device's code gets so many blocks more and then none (below 0: as many as it
// wants). Returns how many it has.
extern "C" __declspec(dllexport) uint32_t __cdecl LimitHeap(int32_t requests) {
  const std::lock_guard<std::mutex> guard(bridge::g_lock);
  bridge::g_requests_left = requests;
  return bridge::g_blocks.size();
}
