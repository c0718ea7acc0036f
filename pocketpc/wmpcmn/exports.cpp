// What COM and regsvr32 call.
#include <windows.h>

#include <olectl.h>

#include "base/windows/com_ptr.h"
#include "input/wma/player_control.h"
#include "pocketpc/wmpcmn/class_factory.h"
#include "pocketpc/wmpcmn/registration.h"

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

STDAPI DllRegisterServer() {
  return kelvo::RegisterPlayer() ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
  return kelvo::UnregisterPlayer() ? S_OK : SELFREG_E_CLASS;
}
