// A player component whose audio goes through pointers in its memory, and the system around it:
// natively, where output_redirection.cpp is compiled on the headers in seams/. Each test has a
// VirtualProtect of its own, between whose calls a word changes.
#pragma once

#include <windows.h>

#include "base/sync/shared_word.h"

namespace kelvo::test {

// The component's memory, as far as it can be read: the anchor, and between other words two that it
// calls through.
extern SharedPointer<void*> g_component[4];

// The system's waveOutWrite. Each test has its own.
UINT WaveOutWrite(HANDLE device, void* header, UINT header_bytes);

HMODULE ComponentModule();  // both the component and the system's core
void ResetComponent();      // calls the system again
bool CallsTheSystem();      // through both words
// Through one of its words; the result is the device's.
UINT PlayBlock(int word, int16_t* samples, size_t bytes);

}  // namespace kelvo::test
