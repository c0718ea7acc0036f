#include "base/sync/thread_slot.h"

#include <pthread.h>

namespace kelvo {

bool ThreadSlot::Attach() noexcept {
  if (users_++ == 0) {
    pthread_key_t key;
    taken_ = pthread_key_create(&key, nullptr) == 0;
    index_ = key;
  }
  return taken_;
}

void ThreadSlot::Detach() noexcept {
  if (--users_ > 0 || !taken_) return;
  pthread_key_delete(static_cast<pthread_key_t>(index_));
  taken_ = false;
}

void* ThreadSlot::Get() const noexcept {
  return taken_ ? pthread_getspecific(static_cast<pthread_key_t>(index_)) : nullptr;
}

bool ThreadSlot::Set(void* value) noexcept {
  return taken_ && pthread_setspecific(static_cast<pthread_key_t>(index_), value) == 0;
}

}  // namespace kelvo
