#include <stdlib.h>

#include "base/files/file_system.h"
#include "base/sync/thread.h"
#include "catalog/media/id3v1.h"
#include "host/player/skin/bmp.h"
#include "host/player/skin/skin_loader.h"
#include "playlist/playlist_files.h"
#include "tests/hostile/asker.h"
#include "tests/support/memory_reader.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {
namespace {

using test::Utf8;
using test::Wide;

class NoInformation final : public MediaInformation {
  bool OggInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaInformation(const wchar_t*, MediaTexts*) noexcept override { return false; }
  bool WmaAvailable() noexcept override { return false; }
};

Wide PathOf(const Features& features, const std::string& name) {
  return Wide(features.folder + "\\" + name);
}

std::string Hex(uint32_t number) {
  char text[9];
  snprintf(text, sizeof(text), "%x", number);
  return text;
}

}  // namespace

std::string WithFolder(std::string list, const std::string& folder) {
  for (size_t at; (at = list.find('@')) != std::string::npos;) {
    list.replace(at, 1, folder + "\\");
  }
  return list;
}

// "artist|title|track", and the frames that are heard of it.
std::string OggAnswer(const Features& features, const std::string& name, const std::string& bytes) {
  OggVorbisInput& ogg = *features.ogg;
  wchar_t artist[kMaxText] = {}, title[kMaxText] = {};
  MediaInfo info = {};
  uint32_t length_ms = 0;
  if (!ogg.GetFileInfo(PathOf(features, name), nullptr, nullptr, &info, &length_ms, nullptr, artist,
                       title)) {
    return "no";
  }
  const std::string answer = Utf8(artist) + "|" + Utf8(title) + "|" + std::to_string(info.track);
  test::MemoryReader reader(std::vector<char>(bytes.begin(), bytes.end()));
  test::RecordingOutput output;
  ogg.SetReader(&reader);
  ogg.SetOutput(&output);
  if (!ogg.Open(L"x", 0)) return answer + " shut";
  // A place in the middle, and then all of it.
  ogg.SeekMs(ogg.GetLengthMs() / 2);
  ogg.SeekMs(0);
  if (ogg.Play()) {
    while (ogg.GetState() != kStopped) SleepMs(1);
  }
  const size_t heard = output.pcm().size() / 2;
  ogg.Stop();
  ogg.Close(0, 0);
  return answer + " " + std::to_string(heard);
}

std::string AsfAnswerText(const Features& features, const std::string& name) {
  AsfAnswer a = {};
  if (!features.ask_asf(PathOf(features, name), &a)) return "no";
  const bool is_named = a.title[0] != 0 || a.author[0] != 0;
  if (is_named == (Utf8(a.display_title) == "file")) return "wrong display title";
  return Utf8(a.title) + "|" + Utf8(a.author) + "|" + Utf8(a.album) + "|" + Utf8(a.info.genre) +
         "|" + std::to_string(a.info.sample_rate) + "/" + std::to_string(a.info.bit_rate) + "/" +
         std::to_string(a.info.stereo) + "#" + std::to_string(a.info.track) + " " +
         std::to_string(a.length_ms) + " ms";
}

std::string TagAnswer(const Features& features, const std::string& name) {
  MediaEntry entry;
  if (!entry.path.Assign(PathOf(features, name)) || !ReadId3v1(SystemFiles(), &entry)) {
    return "none";
  }
  const TagBlock& tag = *entry.tag;
  return std::string(tag.title) + "|" + tag.artist + "|" + tag.album + "|" + tag.genre;
}

// How many files it names.
std::string ListAnswer(const Features& features, const std::string& name) {
  NoInformation information;
  ChainGuard guard;
  EntryList list;
  AddPath({SystemFiles(), information, &guard}, PathOf(features, name), &list);
  return std::to_string(list.size());
}

std::string BookmarksAnswer(const Features& features) {
  std::string answer;
  const int32_t count = features.bookmarks->LoadBookmarks();
  for (int32_t i = 0; i < count; ++i) {
    wchar_t path[kMaxText], description[kMaxText];
    int32_t position_s = 0;
    features.bookmarks->GetBookmark(i, path, description, &position_s);
    answer += Utf8(path) + "|" + std::to_string(position_s) + "|" + Utf8(description) + ";";
  }
  return answer;
}

std::string PresetAnswer(const Features& features) {
  const Wide folder(features.folder);
  uint8_t setting[kEqualizerSettingBytes];
  features.presets->ClearPresets();
  features.presets->ListPresets(folder);
  const int32_t index = features.presets->FindPreset(L"file");
  if (!features.presets->ReadPreset(index, setting, folder)) return "no";
  return {reinterpret_cast<const char*>(setting), sizeof(setting)};
}

std::string ArchiveAnswer(const Features& features, const std::string& name) {
  uint32_t size = 99;
  void* const block = features.skins->ReadFromArchive(PathOf(features, name), kSkinMain, &size);
  if (!block) return size == 0 ? "no" : "a size without a block";
  const std::string answer(static_cast<const char*>(block), size);
  free(block);
  return answer;
}

// Its size, and how many of its pixels are not black.
std::string BitmapAnswer(const std::string& bytes) {
  velmora::Bitmap bitmap;
  const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
  if (!velmora::DecodeBmp(exact.data(), exact.size(), &bitmap)) return "no";
  size_t lit = 0;
  for (const velmora::Colour colour : bitmap.pixels) lit += colour != 0;
  return std::to_string(bitmap.width) + "x" + std::to_string(bitmap.height) + " " +
         std::to_string(lit);
}

// The first and the last colour, the current entry's, and the font.
std::string SkinTextAnswer(const std::string& bytes) {
  velmora::Colour colours[velmora::kVisualColours] = {};
  velmora::PlaylistStyle style;
  velmora::ReadVisualColours(bytes, colours);
  velmora::ReadPlaylistStyle(bytes, &style);
  return Hex(colours[0]) + " " + Hex(colours[velmora::kVisualColours - 1]) + " " +
         Hex(style.current) + " " + style.font;
}

}  // namespace kelvo::hostile
