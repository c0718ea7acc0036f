#pragma once

#include "base/windows/unique_handle.h"

namespace kelvo {

// The font of lists and trees: Tahoma, 12 pixels high, of normal weight.
UniqueFont MakeListFont() noexcept;

}  // namespace kelvo
