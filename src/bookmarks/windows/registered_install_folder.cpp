#include "bookmarks/windows/registered_install_folder.h"

#include "base/windows/registry.h"
#include "kelvo/settings.h"

namespace kelvo {

void RegisteredInstallFolder::Read(wchar_t (&folder)[kTextCapacity]) noexcept {
  const RegistryKey key = RegistryKey::Open(kInstallationKey);
  if (!key.ReadText(kInstallFolderValue, folder, kTextCapacity)) folder[0] = 0;
}

}  // namespace kelvo
