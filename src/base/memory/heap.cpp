#include "base/memory/heap.h"

#include <stdlib.h>

namespace kelvo {
namespace {

HeapFaultHook g_should_fail = nullptr;
void* g_fault_context = nullptr;

bool Fails() noexcept {
  return g_should_fail && g_should_fail(g_fault_context);
}

}  // namespace

void SetHeapFaultHook(HeapFaultHook should_fail, void* context) noexcept {
  g_should_fail = should_fail;
  g_fault_context = context;
}

void* HeapAllocate(size_t bytes) noexcept {
  return Fails() ? nullptr : malloc(bytes ? bytes : 1);
}

void* HeapAllocateZeroed(size_t count, size_t bytes_each) noexcept {
  if (count == 0 || bytes_each == 0) count = bytes_each = 1;
  if (count > static_cast<size_t>(-1) / bytes_each) return nullptr;
  return Fails() ? nullptr : calloc(count, bytes_each);
}

void* HeapResize(void* block, size_t bytes) noexcept {
  return Fails() ? nullptr : realloc(block, bytes ? bytes : 1);
}

void HeapFree(void* block) noexcept {
  free(block);
}

}  // namespace kelvo
