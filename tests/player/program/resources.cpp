#include "tests/player/program/resources.h"

#include <psapi.h>
#include <string.h>
#include <winternl.h>

#include <algorithm>
#include <vector>

namespace velmora::test {
namespace {

template <class Function>
Function Find(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

// Of the table of all graphics objects that every process can read.
struct GdiEntry {
  UINT64 object;
  DWORD owner;
  WORD unique;
  BYTE type;  // 0: free
  BYTE flags;
  UINT64 user;
};
constexpr size_t kGdiEntries = 16384;
constexpr size_t kTableInProcessBlock = sizeof(void*) == 4 ? 0x94 : 0xF8;

// Wine does not count them, but each process has a table of its own.
size_t CountGdiTable(HANDLE process) {
  using Query = NTSTATUS(WINAPI*)(HANDLE, PROCESSINFOCLASS, void*, ULONG, ULONG*);
  const auto query = Find<Query>("NtQueryInformationProcess");
  PROCESS_BASIC_INFORMATION basic = {};
  if (!query || query(process, ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0) {
    return 0;
  }
  const char* const block = reinterpret_cast<const char*>(basic.PebBaseAddress);
  const void* table = nullptr;
  std::vector<GdiEntry> entries(kGdiEntries);
  if (!ReadProcessMemory(process, block + kTableInProcessBlock, &table, sizeof table, nullptr) ||
      !ReadProcessMemory(process, table, entries.data(), kGdiEntries * sizeof(GdiEntry), nullptr)) {
    return 0;
  }
  size_t count = 0;
  for (const GdiEntry& entry : entries) count += entry.type != 0;
  return count;
}

// Wine's GetProcessHandleCount knows none; the list of all processes does.
size_t CountHandles(HANDLE process) {
  DWORD counted = 0;
  if (GetProcessHandleCount(process, &counted) && counted > 0) return counted;
  using Query = NTSTATUS(WINAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
  const auto query = Find<Query>("NtQuerySystemInformation");
  std::vector<char> list(1 << 20);
  if (!query ||
      query(SystemProcessInformation, list.data(), static_cast<ULONG>(list.size()), nullptr) != 0) {
    return 0;
  }
  for (size_t at = 0;;) {
    SYSTEM_PROCESS_INFORMATION entry;
    memcpy(&entry, list.data() + at, sizeof entry);
    if (reinterpret_cast<ULONG_PTR>(entry.UniqueProcessId) == GetProcessId(process)) {
      return entry.HandleCount;
    }
    if (entry.NextEntryOffset == 0) return 0;
    at += entry.NextEntryOffset;
  }
}

struct WindowCount {
  DWORD process;
  size_t count;
};

BOOL CALLBACK CountWindow(HWND window, LPARAM parameter) {
  WindowCount& windows = *reinterpret_cast<WindowCount*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  windows.count += process == windows.process;
  return TRUE;
}

BOOL CALLBACK CountWindowAndChildren(HWND window, LPARAM parameter) {
  CountWindow(window, parameter);
  EnumChildWindows(window, &CountWindow, parameter);
  return TRUE;
}

size_t CountWindows(DWORD process) {
  WindowCount windows = {process, 0};
  EnumWindows(&CountWindowAndChildren, reinterpret_cast<LPARAM>(&windows));
  for (HWND window = nullptr;
       (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
    CountWindowAndChildren(window, reinterpret_cast<LPARAM>(&windows));
  }
  return windows.count;
}

}  // namespace

Resources CountResources(HANDLE process) {
  Resources resources;
  resources.gdi_objects = GetGuiResources(process, GR_GDIOBJECTS);
  if (resources.gdi_objects == 0) resources.gdi_objects = CountGdiTable(process);
  resources.windows = CountWindows(GetProcessId(process));
  resources.handles = CountHandles(process);
  PROCESS_MEMORY_COUNTERS_EX memory = {};
  GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  resources.private_bytes = std::max(memory.PrivateUsage, memory.PagefileUsage);
  return resources;
}

std::string Text(const Resources& resources) {
  return std::to_string(resources.gdi_objects) + " graphics objects, " +
         std::to_string(resources.windows) + " windows, " + std::to_string(resources.handles) +
         " handles, " + std::to_string(resources.private_bytes / 1024) + " KB";
}

void LeakWatch::AddRound(const Resources& now) {
  const size_t counts[3] = {now.gdi_objects, now.windows, now.handles};
  for (size_t i = 0; i < 3; ++i) {
    if (counts[i] <= most_[i]) continue;
    most_[i] = counts[i];
    if (rounds_ > 0) ++grown_[i];
  }
  ++rounds_;
}

}  // namespace velmora::test
