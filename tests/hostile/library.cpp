#include <windows.h>

#include "kelvo/features.h"
#include "kelvo/wma_input.h"
#include "tests/hostile/asker.h"
#include "tests/support/installation_folder.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {
namespace {

WmaInput* g_wma;

bool AskAsf(const wchar_t* path, AsfAnswer* a) {
  return g_wma->GetFileInfo(path, a->display_title, a->album, &a->info, &a->length_ms,
                            &a->sdk_version, a->author, a->title) != 0;
}

}  // namespace

Features LoadFeatures() {
  static test::InstallationFolder installation;
  const HMODULE library = LoadLibraryW(L"Kelvo.dll");  // until the program ends
  const auto get = reinterpret_cast<GetFeatureFunction>(
      reinterpret_cast<void*>(library ? GetProcAddress(library, "GetFeature") : nullptr));
  Features features;
  if (!get) return features;
  g_wma = static_cast<WmaInput*>(get(kFeatureWma));
  features.ogg = static_cast<OggVorbisInput*>(get(kFeatureOggVorbis));
  features.bookmarks = static_cast<Bookmarks*>(get(kFeatureBookmarks));
  features.presets = static_cast<EqualizerPresets*>(get(kFeatureEqualizerPresets));
  features.skins = static_cast<SkinReader*>(get(kFeatureSkinReader));
  features.ask_asf = g_wma ? &AskAsf : nullptr;
  features.catalog = static_cast<Catalog*>(get(kFeatureCatalog));
  features.get = get;
  features.folder = test::Utf8(installation.path().c_str());
  return features;
}

}  // namespace kelvo::hostile
