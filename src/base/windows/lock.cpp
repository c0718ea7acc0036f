#include "base/sync/lock.h"

#include <windows.h>

namespace kelvo {
namespace {

CRITICAL_SECTION* Section(unsigned char* room) noexcept {
  return reinterpret_cast<CRITICAL_SECTION*>(room);
}

}  // namespace

Lock::Lock() noexcept {
  static_assert(sizeof(section_) >= sizeof(CRITICAL_SECTION));
  static_assert(alignof(Lock) >= alignof(CRITICAL_SECTION));
  InitializeCriticalSection(Section(section_));
}

Lock::~Lock() {
  Close();
}

void Lock::Close() noexcept {
  if (depth_ == kClosed) return;
  depth_ = kClosed;
  DeleteCriticalSection(Section(section_));
}

void Lock::Enter() noexcept {
  EnterCriticalSection(Section(section_));
  ++depth_;
}

void Lock::Leave() noexcept {
  if (depth_ == 0) return;
  --depth_;
  LeaveCriticalSection(Section(section_));
}

}  // namespace kelvo
