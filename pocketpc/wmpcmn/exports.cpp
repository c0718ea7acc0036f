// What the container calls, and the export that only its address is wanted of.
#include <windows.h>

#include <objbase.h>

#include "base/windows/com_ptr.h"
#include "base/windows/player_control.h"
#include "pocketpc/support/module.h"
#include "pocketpc/wmpcmn/player_control.h"

namespace kelvo {
namespace {

class ClassFactory final : public ComObject<ClassFactory, IClassFactory> {
 public:
  void* FindInterface(REFIID iid) noexcept {
    return iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this)
                                                           : nullptr;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  const ComPtr<PlayerControl> control(HeapNew<PlayerControl>());
  if (!control) return E_OUTOFMEMORY;
  const HRESULT result = control->Initialise();
  return SUCCEEDED(result) ? control->QueryInterface(iid, out) : result;
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock) {
    InterlockedIncrement(&live_com_objects);
  } else {
    InterlockedDecrement(&live_com_objects);
  }
  return S_OK;
}

}  // namespace
}  // namespace kelvo

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (id != kelvo::kPlayerClass) return CLASS_E_CLASSNOTAVAILABLE;
  const kelvo::ComPtr<kelvo::ClassFactory> factory(kelvo::HeapNew<kelvo::ClassFactory>());
  return factory ? factory->QueryInterface(iid, out) : E_OUTOFMEMORY;
}

STDAPI DllCanUnloadNow() {
  return kelvo::live_com_objects == 0 ? S_OK : S_FALSE;
}

// An export of the device's component that nobody calls: its address lies before the slots of the
// imports, and whoever looks for a slot steps from here word by word. So it must lie at a word
// boundary; 16 suits words of any size.
extern "C" __attribute__((aligned(16))) int AllocationError(unsigned int bytes) {
  return static_cast<int>(bytes);
}
