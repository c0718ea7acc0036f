#pragma once

namespace kelvo {

// Runs body(context) on a thread that keeps this DLL loaded until the thread has ended. So nobody
// needs to wait for the end itself, which would hang a caller inside an attach or detach handler;
// the body tells in its own way when it is through. False when no thread could be made.
[[nodiscard]] bool StartModuleThread(void (*body)(void*), void* context) noexcept;

}  // namespace kelvo
