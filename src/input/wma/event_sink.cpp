#include "input/wma/event_sink.h"

#include "base/messages/post_message.h"
#include "input/wma/player_control.h"
#include "kelvo/messages.h"

namespace kelvo {
namespace {

// Written out, because the library of identities is not there on the device.
constexpr IID kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr IID kDispatch = {0x20400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

bool Is(REFIID iid, const IID& other) noexcept {
  return memcmp(&iid, &other, sizeof(IID)) == 0;
}

}  // namespace

HRESULT EventSink::QueryInterface(REFIID iid, void** out) noexcept {
  if (!out) return E_POINTER;
  const bool known = Is(iid, kUnknown) || Is(iid, kDispatch) || Is(iid, kPlayerEventInterface);
  *out = known ? static_cast<IDispatch*>(this) : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}

ULONG EventSink::AddRef() noexcept {
  LockGuard guard(lock_);
  return ++references_;
}

ULONG EventSink::Release() noexcept {
  LockGuard guard(lock_);
  return --references_;
}

HRESULT EventSink::GetTypeInfoCount(UINT* count) noexcept {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT EventSink::GetTypeInfo(UINT, LCID, ITypeInfo** info) noexcept {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT EventSink::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept {
  return E_NOTIMPL;
}

HRESULT EventSink::Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                          EXCEPINFO*, UINT*) noexcept {
  if (!parameters) return E_POINTER;
  if (parameters->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  switch (event) {
    case kPlayerEndEvent:
    case kPlayerErrorEvent:
    case kPlayerOverEvent7:
    case kPlayerOverEvent21:
      PostToWindow(owner_window(), kMessageEndOfPlayback, 0, 0);
      return S_OK;
    case kPlayerChangeEvent:
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace kelvo
