#include "effects/external_library.h"

#include <utility>

#include "effects/effects_state.h"

namespace kelvo {
namespace {

constexpr uint32_t kStrongArm = 2577;
constexpr uint32_t kEqualizerOrdinal = 1;
constexpr uint32_t kBassOrdinal = 2;

// The StrongARM revisions that the library is built for.
bool IsSupported(const ProcessorIdentity& identity) noexcept {
  return identity.type == kStrongArm && identity.level == 4 && identity.revision >= 3 &&
         identity.revision <= 6;
}

}  // namespace

void LoadExternalLibrary(EffectsPlatform& platform, EffectsState& state) noexcept {
  if (!IsSupported(platform.Identify())) return;
  state.processor_matches = 1;
  state.library = platform.OpenLibrary(L"Utility.dll");
  if (!state.library) return;
  state.external_equalizer =
      reinterpret_cast<ExternalEqualizer>(platform.FindEntry(state.library, kEqualizerOrdinal));
  state.external_bass =
      reinterpret_cast<ExternalBass>(platform.FindEntry(state.library, kBassOrdinal));
}

void UnloadExternalLibrary(EffectsPlatform& platform, EffectsState& state) noexcept {
  state.external_equalizer = nullptr;
  state.external_bass = nullptr;
  if (void* library = std::exchange(state.library, nullptr)) platform.CloseLibrary(library);
}

}  // namespace kelvo
