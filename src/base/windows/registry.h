#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/windows/unique_handle.h"

namespace kelvo {

// A key under HKEY_LOCAL_MACHINE; its path may begin with a backslash. A key that could not be
// opened answers false to everything.
class RegistryKey {
 public:
  static RegistryKey Open(const wchar_t* path) noexcept;
  // For writing too; a key that may only be read is opened for that.
  static RegistryKey OpenOrCreate(const wchar_t* path) noexcept;

  explicit operator bool() const noexcept { return static_cast<bool>(key_); }

  // True when the value is there and has exactly 4 bytes; otherwise *number is untouched.
  [[nodiscard]] bool ReadNumber(const wchar_t* name, uint32_t* number) const noexcept;
  bool WriteNumber(const wchar_t* name, uint32_t number) const noexcept;
  // True when the value is a text that fits with its terminator; otherwise the buffer holds the
  // empty text.
  [[nodiscard]] bool ReadText(const wchar_t* name, wchar_t* text, size_t capacity) const noexcept;

 private:
  explicit RegistryKey(HKEY key) noexcept : key_(key) {}
  UniqueKey key_;
};

}  // namespace kelvo
