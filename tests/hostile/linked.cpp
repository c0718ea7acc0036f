#include "bookmarks/bookmarks_feature.h"
#include "eq/presets_feature.h"
#include "input/vorbis/decoder_heap.h"
#include "input/vorbis/ogg_vorbis_plugin.h"
#include "input/wma/asf_header.h"
#include "skins/skin_feature.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/hostile/asker.h"

namespace kelvo::hostile {
namespace {

class NoQuestions final : public PresetPrompts {
  bool AskName(WindowHandle, wchar_t (&)[kTextCapacity]) noexcept override { return false; }
  bool ConfirmOverwrite(WindowHandle) noexcept override { return false; }
};

bool AskAsf(const wchar_t* path, AsfAnswer* answer) {
  OpenFile<FileReader> file = SystemFiles().OpenRead(path, Share::kRead);
  AsfInfo info;
  if (!file || !ReadAsfInfo(*file, path, &info)) return false;
  memcpy(answer->display_title, info.display_title, sizeof(info.display_title));
  memcpy(answer->title, info.title, sizeof(info.title));
  memcpy(answer->author, info.author, sizeof(info.author));
  memcpy(answer->album, info.album, sizeof(info.album));
  answer->info = info.format;
  answer->length_ms = info.length_ms;
  answer->sdk_version = info.sdk_version;
  return true;
}

}  // namespace

Features LoadFeatures() {
  static const std::string folder = "hostile_files";
  static NoQuestions questions;
  static test::FixedFolder installation(folder);
  static BookmarksFeature bookmarks(SystemFiles(), installation, nullptr);
  static PresetsFeature presets(SystemFiles(), questions);
  static SkinReaderFeature skins(SystemFiles());
  DecoderHeap::AttachModule();
  static OggVorbisPlugin ogg(SystemFiles());
  return {&ogg, &bookmarks, &presets, &skins, &AskAsf, nullptr, nullptr, folder};
}

int ReplayCatalog(Catalog*, const std::string&, int*) {
  return 0;
}

}  // namespace kelvo::hostile
