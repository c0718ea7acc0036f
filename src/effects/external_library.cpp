#include "effects/external_library.h"

#include <utility>

namespace kelvo {
namespace {

constexpr uint32_t kStrongArm = 2577;
constexpr uint32_t kEqualizerOrdinal = 1;
constexpr uint32_t kBassOrdinal = 2;

}  // namespace

bool SupportsExternalLibrary(const ProcessorIdentity& identity) noexcept {
  return identity.type == kStrongArm && identity.level == 4 && identity.revision >= 3 &&
         identity.revision <= 6;
}

ExternalLibrary::ExternalLibrary(EffectsPlatform& platform) noexcept : platform_(platform) {
  if (!SupportsExternalLibrary(platform_.Identify())) return;
  library_ = platform_.OpenLibrary(L"Utility.dll");
  if (!library_) return;
  equalizer_ =
      reinterpret_cast<ExternalEqualizer>(platform_.FindEntry(library_, kEqualizerOrdinal));
  bass_ = reinterpret_cast<ExternalBass>(platform_.FindEntry(library_, kBassOrdinal));
}

void ExternalLibrary::Unload() noexcept {
  equalizer_ = nullptr;
  bass_ = nullptr;
  if (void* library = std::exchange(library_, nullptr)) platform_.CloseLibrary(library);
}

}  // namespace kelvo
