#pragma once

#include "base/text/wide.h"

namespace kelvo {

// Where the host player is installed, the folder that holds the bookmarks.
class InstallFolder {
 public:
  // Writes the folder, without backslash at its end; empty when the host registered none. Asked at
  // each load and save, since the user can move the installation while the library is loaded.
  virtual void Read(wchar_t (&folder)[kTextCapacity]) noexcept = 0;

 protected:
  ~InstallFolder() = default;
};

}  // namespace kelvo
