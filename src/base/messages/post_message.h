#pragma once

#include <stdint.h>

namespace kelvo {

// Puts a message into a window's queue; null is no window. Any thread. Native builds have no
// windows: there the hook below receives the message.
void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept;

using PostHook = void (*)(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam);
void SetPostHook(PostHook hook) noexcept;  // native builds only

}  // namespace kelvo
