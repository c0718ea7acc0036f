#include "host/library.h"

namespace velmora {

Library::Library() : module_(LoadLibraryW(L"Kelvo.dll")) {
  if (!module_) return;
  FARPROC entry = GetProcAddress(module_, "GetFeature");
  get_feature_ = reinterpret_cast<kelvo::GetFeatureFunction>(reinterpret_cast<void*>(entry));
}

Library::~Library() {
  if (module_) FreeLibrary(module_);
}

}  // namespace velmora
