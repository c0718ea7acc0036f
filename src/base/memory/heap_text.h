#pragma once

#include <stddef.h>
#include <wchar.h>

#include <utility>

#include "base/memory/heap.h"

namespace kelvo {

// Owns one NUL-terminated wide text on the heap, or nothing.
class HeapText {
 public:
  HeapText() noexcept = default;
  HeapText(HeapText&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  HeapText& operator=(HeapText&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~HeapText() {
    // Moved-from texts by the thousand when a long list grows: no call for those.
    if (text_) HeapFree(text_);
  }

  // Replace the text by a copy; false, with the old text kept, when memory is out.
  [[nodiscard]] bool Assign(const wchar_t* text) noexcept;
  [[nodiscard]] bool Assign(const wchar_t* text, size_t length) noexcept;
  // The same in two steps, so that several texts change together or not at all: makes room for
  // `length` characters, which takes no memory when the text is as long, and changes nothing yet.
  [[nodiscard]] bool Reserve(size_t length) noexcept;
  // After Reserve() for this length.
  void Overwrite(const wchar_t* text, size_t length) noexcept;
  void Clear() noexcept { HeapFree(std::exchange(text_, nullptr)); }

  bool has_value() const noexcept { return text_ != nullptr; }
  // Null when there is none.
  const wchar_t* get() const noexcept { return text_; }
  // Empty text when there is none.
  const wchar_t* c_str() const noexcept { return text_ ? text_ : L""; }

 private:
  wchar_t* text_ = nullptr;
};

}  // namespace kelvo
