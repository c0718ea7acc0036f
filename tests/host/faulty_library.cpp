// Kelvo.dll with a fault, for the check to find: KELVO_FAULT in the environment says which.
#include <kelvo/kelvo.h>
#include <windows.h>

#include <string>
#include <utility>

namespace {

// An object's table with one operation changed, as long as this library is loaded.
template <class Object, class Table>
void Change(void* object, Table* copy, void (*change)(Table*)) {
  auto* const it = static_cast<Object*>(object);
  if (it->table == copy) return;
  *copy = *it->table;
  change(copy);
  it->table = copy;
}

int32_t KELVO_METHOD PlaysAlways(KELVO_SELF(KelvoOggVorbisInput)) {
  return 1;
}
uint32_t KELVO_METHOD IsPaused(KELVO_SELF(KelvoOggVorbisInput)) {
  return KELVO_PAUSED;
}
int32_t KELVO_METHOD HasEverything(KELVO_SELF(KelvoBookmarks), int32_t, wchar_t*, wchar_t*,
                                   int32_t*) {
  return 1;
}
int32_t KELVO_METHOD Crash(KELVO_SELF(KelvoEqualizerPresets), const wchar_t*) {
  return *static_cast<volatile int32_t*>(nullptr);
}

KelvoOggVorbisInputTable g_ogg;
KelvoBookmarksTable g_bookmarks;
KelvoEqualizerPresetsTable g_presets;
KelvoSkinReaderTable g_skins;

}  // namespace

extern "C" __declspec(dllexport) void* KELVO_CDECL GetFeature(int32_t id) {
  static const auto theirs = reinterpret_cast<KelvoGetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"Kelvo.dll"), "GetFeature")));
  char name[16] = "";
  GetEnvironmentVariableA("KELVO_FAULT", name, sizeof(name));
  const std::string fault = name;
  void* const feature = theirs(id);
  if (id == KELVO_FEATURE_OGG_VORBIS && fault == "play") {
    Change<KelvoOggVorbisInput>(
        feature, &g_ogg, +[](KelvoOggVorbisInputTable* table) { table->Play = &PlaysAlways; });
  } else if (id == KELVO_FEATURE_OGG_VORBIS && fault == "state") {
    Change<KelvoOggVorbisInput>(
        feature, &g_ogg, +[](KelvoOggVorbisInputTable* table) { table->GetState = &IsPaused; });
  } else if (id == KELVO_FEATURE_BOOKMARKS && fault == "index") {
    Change<KelvoBookmarks>(
        feature, &g_bookmarks,
        +[](KelvoBookmarksTable* table) { table->GetBookmark = &HasEverything; });
  } else if (id == KELVO_FEATURE_EQUALIZER_PRESETS && fault == "crash") {
    Change<KelvoEqualizerPresets>(
        feature, &g_presets,
        +[](KelvoEqualizerPresetsTable* table) { table->FindPreset = &Crash; });
  } else if (id == KELVO_FEATURE_SKIN_READER && fault == "slots") {
    Change<KelvoSkinReader>(
        feature, &g_skins, +[](KelvoSkinReaderTable* table) {
          std::swap(table->ReadFromFolder, table->ReadFromArchive);
        });
  } else if (id == KELVO_FEATURE_EFFECTS && fault == "feature") {
    return nullptr;
  }
  return feature;
}
