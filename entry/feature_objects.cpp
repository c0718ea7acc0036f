#include "entry/feature_objects.h"

#include "effects/effects_processor.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "input/wma/wma_plugin.h"
#include "kelvo/features.h"

namespace kelvo {
namespace {

// Built from top to bottom, destroyed from bottom to top. No other file of the library has an
// object with a constructor that runs at load.
OggVorbisPlugin g_ogg_vorbis;
WmaPlugin g_wma;
FixedPointEffects g_effects(SystemEffectsPlatform());

}  // namespace

bool StartFeatures(void* module) noexcept {
  return g_wma.Start(static_cast<HINSTANCE>(module), g_effects);
}

void ShutDownFeatures(bool process_ends) noexcept {
  g_wma.ShutDown(process_ends);
}

void* FeatureObject(int32_t id) noexcept {
  switch (id) {
    case kFeatureOggVorbis:
      return static_cast<OggVorbisInput*>(&g_ogg_vorbis);
    case kFeatureWma:
      return g_wma.available() ? static_cast<WmaInput*>(&g_wma) : nullptr;
    case kFeatureEffects:
      return static_cast<EffectsProcessor*>(&g_effects);
    default:
      return nullptr;
  }
}

}  // namespace kelvo
