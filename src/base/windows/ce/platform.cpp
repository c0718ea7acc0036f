#include "base/windows/platform.h"

#include <windows.h>

// Not in the desktop's headers: deletes a file and gives its name to another.
extern "C" BOOL WINAPI DeleteAndRenameFile(const wchar_t* deleted, const wchar_t* renamed);

namespace kelvo {

int PlatformPriority(int32_t device_priority) noexcept {
  return device_priority;
}

uint32_t MaximizedSheetFlag() noexcept {
  return 0x00002000;
}

// Moving succeeds only where nothing is, the second only where something is. A card's driver may
// lack the second; what takes two steps instead leaves at least `from`.
bool ReplaceByMoving(const wchar_t* from, const wchar_t* to) noexcept {
  return MoveFileW(from, to) || DeleteAndRenameFile(to, from) ||
         (GetFileAttributesW(from) != 0xFFFFFFFFu && DeleteFileW(to) && MoveFileW(from, to));
}

}  // namespace kelvo
