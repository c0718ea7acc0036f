#pragma once

#include "base/memory/array.h"
#include "base/memory/heap_text.h"

namespace kelvo {

// Decides which playlists an expansion may go into. Optional: without one, a playlist that lists
// itself is expanded again and again, until memory is out.
class NestingGuard {
 public:
  // Before `path` is opened; false skips it. Each Enter() that allowed it is followed by one
  // Leave(), in the opposite order.
  virtual bool Enter(const wchar_t* path) noexcept = 0;
  virtual void Leave() noexcept = 0;

 protected:
  ~NestingGuard() = default;
};

// Refuses a playlist that is being expanded already, and everything once kMostLists playlists have
// been entered: lists that name each other crosswise would go on for ages without any of them being
// inside itself. Refuses as well when memory is out.
class ChainGuard final : public NestingGuard {
 public:
  static constexpr size_t kMostLists = 10000;

  bool Enter(const wchar_t* path) noexcept override;
  void Leave() noexcept override;
  bool IsOpen(const wchar_t* path) const noexcept;

 private:
  Array<HeapText> chain_;
  size_t entered_ = 0;
};

}  // namespace kelvo
