#pragma once

#include <windows.h>

#include <objbase.h>

#include <utility>

namespace kelvo {

// Owns one reference to a COM object, or none.
template <class T>
class ComPtr {
 public:
  ComPtr() noexcept = default;
  // Takes over the caller's reference.
  explicit ComPtr(T* object) noexcept : object_(object) {}
  ComPtr(ComPtr&& other) noexcept : object_(other.Detach()) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) Reset(other.Detach());
    return *this;
  }
  ~ComPtr() { Reset(); }

  // A reference of its own to an object that somebody else owns.
  static ComPtr Share(T* object) noexcept {
    if (object) object->AddRef();
    return ComPtr(object);
  }

  explicit operator bool() const noexcept { return object_ != nullptr; }
  T* get() const noexcept { return object_; }
  T* operator->() const noexcept { return object_; }
  [[nodiscard]] T* Detach() noexcept { return std::exchange(object_, nullptr); }
  void Reset(T* next = nullptr) noexcept {
    if (T* old = std::exchange(object_, next)) old->Release();
  }
  // Where a function puts the reference that it hands out; what was held is released first.
  T** Receive() noexcept {
    Reset();
    return &object_;
  }
  // Asks `object` for `iid`; on failure nothing is held.
  HRESULT Query(IUnknown* object, const IID& iid) noexcept {
    return object->QueryInterface(iid, reinterpret_cast<void**>(Receive()));
  }

 private:
  T* object_ = nullptr;
};

}  // namespace kelvo
