// What keeps the DLL of a stand-in loaded: its threads and its COM objects.
#pragma once

#include <windows.h>

#include <objbase.h>

#include "base/memory/heap.h"

namespace kelvo {

// Objects and server locks alive in this DLL; it may be unloaded at 0.
inline LONG live_com_objects = 0;

// Self is made by HeapNew with one reference, destroyed by the last Release, and has
//   void* FindInterface(REFIID iid)  the interface pointer, not counted; null when it has none.
template <class Self, class... Interfaces>
class ComObject : public Interfaces... {
 public:
  ComObject() noexcept { InterlockedIncrement(&live_com_objects); }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (!out) return E_POINTER;
    *out = static_cast<Self*>(this)->FindInterface(iid);
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&references_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) HeapDelete(static_cast<Self*>(this));
    return left;
  }

 protected:
  ~ComObject() { InterlockedDecrement(&live_com_objects); }

 private:
  LONG references_ = 1;
};

// Runs body(context) on a thread that keeps this DLL loaded until the thread has ended. So nobody
// needs to wait for the end itself, which would hang a caller inside an attach or detach handler;
// the body tells in its own way when it is through. False when no thread could be made.
[[nodiscard]] bool StartModuleThread(void (*body)(void*), void* context) noexcept;

}  // namespace kelvo
