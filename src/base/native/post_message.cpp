#include "base/messages/post_message.h"

namespace kelvo {
namespace {

PostHook g_hook = nullptr;

}  // namespace

void SetPostHook(PostHook hook) noexcept {
  g_hook = hook;
}

void PostToWindow(void* window, uint32_t message, uintptr_t wparam, intptr_t lparam) noexcept {
  if (window && g_hook) g_hook(window, message, wparam, lparam);
}

}  // namespace kelvo
