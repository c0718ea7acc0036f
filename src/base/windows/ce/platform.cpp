#include "base/windows/platform.h"

namespace kelvo {

int PlatformPriority(int32_t device_priority) noexcept {
  return device_priority;
}

uint32_t MaximizedSheetFlag() noexcept {
  return 0x00002000;
}

}  // namespace kelvo
