/* The library's one exported function and the features it hands out.
 *
 * Generated from tools/contract/features.txt. */
#ifndef KELVO_C_FEATURES_H
#define KELVO_C_FEATURES_H

#include "types.h"

/* Windows that are open keep the language they were opened in. */
#define KELVO_FEATURE_CATALOG 1           /* KelvoCatalog* (catalog.h) */
#define KELVO_FEATURE_OGG_VORBIS 3        /* KelvoOggVorbisInput* (ogg_vorbis_input.h) */
#define KELVO_FEATURE_EQUALIZER_PRESETS 4 /* KelvoEqualizerPresets* (equalizer_presets.h) */
#define KELVO_FEATURE_SKIN_READER 5       /* KelvoSkinReader* (skin_reader.h) */
#define KELVO_FEATURE_WMA 6 /* KelvoWmaInput* (wma_input.h); null without the player control */
#define KELVO_FEATURE_SWITCH_LANGUAGE 7 /* always null: re-reads "Language", switches */
#define KELVO_FEATURE_BOOKMARKS 8       /* KelvoBookmarks* (bookmarks.h) */
#define KELVO_FEATURE_EFFECTS 9         /* KelvoEffectsProcessor* (effects_processor.h) */
#define KELVO_FEATURE_VERSION_TEXT 21   /* const wchar_t*, rewritten by the next call */

/* The export "GetFeature". Looks a feature up: an object that lives as long as the library is
 * loaded (the same pointer each time; the host never frees it), a text, or null for what is
 * not offered. Ids that return objects may be asked from any thread, 7 and 21 from the
 * user-interface thread only. */
typedef void*(KELVO_CDECL* KelvoGetFeatureFunction)(int32_t id);

#endif
