#include "entry/feature_objects.h"

#include "input/vorbis/ogg_vorbis_plugin.h"
#include "kelvo/features.h"

namespace kelvo {
namespace {

// Built from top to bottom, destroyed from bottom to top. No other file of the library has an
// object with a constructor that runs at load.
OggVorbisPlugin g_ogg_vorbis;

}  // namespace

void* FeatureObject(int32_t id) noexcept {
  switch (id) {
    case kFeatureOggVorbis:
      return static_cast<OggVorbisInput*>(&g_ogg_vorbis);
    default:
      return nullptr;
  }
}

}  // namespace kelvo
