// Feature 1. One object, static in the library; user-interface thread only.
#pragma once

#include "catalog/windows/catalog_state.h"
#include "kelvo/catalog.h"

namespace kelvo {

class CatalogFeature final : public Catalog {
 public:
  // Both are borrowed and must outlive the object.
  CatalogFeature(FileSystem& files, MediaInformation& information) noexcept
      : state_(files, information) {}

  void SetHostCallback(CatalogCallback function, HostWord cookie) noexcept override;
  int32_t ShowCatalog(ModuleHandle host_module, WindowHandle parent) noexcept override;
  void Destroy(uint32_t flags) noexcept override;

 private:
  CatalogState state_;
};

}  // namespace kelvo
