#include "pocketpc/atlce300/hosted_control.h"

#include <string.h>

#include "pocketpc/support/module.h"

namespace kelvo {
namespace {

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

// Stays loaded once it is: its objects may outlive their window.
HMODULE Component() noexcept {
  wchar_t name[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(L"KELVO_PLAYER", name, MAX_PATH);
  const wchar_t* const wanted = length > 0 && length < MAX_PATH ? name : L"WMPCmn.dll";
  const HMODULE loaded = GetModuleHandleW(wanted);
  return loaded ? loaded : LoadLibraryW(wanted);
}

// Without the registry: there the class belongs to the desktop's own player, if it has one.
HRESULT CreateControl(REFCLSID id, IUnknown** control) noexcept {
  const HMODULE component = Component();
  const FARPROC found = component ? GetProcAddress(component, "DllGetClassObject") : nullptr;
  if (!found) return REGDB_E_CLASSNOTREG;
  HRESULT(WINAPI * get_class)(REFCLSID, REFIID, void**);
  static_assert(sizeof(get_class) == sizeof(found));
  memcpy(&get_class, &found, sizeof(found));
  ComPtr<IClassFactory> factory;
  const HRESULT result =
      get_class(id, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive()));
  if (FAILED(result)) return result;
  return factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(control));
}

}  // namespace

HRESULT HostedControl::Create(const wchar_t* class_id, HWND window) noexcept {
  CLSID id;
  HRESULT result = CLSIDFromString(class_id, &id);
  if (SUCCEEDED(result)) result = CreateControl(id, control_.Receive());
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
