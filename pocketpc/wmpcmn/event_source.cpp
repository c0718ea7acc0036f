#include "pocketpc/wmpcmn/event_source.h"

#include <olectl.h>

#include "base/windows/player_control.h"

namespace kelvo {

void EventSource::ForgetContainer() noexcept {
  LockGuard guard(lock_);
  container_ = nullptr;
}

void EventSource::Fire(DISPID event) noexcept {
  for (ComPtr<IDispatch>& place : sinks_) {
    ComPtr<IDispatch> sink;
    {
      LockGuard guard(lock_);
      sink = ComPtr<IDispatch>::Share(place.get());
    }
    if (!sink) continue;
    DISPPARAMS none = {};
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr,
                 nullptr);
  }
}

HRESULT EventSource::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  *iid = kPlayerEventInterface;
  return S_OK;
}

HRESULT EventSource::GetConnectionPointContainer(IConnectionPointContainer** out) {
  if (!out) return E_POINTER;
  LockGuard guard(lock_);
  *out = container_;
  if (!container_) return E_UNEXPECTED;
  container_->AddRef();
  return S_OK;
}

HRESULT EventSource::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  ComPtr<IDispatch> dispatch;
  if (FAILED(dispatch.Query(sink, kPlayerEventInterface)) &&
      FAILED(dispatch.Query(sink, IID_IDispatch))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  LockGuard guard(lock_);
  for (DWORD i = 0; i < kMaxSinks; ++i) {
    if (sinks_[i]) continue;
    sinks_[i] = static_cast<ComPtr<IDispatch>&&>(dispatch);
    *cookie = i + 1;
    return S_OK;
  }
  return CONNECT_E_ADVISELIMIT;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
  ComPtr<IDispatch> sink;  // released after the lock
  LockGuard guard(lock_);
  if (cookie == 0 || cookie > kMaxSinks || !sinks_[cookie - 1]) return CONNECT_E_NOCONNECTION;
  sink = static_cast<ComPtr<IDispatch>&&>(sinks_[cookie - 1]);
  return S_OK;
}

HRESULT EventSource::EnumConnections(IEnumConnections** out) {
  if (out) *out = nullptr;
  return E_NOTIMPL;
}

}  // namespace kelvo
