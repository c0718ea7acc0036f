// The feature objects: static, built when the library is loaded and destroyed when it is unloaded,
// in an order that is written down in one place.
#pragma once

#include <stdint.h>

namespace kelvo {

// From the attach handler: starts what must be running before a host asks. What cannot be started
// is not offered.
void StartFeatures(void* module) noexcept;
// From the detach handler. When the process ends, its other threads are gone already, and what the
// host lent may be gone as well: nothing of it is called any more.
void ShutDownFeatures(bool process_ends) noexcept;

// The object of a feature id, or null for an id that has none or that this device cannot offer.
// From any thread.
void* FeatureObject(int32_t id) noexcept;

}  // namespace kelvo
