// The library's one exported function and the features it hands out.
//
// Generated from tools/contract/features.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

// Windows that are open keep the language they were opened in.
enum FeatureId : int32_t {
  kFeatureCatalog = 1,           // Catalog* (catalog.h)
  kFeatureOggVorbis = 3,         // OggVorbisInput* (ogg_vorbis_input.h)
  kFeatureEqualizerPresets = 4,  // EqualizerPresets* (equalizer_presets.h)
  kFeatureSkinReader = 5,        // SkinReader* (skin_reader.h)
  kFeatureWma = 6,               // WmaInput* (wma_input.h); null without the player control
  kFeatureSwitchLanguage = 7,    // always null: re-reads "Language", switches
  kFeatureBookmarks = 8,         // Bookmarks* (bookmarks.h)
  kFeatureEffects = 9,           // EffectsProcessor* (effects_processor.h)
  kFeatureVersionText = 21,      // const wchar_t*, rewritten by the next call
};

// The export "GetFeature". Looks a feature up: an object that lives as long as the library is
// loaded (the same pointer each time; the host never frees it), a text, or null for what is not
// offered. Ids that return objects may be asked from any thread, 7 and 21 from the user-interface
// thread only.
using GetFeatureFunction = void*(KELVO_CDECL*)(int32_t id);

}  // namespace kelvo
