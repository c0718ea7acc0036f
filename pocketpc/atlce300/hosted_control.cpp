#include "pocketpc/atlce300/hosted_control.h"

#include "pocketpc/atlce300/host_site.h"

namespace kelvo {

HRESULT HostedControl::Create(const wchar_t* name, HWND window) noexcept {
  CLSID id;
  HRESULT result = name[0] == L'{' ? CLSIDFromString(name, &id) : CLSIDFromProgID(name, &id);
  if (FAILED(result)) return result;
  result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                            reinterpret_cast<void**>(control_.Receive()));
  if (FAILED(result)) return result;

  ComPtr<IOleObject> object;
  if (FAILED(object.Query(control_.get(), IID_IOleObject))) return S_OK;
  const ComPtr<HostSite> site(HeapNew<HostSite>());
  if (!site) return E_OUTOFMEMORY;
  result = object->SetClientSite(site.get());
  if (FAILED(result)) return result;
  RECT area;
  GetClientRect(window, &area);
  // A control that cannot be activated can still be called.
  object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site.get(), 0, window, &area);
  return S_OK;
}

void HostedControl::Close() noexcept {
  if (!control_) return;
  ComPtr<IOleObject> object;
  if (SUCCEEDED(object.Query(control_.get(), IID_IOleObject))) {
    object->Close(OLECLOSE_NOSAVE);
    object->SetClientSite(nullptr);
  }
  control_.Reset();
}

}  // namespace kelvo
