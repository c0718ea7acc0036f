/* The whole contract between a host and Kelvo.dll in plain C, for any compiler. In C++ the headers
 * beside this one are more convenient; what both say comes from one table (tools/contract).
 *
 * An object begins with a pointer to its table. Of the library's objects call the operations; for
 * the host's own, KelvoAudioOutput and KelvoMediaReader, fill tables in, each operation in its
 * slot.
 *
 *   KelvoGetFeatureFunction get_feature =
 *       (KelvoGetFeatureFunction)(void (*)(void))GetProcAddress(module, "GetFeature");
 *   KelvoOggVorbisInput *ogg = get_feature(KELVO_FEATURE_OGG_VORBIS);
 *   ogg->reader = &my_reader;
 *   if (ogg->table->Open(KELVO_ON(ogg), path, 0)) ...
 *
 * host/minimal/main.c is a whole host. */
#ifndef KELVO_KELVO_H
#define KELVO_KELVO_H

#include "c/audio_output.h"
#include "c/bookmarks.h"
#include "c/catalog.h"
#include "c/effects_processor.h"
#include "c/equalizer_presets.h"
#include "c/features.h"
#include "c/input_plugin.h"
#include "c/media_info.h"
#include "c/media_reader.h"
#include "c/messages.h"
#include "c/ogg_vorbis_input.h"
#include "c/settings.h"
#include "c/skin_reader.h"
#include "c/types.h"
#include "c/wma_input.h"
#include "host_resources.h"

#endif
