// How many objects of the system this process owns, for tests that look for leaks.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kelvo::test {

// Wine does not count them. There, of 200 more the highest: the lowest free numbers
// are used first.
inline DWORD Handles() {
  DWORD count = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &count) && count > 0) return count;
  std::vector<HANDLE> events(200);
  for (HANDLE& event : events) {
    event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    count = std::max(count, static_cast<DWORD>(reinterpret_cast<uintptr_t>(event) / 4));
  }
  for (HANDLE event : events) CloseHandle(event);
  return count;
}

// Wine does not count them. There, a number that grows with every object that is not given back:
// handles carry an index, the lowest free ones are used first.
inline DWORD GdiObjects() {
  if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return counted;
  DWORD highest = 0;
  std::vector<HBRUSH> brushes(500);
  for (HBRUSH& brush : brushes) {
    brush = CreateSolidBrush(RGB(1, 2, 3));
    highest = std::max<DWORD>(highest, LOWORD(brush));
  }
  for (HBRUSH brush : brushes) DeleteObject(brush);
  return highest;
}

inline BOOL CALLBACK CountOne(HWND, LPARAM total) {
  ++*reinterpret_cast<DWORD*>(total);
  return TRUE;
}
inline BOOL CALLBACK CountWithChildren(HWND window, LPARAM total) {
  EnumChildWindows(window, &CountOne, total);
  return CountOne(window, total);
}

// Menus, icons and cursors, and the windows of this thread. Wine does not count these either: there
// every handle that there can be is tried; without its upper half it stands for any object there.
inline DWORD UserObjects() {
  if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)) return counted;
  DWORD count = 0;
  EnumThreadWindows(GetCurrentThreadId(), &CountWithChildren, reinterpret_cast<LPARAM>(&count));
  for (UINT_PTR handle = 0x20; handle < 0xFFF0; handle += 2) {
    if (IsMenu(reinterpret_cast<HMENU>(handle))) ++count;
    ICONINFO icon;
    if (!GetIconInfo(reinterpret_cast<HICON>(handle), &icon)) continue;
    ++count;
    DeleteObject(icon.hbmColor);
    DeleteObject(icon.hbmMask);
  }
  return count;
}

// Bytes on all heaps of this process.
inline size_t HeapBytes() {
  HANDLE heaps[64];
  size_t bytes = 0;
  const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
  for (DWORD i = 0; i < count; ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heaps[i]);
    while (HeapWalk(heaps[i], &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    }
    HeapUnlock(heaps[i]);
  }
  return bytes;
}

struct Owned {
  DWORD gdi, user;
  size_t heap;
};
inline Owned CountOwned() {
  return {GdiObjects(), UserObjects(), HeapBytes()};
}

// What has grown by one with every second of `times` showings, or by 40 bytes with each, in words:
// the system's own caches move. Looks first whether the counters see what they are to see.
inline std::string Grown(const Owned& before, DWORD times) {
  const Owned now = CountOwned();
  const HMENU menu = CreateMenu();
  const HICON icon = CopyIcon(LoadIconW(nullptr, IDI_APPLICATION));
  std::string grown = UserObjects() == now.user + 2 ? "" : "user objects are not counted ";
  DestroyMenu(menu);
  DestroyIcon(icon);
  if (now.gdi > before.gdi + times / 2)
    grown += std::to_string(now.gdi - before.gdi) + " GDI objects ";
  if (now.user > before.user + times / 2)
    grown += std::to_string(now.user - before.user) + " user objects ";
  if (now.heap > before.heap + 40 * times)
    grown += std::to_string(now.heap - before.heap) + " bytes";
  return grown;
}

}  // namespace kelvo::test
