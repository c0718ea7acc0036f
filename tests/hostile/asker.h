// Who is asked about a file: the library as a host has it, or, where none can be loaded, its
// features linked in.
#pragma once

#include <string>

#include "kelvo/bookmarks.h"
#include "kelvo/catalog.h"
#include "kelvo/equalizer_presets.h"
#include "kelvo/features.h"
#include "kelvo/media_info.h"
#include "kelvo/ogg_vorbis_input.h"
#include "kelvo/skin_reader.h"

namespace kelvo::hostile {

struct AsfAnswer {
  wchar_t display_title[kMaxText], title[kMaxText], author[kMaxText], album[kMaxText];
  MediaInfo info;
  uint32_t length_ms, sdk_version;
};

struct Features {
  OggVorbisInput* ogg = nullptr;
  Bookmarks* bookmarks = nullptr;
  EqualizerPresets* presets = nullptr;
  SkinReader* skins = nullptr;
  bool (*ask_asf)(const wchar_t* path, AsfAnswer* answer) = nullptr;
  Catalog* catalog = nullptr;  // null where there are no windows
  GetFeatureFunction get = nullptr;
  std::string folder;  // for the files; that of the bookmarks
};
Features LoadFeatures();

// What is said of the file that lies in the folder under this name.
std::string OggAnswer(const Features& features, const std::string& name, const std::string& bytes);
std::string AsfAnswerText(const Features& features, const std::string& name);
std::string TagAnswer(const Features& features, const std::string& name);
std::string ListAnswer(const Features& features, const std::string& name);
std::string BookmarksAnswer(const Features& features);
std::string PresetAnswer(const Features& features);
std::string ArchiveAnswer(const Features& features, const std::string& name);
std::string BitmapAnswer(const std::string& bytes);
std::string SkinTextAnswer(const std::string& bytes);
// Which parts of the language are used: "text dialog bar".
std::string LanguageAnswer(const Features& features, const std::string& bytes);

// A playlist with the folder that its names must have, in place of "@".
std::string WithFolder(std::string list, const std::string& folder);
// All tags and playlists at once, through the windows of the loaded library, on the device whose
// root this is, an empty folder: how many are wrong.
int ReplayCatalog(Catalog* catalog, const std::string& root, int* files);

}  // namespace kelvo::hostile
