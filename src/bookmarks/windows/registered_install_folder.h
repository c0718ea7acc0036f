#pragma once

#include "bookmarks/install_folder.h"

namespace kelvo {

// The folder that the host's installer put into the registry.
class RegisteredInstallFolder final : public InstallFolder {
 public:
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override;
};

}  // namespace kelvo
