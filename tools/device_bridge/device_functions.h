// Where the device's own libraries and the desktop's differ.
#pragma once

#include <windows.h>

#include <stddef.h>
#include <stdint.h>

namespace bridge {

class ArmImage;

// The bridge's own function of that name; 0: this machine's will do.
uint32_t DeviceFunction(const char* name);

// The C heap for the device's code: this machine's, with its blocks checked at both ends when they
// come back. The host frees blocks with this machine's free() and gets those that are plain.
void* __cdecl HeapAllocate(size_t bytes);
void* __cdecl HeapAllocateZeroed(size_t count, size_t bytes_each);
void* __cdecl HeapResize(void* block, size_t bytes);
void __cdecl HeapFreeBlock(void* block);

// Records begin with their size. The device refuses sizes that it does not know; the desktop knows
// more of them. Watching does nothing for a function that takes none; checking, before a function
// is called with these arguments, ends the run at a size that the device does not know.
void WatchRecords(uint32_t function, const char* name);
void CheckRecords(uint32_t function, const uint32_t* words);

// From now on every function that takes a module finds, for the bridge's, the resources of the
// device's file. Before the image is protected.
void ShowResources(HMODULE bridge, const ArmImage& image);

}  // namespace bridge
