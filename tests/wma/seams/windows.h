// As much of the system as the redirection of audio uses: a component's memory that ends, and two
// modules. component.cpp has them, each test its own VirtualProtect.
#pragma once

#include <stddef.h>
#include <stdint.h>

#define WINAPI

using UINT = unsigned;
using DWORD = unsigned;
using HANDLE = void*;
using HMODULE = struct NativeModule*;
using FARPROC = void (*)();

constexpr DWORD PAGE_EXECUTE_READWRITE = 0x40;

struct WAVEHDR {
  char* lpData;
  DWORD dwBufferLength;
};

FARPROC GetProcAddress(HMODULE module, const char* name) noexcept;
bool IsBadReadPtr(const void* memory, size_t bytes) noexcept;
bool IsBadWritePtr(void* memory, size_t bytes) noexcept;
bool VirtualProtect(void* memory, size_t bytes, DWORD protection, DWORD* old) noexcept;
