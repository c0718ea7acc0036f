#include "catalog/windows/catalog_feature.h"

#include "base/windows/registry.h"
#include "catalog/windows/catalog_sheet.h"
#include "kelvo/settings.h"

namespace kelvo {
namespace {

// A key that cannot be opened leaves the order as it is.
void ReadOrder(GroupingOrder* order) noexcept {
  const RegistryKey settings = RegistryKey::OpenOrCreate(kSettingsKey);
  if (!settings) return;
  uint32_t number = 1;
  static_cast<void>(settings.ReadNumber(kGroupingValue, &number));
  *order = ToGroupingOrder(number);
}

void WriteOrder(GroupingOrder order) noexcept {
  const RegistryKey settings = RegistryKey::OpenOrCreate(kSettingsKey);
  settings.WriteNumber(kGroupingValue, static_cast<uint32_t>(order));
}

}  // namespace

void CatalogFeature::SetHostCallback(CatalogCallback function, HostWord cookie) noexcept {
  state_.host = {function, cookie};
}

int32_t CatalogFeature::ShowCatalog(ModuleHandle host_module, WindowHandle parent) noexcept {
  if (state_.shown) return 0;
  state_.host_module = static_cast<HMODULE>(host_module);
  state_.parent = static_cast<HWND>(parent);
  ReadOrder(&state_.order);
  CatalogSheet sheet(state_);
  state_.shown = true;
  const bool ran = sheet.Run();
  state_.shown = false;
  if (!ran) return 0;
  WriteOrder(state_.order);
  return 1;
}

void CatalogFeature::Destroy(uint32_t flags) noexcept {
  state_.media.Clear();
  state_.playlists.Clear();
  state_.current.Clear();
  if ((flags & 1) != 0) HeapDelete(this);
}

}  // namespace kelvo
