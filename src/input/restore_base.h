#pragma once

#include "kelvo/input_plugin.h"

namespace kelvo {

// The last step of destroying a plug-in: from here on its slots do what a bare InputPlugin's do,
// so a late call by the host is harmless.
void RestoreBaseOperations(InputPlugin* plugin) noexcept;

}  // namespace kelvo
