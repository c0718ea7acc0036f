// Kelvo.dll with a fault, for the check to find: KELVO_FAULT in the environment says which.
#include <kelvo/kelvo.h>
#include <windows.h>

#include <string>

namespace {

// One operation of an object is another, as long as this library is loaded.
template <class Object, class Table, class Function>
void Change(void* object, Function Table::*operation, Function function) {
  static Table table = *static_cast<Object*>(object)->table;
  table.*operation = function;
  static_cast<Object*>(object)->table = &table;
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

}  // namespace

extern "C" __declspec(dllexport) void* KELVO_CDECL GetFeature(int32_t id) {
  static const auto theirs = reinterpret_cast<KelvoGetFeatureFunction>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"Kelvo.dll"), "GetFeature")));
  char name[16] = "";
  GetEnvironmentVariableA("KELVO_FAULT", name, sizeof(name));
  const std::string fault = name;
  void* const feature = theirs(id);
  if (id == KELVO_FEATURE_OGG_VORBIS && fault == "play") {
    Change<KelvoOggVorbisInput>(feature, &KelvoOggVorbisInputTable::Play, &PlaysAlways);
  } else if (id == KELVO_FEATURE_OGG_VORBIS && fault == "state") {
    Change<KelvoOggVorbisInput>(feature, &KelvoOggVorbisInputTable::GetState, &IsPaused);
  } else if (id == KELVO_FEATURE_BOOKMARKS && fault == "index") {
    Change<KelvoBookmarks>(feature, &KelvoBookmarksTable::GetBookmark, &HasEverything);
  } else if (id == KELVO_FEATURE_EQUALIZER_PRESETS && fault == "crash") {
    Change<KelvoEqualizerPresets>(feature, &KelvoEqualizerPresetsTable::FindPreset, &Crash);
  } else if (id == KELVO_FEATURE_SKIN_READER && fault == "slots") {
    Change<KelvoSkinReader>(feature, &KelvoSkinReaderTable::ReadFromFolder,
                            static_cast<KelvoSkinReader*>(feature)->table->ReadFromArchive);
  } else if (id == KELVO_FEATURE_EFFECTS && fault == "feature") {
    return nullptr;
  }
  return feature;
}
