#pragma once

#include <windows.h>

#include <ocidl.h>

#include "base/sync/lock.h"
#include "base/windows/com_ptr.h"
#include "pocketpc/support/module.h"

namespace kelvo {

// The control's connection point: whoever advises a sink is called with the control's events. All
// callers and sinks are in the multithreaded apartment, so sinks are called directly.
class EventSource final : public ComObject<EventSource, IConnectionPoint> {
 public:
  explicit EventSource(IConnectionPointContainer* container) noexcept : container_(container) {}

  // The container is going away; it is borrowed until then.
  void ForgetContainer() noexcept;

  // Calls every sink on this thread, without a lock: sinks may advise, unadvise and call the
  // control.
  void Fire(DISPID event) noexcept;

  void* FindInterface(REFIID iid) noexcept {
    return iid == IID_IUnknown || iid == IID_IConnectionPoint ? static_cast<IConnectionPoint*>(this)
                                                              : nullptr;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** out) override;

 private:
  static constexpr DWORD kMaxSinks = 4;

  Lock lock_;  // guards the rest
  IConnectionPointContainer* container_;
  ComPtr<IDispatch> sinks_[kMaxSinks];  // a sink's cookie is its index + 1
};

}  // namespace kelvo
