#include "base/windows/platform.h"

#include <windows.h>

namespace kelvo {

int PlatformPriority(int32_t device_priority) noexcept {
  constexpr int kPriorities[] = {THREAD_PRIORITY_TIME_CRITICAL, THREAD_PRIORITY_HIGHEST,
                                 THREAD_PRIORITY_ABOVE_NORMAL,  THREAD_PRIORITY_NORMAL,
                                 THREAD_PRIORITY_BELOW_NORMAL,  THREAD_PRIORITY_LOWEST,
                                 THREAD_PRIORITY_LOWEST,        THREAD_PRIORITY_IDLE};
  return device_priority >= 0 && device_priority < 8 ? kPriorities[device_priority]
                                                     : THREAD_PRIORITY_NORMAL;
}

uint32_t MaximizedSheetFlag() noexcept {
  return 0;
}

bool ReplaceByMoving(const wchar_t* from, const wchar_t* to) noexcept {
  return MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

}  // namespace kelvo
