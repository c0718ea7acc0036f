// The library's door: loading, unloading, and its one export. And the feature objects: built when
// the attach handler runs, destroyed after the detach handler, in an order that is written down
// here alone.
#include <windows.h>

#include "bookmarks/bookmarks_feature.h"
#include "catalog/media/add_entry.h"
#include "catalog/windows/catalog_feature.h"
#include "effects/effects_processor.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "eq/presets_feature.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "input/wma/wma_input_plugin.h"
#include "kelvo/features.h"
#include "res/resource_ids.h"
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

bool FeatureInformation::OggInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  return QueryPlugin(g_ogg_vorbis, path, texts);
}

bool FeatureInformation::WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept {
  return QueryPlugin(g_wma, path, texts);
}

bool FeatureInformation::WmaAvailable() noexcept {
  return g_wma.available();
}

// Set when what must be running before a host asks could be started; else it is not offered.
bool g_features_started = false;

// "Velmora Feature Pack", a carriage return, "version 2.51 installed.", in the user's language. The
// same buffer each time, rewritten by each call.
wchar_t* VersionText() noexcept {
  constexpr size_t kCapacity = 256;
  static wchar_t text[kCapacity];
  FormatLocalized(text, kCapacity, IDS_VERSION, {KELVO_VERSION_MAJOR, KELVO_VERSION_MINOR});
  return text;
}

// The object of a feature id, or null for an id that has none or that this device cannot offer.
// From any thread.
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

}  // namespace
}  // namespace kelvo

// `process_ends` is null when the library is unloaded and the process lives on.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_ATTACH) {
    kelvo::SetOwnModule(instance);
    kelvo::SwitchToConfiguredLanguage();
    kelvo::g_features_started = kelvo::g_wma.Start(instance, kelvo::g_effects);
  } else if (reason == DLL_PROCESS_DETACH) {
    // What the host lent may be gone when its process ends: nothing of it is called any more.
    if (process_ends) kelvo::g_ogg_vorbis.ForgetFile();
    if (kelvo::g_features_started) kelvo::g_wma.ShutDown(process_ends != nullptr);
  }
  return TRUE;
}

extern "C" void* __cdecl GetFeature(int32_t id) {
  switch (id) {
    case kelvo::kFeatureSwitchLanguage:
      kelvo::SwitchToConfiguredLanguage();
      return nullptr;
    case kelvo::kFeatureVersionText:
      return kelvo::VersionText();
    default:
      return kelvo::FeatureObject(id);
  }
}
