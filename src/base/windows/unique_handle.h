// Owners of system handles. The closing functions are called nowhere else.
#pragma once

#include <windows.h>

#include <utility>

namespace kelvo {

// Traits: `Raw` is the handle's type, None() is "no handle", Close() gives it back.
template <class Traits>
class UniqueHandle {
 public:
  using Raw = typename Traits::Raw;
  UniqueHandle() noexcept = default;
  explicit UniqueHandle(Raw raw) noexcept : raw_(raw) {}
  UniqueHandle(UniqueHandle&& other) noexcept : raw_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  ~UniqueHandle() { Reset(); }

  explicit operator bool() const noexcept { return raw_ != Traits::None(); }
  [[nodiscard]] Raw get() const noexcept { return raw_; }
  [[nodiscard]] Raw Release() noexcept { return std::exchange(raw_, Traits::None()); }
  void Reset(Raw next = Traits::None()) noexcept {
    Raw old = std::exchange(raw_, next);
    if (old != Traits::None()) Traits::Close(old);
  }

 private:
  Raw raw_ = Traits::None();
};

struct FileTraits {
  using Raw = HANDLE;
  static Raw None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(Raw raw) noexcept { CloseHandle(raw); }
};
struct ObjectTraits {  // events, threads
  using Raw = HANDLE;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { CloseHandle(raw); }
};
struct FindTraits {
  using Raw = HANDLE;
  static Raw None() noexcept { return INVALID_HANDLE_VALUE; }
  static void Close(Raw raw) noexcept { FindClose(raw); }
};
struct KeyTraits {
  using Raw = HKEY;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { RegCloseKey(raw); }
};
struct ModuleTraits {
  using Raw = HMODULE;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { FreeLibrary(raw); }
};
struct FontTraits {
  using Raw = HFONT;
  static Raw None() noexcept { return nullptr; }
  static void Close(Raw raw) noexcept { DeleteObject(raw); }
};

using UniqueFile = UniqueHandle<FileTraits>;
using UniqueObject = UniqueHandle<ObjectTraits>;
using UniqueFind = UniqueHandle<FindTraits>;
using UniqueKey = UniqueHandle<KeyTraits>;
using UniqueModule = UniqueHandle<ModuleTraits>;
using UniqueFont = UniqueHandle<FontTraits>;

}  // namespace kelvo
