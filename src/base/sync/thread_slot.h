#pragma once

namespace kelvo {

// One pointer per thread, null at first. Attach before use and Detach as often: the slot is taken
// with the first user and given back with the last. Attach and Detach are not thread-safe.
class ThreadSlot {
 public:
  constexpr ThreadSlot() noexcept = default;
  // False when the system has no slot left; Get is then null and Set is ignored.
  bool Attach() noexcept;
  void Detach() noexcept;
  void* Get() const noexcept;
  // False when the slot could not be written.
  bool Set(void* value) noexcept;

 private:
  int users_ = 0;
  unsigned long index_ = 0;
  bool taken_ = false;
};

}  // namespace kelvo
