#include "base/sync/thread_slot.h"

#include <windows.h>

namespace kelvo {

bool ThreadSlot::Attach() noexcept {
  if (users_++ == 0) {
    index_ = TlsAlloc();
    taken_ = index_ != 0xFFFFFFFFul;
  }
  return taken_;
}

void ThreadSlot::Detach() noexcept {
  if (--users_ > 0 || !taken_) return;
  TlsFree(index_);
  taken_ = false;
}

void* ThreadSlot::Get() const noexcept {
  return taken_ ? TlsGetValue(index_) : nullptr;
}

bool ThreadSlot::Set(void* value) noexcept {
  return taken_ && TlsSetValue(index_, value);
}

}  // namespace kelvo
