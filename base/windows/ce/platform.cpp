#include "base/windows/platform.h"

namespace kelvo {

int PlatformPriority(int32_t device_priority) noexcept {
  return device_priority;
}

}  // namespace kelvo
