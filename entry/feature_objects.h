// The feature objects: static, built when the library is loaded and destroyed when it is unloaded,
// in an order that is written down in one place.
#pragma once

#include <stdint.h>

namespace kelvo {

// The object of a feature id, or null for an id that has none.
void* FeatureObject(int32_t id) noexcept;

}  // namespace kelvo
