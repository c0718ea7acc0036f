// Receives the player control's events.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "base/sync/lock.h"
#include "kelvo/types.h"

namespace kelvo {

// References are counted but own nothing: the object is static, and outlives its connection because
// that is undone first. Events come on the control's own thread.
class EventSink : public IDispatch {
 public:
  // The window that is told when playback is over; null for none. Also read by other threads.
  WindowHandle owner_window() const noexcept {
    return __atomic_load_n(&owner_window_, __ATOMIC_RELAXED);
  }
  void set_owner_window(WindowHandle window) noexcept {
    __atomic_store_n(&owner_window_, window, __ATOMIC_RELAXED);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) noexcept override;
  ULONG STDMETHODCALLTYPE AddRef() noexcept override;
  ULONG STDMETHODCALLTYPE Release() noexcept override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale,
                                        ITypeInfo** info) noexcept override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) noexcept override;
  // `event` is a PlayerEvent. The parameters' values are not looked at.
  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID iid, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) noexcept override;

 protected:
  EventSink() noexcept = default;
  ~EventSink() = default;

 private:
  WindowHandle owner_window_ = nullptr;
  Lock lock_;  // guards the count
  ULONG references_ = 1;
};

}  // namespace kelvo
