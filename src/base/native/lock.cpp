#include "base/sync/lock.h"

#include <pthread.h>

namespace kelvo {
namespace {

pthread_mutex_t* Mutex(unsigned char* room) noexcept {
  return reinterpret_cast<pthread_mutex_t*>(room);
}

}  // namespace

Lock::Lock() noexcept {
  static_assert(sizeof(section_) >= sizeof(pthread_mutex_t));
  static_assert(alignof(Lock) >= alignof(pthread_mutex_t));
  pthread_mutexattr_t recursive;
  pthread_mutexattr_init(&recursive);
  pthread_mutexattr_settype(&recursive, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(Mutex(section_), &recursive);
  pthread_mutexattr_destroy(&recursive);
}

Lock::~Lock() {
  Close();
}

void Lock::Close() noexcept {
  if (depth_ == kClosed) return;
  depth_ = kClosed;
  pthread_mutex_destroy(Mutex(section_));
}

void Lock::Enter() noexcept {
  pthread_mutex_lock(Mutex(section_));
  ++depth_;
}

void Lock::Leave() noexcept {
  if (depth_ == 0) return;
  --depth_;
  pthread_mutex_unlock(Mutex(section_));
}

}  // namespace kelvo
