// The C heap for the device's code: this machine's, with its blocks checked at both ends when they
// come back. The host frees blocks with this machine's free() and gets those that are plain.
#pragma once

#include <stddef.h>

namespace bridge {

void* __cdecl HeapAllocate(size_t bytes);
void* __cdecl HeapAllocateZeroed(size_t count, size_t bytes_each);
void* __cdecl HeapResize(void* block, size_t bytes);
void __cdecl HeapFreeBlock(void* block);

}  // namespace bridge
