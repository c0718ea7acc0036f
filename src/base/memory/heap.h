// The one seam through which the library takes memory. Everything is from the C heap, so that a
// block handed to the host can be freed with the C library's free().
#pragma once

#include <stddef.h>

#include <new>
#include <utility>

namespace kelvo {

// Null when memory is out (also for requests that overflow). Zero bytes give a valid block.
[[nodiscard]] void* HeapAllocate(size_t bytes) noexcept;
[[nodiscard]] void* HeapAllocateZeroed(size_t count, size_t bytes_each) noexcept;
// On failure the old block is untouched and null is returned.
[[nodiscard]] void* HeapResize(void* block, size_t bytes) noexcept;
void HeapFree(void* block) noexcept;  // null is allowed

// Tests decide which request fails: the hook is asked before each one. Null (the default) lets all
// through. Not for use while other threads allocate.
using HeapFaultHook = bool (*)(void* context);
void SetHeapFaultHook(HeapFaultHook should_fail, void* context) noexcept;

// new/delete without exceptions. HeapDelete accepts null.
template <class T, class... Args>
[[nodiscard]] T* HeapNew(Args&&... args) noexcept {
  void* block = HeapAllocate(sizeof(T));
  return block ? ::new (block) T(std::forward<Args>(args)...) : nullptr;
}

template <class T>
void HeapDelete(T* object) noexcept {
  if (!object) return;
  object->~T();
  HeapFree(object);
}

// Owns one object made by HeapNew.
template <class T>
class HeapPtr {
 public:
  HeapPtr() noexcept = default;
  explicit HeapPtr(T* object) noexcept : object_(object) {}
  HeapPtr(HeapPtr&& other) noexcept : object_(other.Release()) {}
  HeapPtr& operator=(HeapPtr&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  ~HeapPtr() { HeapDelete(object_); }

  explicit operator bool() const noexcept { return object_ != nullptr; }
  T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  T& operator*() const noexcept { return *object_; }
  [[nodiscard]] T* Release() noexcept { return std::exchange(object_, nullptr); }
  void Reset(T* next = nullptr) noexcept { HeapDelete(std::exchange(object_, next)); }

 private:
  T* object_ = nullptr;
};

}  // namespace kelvo
