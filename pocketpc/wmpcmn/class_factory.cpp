#include "pocketpc/wmpcmn/class_factory.h"

#include "base/windows/com_ptr.h"
#include "pocketpc/wmpcmn/player_control.h"

namespace kelvo {

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

}  // namespace kelvo
