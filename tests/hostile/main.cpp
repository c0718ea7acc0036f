// Writes each hostile file, asks about it, and compares the answer with the one that belongs to it.
//   hostile_replay SONG.ogg [DEVICE]
// On Windows the library beside it is asked, also the device's in its emulator; about tags and
// playlists through its windows too, which look at the device: an empty folder, such as "W:/".
// Bitmaps and texts of skins are the host's. Natively the program for translators is asked about
// language libraries.
#include <stdio.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "tests/hostile/asker.h"
#include "tests/hostile/corpus.h"

namespace kelvo::hostile {
namespace {

std::string Short(const std::string& text) {
  return text.size() > 200 ? text.substr(0, 200) + "..." : text;
}

int Replay(const std::string& song, const char* device) {
  const Features features = LoadFeatures();
  if (!features.ogg || !features.bookmarks || !features.presets || !features.skins ||
      !features.ask_asf) {
    fprintf(stderr, "hostile_replay: the library or one of its features is missing\n");
    return 2;
  }
  using Ask = std::function<std::string(const std::string& bytes)>;
  const struct {
    const char* file;
    Corpus corpus;
    Ask ask;
  } formats[] = {
      {"file.ogg", OggFiles(song), [&](auto& b) { return OggAnswer(features, "file.ogg", b); }},
      {"file.wma", AsfFiles(), [&](auto&) { return AsfAnswerText(features, "file.wma"); }},
      {"file.mp3", TaggedFiles(), [&](auto&) { return TagAnswer(features, "file.mp3"); }},
      {"file.m3u", M3uFiles(), [&](auto&) { return ListAnswer(features, "file.m3u"); }},
      {"file.pls", PlsFiles(), [&](auto&) { return ListAnswer(features, "file.pls"); }},
      {"file.asx", AsxFiles(), [&](auto&) { return ListAnswer(features, "file.asx"); }},
      {"bookmarks.dat", BookmarkFiles(), [&](auto&) { return BookmarksAnswer(features); }},
      {"presets/file.eqf", PresetFiles(), [&](auto&) { return PresetAnswer(features); }},
      {"file.zip", Archives(), [&](auto&) { return ArchiveAnswer(features, "file.zip"); }},
      {"main.bmp", Bitmaps(), [](auto& b) { return BitmapAnswer(b); }},
      {"viscolor.txt", SkinTexts(), [](auto& b) { return SkinTextAnswer(b); }},
      {"kv_mui.05FF.dll", LanguageFiles(features.get != nullptr),
       [&](auto& b) { return LanguageAnswer(features, b); }},
  };
  std::filesystem::create_directories(features.folder + "/presets");
  const auto write = [&](const std::string& name, const std::string& bytes) {
    std::ofstream(features.folder + "/" + name, std::ios::binary) << bytes;
  };
  write("a.mp3", "");
  int files = 0, wrong = 0;
  for (const auto& format : formats) {
    for (const HostileFile& file : format.corpus) {
      const bool is_pls = format.file == std::string("file.pls");
      const std::string bytes = is_pls ? WithFolder(file.bytes, features.folder) : file.bytes;
      write(format.file, bytes);
      ++files;
      const std::string got = format.ask(bytes);
      if (got == file.want) continue;
      ++wrong;
      printf("%s, %s: \"%s\" instead of \"%s\"\n", format.file, file.name.c_str(),
             Short(got).c_str(), Short(file.want).c_str());
    }
  }
  if (features.catalog && device) wrong += ReplayCatalog(features.catalog, device, &files);
  std::error_code error;
  std::filesystem::remove_all(features.folder, error);
  printf("hostile: %d files, %d wrong answers\n", files, wrong);
  return wrong ? 1 : 0;
}

}  // namespace
}  // namespace kelvo::hostile

int main(int argc, char** argv) {
  std::ifstream file(argc == 2 || argc == 3 ? argv[1] : "", std::ios::binary);
  const std::string song(std::istreambuf_iterator<char>(file), {});
  if (song.empty()) {
    fprintf(stderr, "usage: hostile_replay SONG.ogg [DEVICE]\n");
    return 2;
  }
  return kelvo::hostile::Replay(song, argc == 3 ? argv[2] : nullptr);
}
