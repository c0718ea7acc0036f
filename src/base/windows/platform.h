// The few places where the desktop and the device differ: base/windows/desktop/ and
// base/windows/ce/ each implement these.
#pragma once

#include <stdint.h>

namespace kelvo {

// The system's number for one of the device's thread priorities (0 most urgent, 3 normal, 7 idle).
int PlatformPriority(int32_t device_priority) noexcept;

// The flag of a property sheet that fills the screen; 0 where the shell's dialogs see to that.
uint32_t MaximizedSheetFlag() noexcept;

// FileSystem::Replace.
bool ReplaceByMoving(const wchar_t* from, const wchar_t* to) noexcept;

}  // namespace kelvo
