#pragma once

#include <stddef.h>

#include <new>
#include <utility>

#include "base/memory/heap.h"

namespace kelvo {

// A growable array that reports failure instead of throwing: an operation that needs memory and
// gets none returns false (or null) and leaves the array as it was. Elements must be movable
// without failing.
template <class T>
class Array {
 public:
  Array() noexcept = default;
  Array(Array&& other) noexcept { Swap(other); }
  Array& operator=(Array&& other) noexcept {
    if (this != &other) {
      Clear();
      Swap(other);
    }
    return *this;
  }
  Array(const Array&) = delete;
  Array& operator=(const Array&) = delete;
  ~Array() { Clear(); }

  size_t size() const noexcept { return size_; }
  size_t capacity() const noexcept { return capacity_; }
  bool empty() const noexcept { return size_ == 0; }
  T* data() noexcept { return items_; }
  const T* data() const noexcept { return items_; }
  T* begin() noexcept { return items_; }
  T* end() noexcept { return items_ + size_; }
  const T* begin() const noexcept { return items_; }
  const T* end() const noexcept { return items_ + size_; }
  T& operator[](size_t i) noexcept { return items_[i]; }
  const T& operator[](size_t i) const noexcept { return items_[i]; }
  T& back() noexcept { return items_[size_ - 1]; }

  [[nodiscard]] bool Reserve(size_t capacity) noexcept {
    if (capacity <= capacity_) return true;
    if (capacity > static_cast<size_t>(-1) / sizeof(T)) return false;
    T* grown = static_cast<T*>(HeapAllocate(capacity * sizeof(T)));
    if (!grown) return false;
    for (size_t i = 0; i < size_; ++i) {
      ::new (static_cast<void*>(grown + i)) T(std::move(items_[i]));
      items_[i].~T();
    }
    HeapFree(items_);
    items_ = grown;
    capacity_ = capacity;
    return true;
  }

  [[nodiscard]] bool Append(T item) noexcept {
    if (size_ == capacity_ && !Reserve(capacity_ < 8 ? 8 : capacity_ + capacity_ / 2)) return false;
    ::new (static_cast<void*>(items_ + size_)) T(std::move(item));
    ++size_;
    return true;
  }

  [[nodiscard]] bool Insert(size_t at, T item) noexcept {
    if (!Append(std::move(item))) return false;
    for (size_t i = size_ - 1; i > at; --i) std::swap(items_[i], items_[i - 1]);
    return true;
  }

  // Grows with value-initialised items or drops items from the end.
  [[nodiscard]] bool Resize(size_t size) noexcept {
    if (!Reserve(size)) return false;
    while (size_ > size) items_[--size_].~T();
    while (size_ < size) ::new (static_cast<void*>(items_ + size_++)) T();
    return true;
  }

  // Appends `count` trivially copyable items.
  [[nodiscard]] bool AppendRange(const T* items, size_t count) noexcept {
    if (count > static_cast<size_t>(-1) - size_) return false;
    const size_t needed = size_ + count;
    if (needed > capacity_) {
      const size_t grown = capacity_ + capacity_ / 2;
      if (!Reserve(grown > needed ? grown : needed)) return false;
    }
    for (size_t i = 0; i < count; ++i) ::new (static_cast<void*>(items_ + size_++)) T(items[i]);
    return true;
  }

  // Closes the gap; the order of the others is kept.
  void RemoveAt(size_t at) noexcept {
    for (size_t i = at; i + 1 < size_; ++i) items_[i] = std::move(items_[i + 1]);
    items_[--size_].~T();
  }

  // Also gives the storage back.
  void Clear() noexcept {
    while (size_ > 0) items_[--size_].~T();
    HeapFree(items_);
    items_ = nullptr;
    capacity_ = 0;
  }

  void Swap(Array& other) noexcept {
    std::swap(items_, other.items_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  T* items_ = nullptr;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace kelvo
