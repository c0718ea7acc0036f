#pragma once

#include <windows.h>

#include <objbase.h>

#include "pocketpc/support/com_object.h"

namespace kelvo {

class ClassFactory final : public ComObject<ClassFactory, IClassFactory> {
 public:
  void* FindInterface(REFIID iid) noexcept {
    return iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this)
                                                           : nullptr;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;
};

}  // namespace kelvo
