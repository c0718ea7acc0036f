#include "entry/feature_objects.h"

#include "bookmarks/bookmarks_feature.h"
#include "catalog/media/add_entry.h"
#include "catalog/windows/catalog_feature.h"
#include "effects/effects_processor.h"
#include "eq/presets_feature.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "input/wma/wma_input_plugin.h"
#include "kelvo/features.h"
#include "skins/skin_feature.h"

namespace kelvo {
namespace {

// The library's own input plug-ins as the catalog asks them: objects that are built after it.
class FeatureInformation final : public MediaInformation {
 public:
  bool OggInformation(const wchar_t* path, MediaTexts* texts) noexcept override;
  bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept override;
  bool WmaAvailable() noexcept override;
};

// What the objects need of the shell; without state.
BookmarksShell g_bookmarks_shell;
RegisteredInstallFolder g_install_folder;
PresetQuestions g_preset_questions;
FeatureInformation g_information;

// Built from top to bottom, destroyed from bottom to top. No other file of the library has an
// object with a constructor that runs at load.
SkinReaderFeature g_skins(SystemFiles());
CatalogFeature g_catalog(SystemFiles(), g_information);
PresetsFeature g_presets(SystemFiles(), g_preset_questions);
OggVorbisPlugin g_ogg_vorbis(SystemFiles());
BookmarksFeature g_bookmarks(SystemFiles(), g_install_folder, &g_bookmarks_shell);
WmaInputPlugin g_wma(SystemFiles());
FixedPointEffects g_effects(SystemEffectsPlatform());
bool g_wma_started = false;

bool FeatureInformation::OggInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  return QueryPlugin(g_ogg_vorbis, path, texts);
}

bool FeatureInformation::WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  return QueryPlugin(g_wma, path, texts);
}

bool FeatureInformation::WmaAvailable() noexcept {
  return g_wma.available();
}

}  // namespace

void StartFeatures(void* module) noexcept {
  g_wma_started = g_wma.Start(static_cast<HINSTANCE>(module), g_effects);
}

void ShutDownFeatures(bool process_ends) noexcept {
  if (process_ends) g_ogg_vorbis.ForgetFile();
  if (g_wma_started) g_wma.ShutDown(process_ends);
}

void* FeatureObject(int32_t id) noexcept {
  switch (id) {
    case kFeatureCatalog:
      return static_cast<Catalog*>(&g_catalog);
    case kFeatureOggVorbis:
      return static_cast<OggVorbisInput*>(&g_ogg_vorbis);
    case kFeatureWma:
      return g_wma.available() ? static_cast<WmaInput*>(&g_wma) : nullptr;
    case kFeatureEqualizerPresets:
      return static_cast<EqualizerPresets*>(&g_presets);
    case kFeatureSkinReader:
      return static_cast<SkinReader*>(&g_skins);
    case kFeatureBookmarks:
      return static_cast<Bookmarks*>(&g_bookmarks);
    case kFeatureEffects:
      return static_cast<EffectsProcessor*>(&g_effects);
    default:
      return nullptr;
  }
}

}  // namespace kelvo
