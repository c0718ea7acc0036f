#include "base/messages/post_message.h"

#include <windows.h>

namespace kelvo {

void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept {
  if (window) PostMessageW(static_cast<HWND>(window), message, wparam, lparam);
}

}  // namespace kelvo
