#pragma once

namespace kelvo {

// Reads the user's "Language" from the registry (a missing or unusable value leaves the language as
// it was, English at first) and loads its library. User-interface thread, or while loading.
void SwitchToConfiguredLanguage() noexcept;

}  // namespace kelvo
