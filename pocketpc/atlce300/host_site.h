#pragma once

#include <ole2.h>

#include "pocketpc/support/com_object.h"

namespace kelvo {

// What a hosted control sees of its container: there is nothing to save, lay out or enumerate.
class HostSite final : public ComObject<HostSite, IOleClientSite> {
 public:
  void* FindInterface(REFIID iid) noexcept {
    return iid == IID_IUnknown || iid == IID_IOleClientSite ? static_cast<IOleClientSite*>(this)
                                                            : nullptr;
  }

  HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
    if (moniker) *moniker = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
    if (container) *container = nullptr;
    return E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
};

}  // namespace kelvo
