#pragma once

#include <stdint.h>

namespace kelvo {

constexpr int32_t kSkinFileCount = 17;

// The name of a skin file, by its number from 1 to kSkinFileCount; null for other numbers.
const char* SkinFileName(int32_t number) noexcept;

}  // namespace kelvo
