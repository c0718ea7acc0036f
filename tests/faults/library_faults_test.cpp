// Every call that Kelvo.dll makes of the system fails once, in every operation of every feature:
// the operation returns, what it uses is given back, and the next time it does all that it did
// before. KELVO_FAULTS_EACH says that each n-th of them is tried; 1 is all.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <windows.h>

#include <functional>
#include <map>
#include <optional>

#include "kelvo/bookmarks.h"
#include "kelvo/catalog.h"
#include "kelvo/equalizer_presets.h"
#include "kelvo/ogg_vorbis_input.h"
#include "kelvo/skin_reader.h"
#include "kelvo/wma_input.h"
#include "res/resource_ids.h"
#include "tests/faults/import_faults.h"
#include "tests/faults/windows_user.h"
#include "tests/support/end_messages.h"
#include "tests/support/faults.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/installation_folder.h"
#include "tests/support/language_value.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/owned_objects.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::Step;
using test::Utf8;
using test::Wide;
using test::WindowsUser;

constexpr uint8_t kSetting[] = "0123456789";

class LibraryFaults : public ::testing::Test {
 protected:
  LibraryFaults() {
    folder_.Write(L"one.mp3", "x" + test::Id3v1Tag("One", "Sine", "Waves", 8));
    folder_.Write(L"two.ogg", Bytes("tone_8000_mono.ogg"));
    folder_.Write(L"three.wma", Bytes("sample.wma").substr(0, 8000));
    folder_.Write(L"list.m3u", "#EXTM3U\r\n\\one.mp3\r\n\\two.ogg\r\n");
    folder_.Write(L"pledit.txt", "[Text]\r\n");
    folder_.Write(L"skin.zip",
                  test::ZipBuilder().Add({"Main.bmp", std::string(9000, 'x')}).Bytes());
    CreateDirectoryW(folder_.Path(L"presets").c_str(), nullptr);
    folder_.Write(L"presets\\Rock.eqf", std::string(31, 'r'));
    parent_ =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);
  }
  ~LibraryFaults() override {
    DestroyWindow(parent_);
    FreeLibrary(host_);
  }
  static std::string Bytes(const char* name) {
    const std::vector<char> bytes = test::ReadMedia(name);
    return {bytes.begin(), bytes.end()};
  }
  template <class Feature>
  Feature& Get(int32_t id) {
    return *static_cast<Feature*>(library_.Get(id));
  }

  // `run` says what it has come to, the same each time when nothing fails.
  void Sweep(const std::function<std::string()>& run) {
    const long step = test::FaultStep(97);
    run();
    const std::string want = run();
    // Menus, icons and the like take long to count: only where much is tried.
    const DWORD gdi = step == 1 ? test::GdiObjects() : 0;
    const DWORD user = step == 1 ? test::UserObjects() : 0;
    const DWORD handles = test::Handles();
    const long blocks = faults_.blocks();
    const long tried = test::Sweep([&](long n) {
      faults_.Arm(n * step);
      run();
      const char* const failed = faults_.Disarm();
      EXPECT_EQ(run(), want) << "after " << (failed ? failed : "nothing");
      EXPECT_EQ(faults_.blocks(), blocks) << "after " << (failed ? failed : "nothing");
      return failed && !HasFailure();
    });
    EXPECT_LE(test::Handles(), handles + static_cast<DWORD>(tried) / 2 + 10);
    if (step == 1) {
      EXPECT_LE(test::GdiObjects(), gdi + static_cast<DWORD>(tried) / 2 + 10);
      EXPECT_LE(test::UserObjects(), user + static_cast<DWORD>(tried) / 2 + 10);
    }
  }

  const test::LanguageValue language_;
  const test::InstallationFolder folder_;
  const test::LoadedLibrary library_;
  test::ImportFaults faults_{GetModuleHandleW(L"Kelvo.dll"), folder_.path()};
  const HMODULE host_ = LoadLibraryW(L"velmora.exe");
  HWND parent_;
};

TEST_F(LibraryFaults, Bookmarks) {
  Bookmarks& bookmarks = Get<Bookmarks>(kFeatureBookmarks);
  Sweep([&] {
    DeleteFileW(folder_.Path(L"bookmarks.dat").c_str());
    bookmarks.LoadBookmarks();
    bookmarks.AddBookmark(L"\\one.mp3", 7, L"one");
    bookmarks.UpdateBookmark(0, L"\\two.ogg and a longer path than before", 8, L"and text");
    bookmarks.SetLastPlayed(L"\\one.mp3", 9, L"last");
    wchar_t path[kMaxText] = L"", text[kMaxText] = L"";
    int32_t position = 0;
    bookmarks.GetBookmark(0, path, text, &position);
    std::string all = Utf8(path) + Utf8(text) + std::to_string(position);
    all += std::to_string(bookmarks.TakeLastPlayed(path, &position));
    all += std::to_string(bookmarks.LoadBookmarks());
    return all + folder_.Read(L"bookmarks.dat");
  });
}

TEST_F(LibraryFaults, BookmarksWindow) {
  Bookmarks& bookmarks = Get<Bookmarks>(kFeatureBookmarks);
  bookmarks.AddBookmark(L"\\one.mp3", 7, L"one");
  Sweep([&] {
    const WindowsUser user({{-1, ID_MOVE_DOWN}, {-1, ID_PLAY}});
    return std::to_string(bookmarks.ShowBookmarks(parent_));
  });
}

TEST_F(LibraryFaults, Presets) {
  EqualizerPresets& presets = Get<EqualizerPresets>(kFeatureEqualizerPresets);
  Sweep([&] {
    DeleteFileW(folder_.Path(L"presets\\New Preset.eqf").c_str());
    presets.ClearPresets();
    uint8_t setting[12] = {};
    wchar_t name[kMaxText] = L"";
    std::string all = std::to_string(presets.ListPresets(folder_.path().c_str()));
    all += std::to_string(presets.FindPreset(L"Rock"));
    all += std::to_string(presets.ReadPreset(0, setting, folder_.path().c_str()));
    presets.GetPresetName(0, name);
    const WindowsUser user({{-1, IDOK}});
    all += std::to_string(presets.SavePreset(kSetting, folder_.path().c_str(), parent_));
    return all + Utf8(name) + reinterpret_cast<char*>(setting);
  });
}

TEST_F(LibraryFaults, Skins) {
  SkinReader& skins = Get<SkinReader>(kFeatureSkinReader);
  const std::wstring archive = folder_.Path(L"skin.zip");
  Sweep([&] {
    uint32_t sizes[2] = {};
    faults_.Free(skins.ReadFromFolder(folder_.path().c_str(), 11, &sizes[0]));
    faults_.Free(skins.ReadFromArchive(archive.c_str(), 5, &sizes[1]));
    return std::to_string(sizes[0]) + " " + std::to_string(sizes[1]);
  });
}

TEST_F(LibraryFaults, Language) {
  Sweep([&] {
    std::string all;
    for (const DWORD language : {0x0503u, 1033u}) {
      const_cast<test::LanguageValue&>(language_).Set(language);
      library_.Get(kFeatureSwitchLanguage);
      all += library_.Version();
    }
    return all;
  });
}

TEST_F(LibraryFaults, OggVorbis) {
  OggVorbisInput& plugin = Get<OggVorbisInput>(kFeatureOggVorbis);
  const std::wstring path = folder_.Path(L"two.ogg");
  test::MemoryReader reader(test::ReadMedia("tone_8000_mono.ogg"));
  Sweep([&] {
    test::RecordingOutput output;
    plugin.SetReader(&reader);
    plugin.SetOutput(&output);
    wchar_t title[kMaxText] = L"";
    uint32_t length_ms = 0;
    MediaInfo info = {};
    std::string all = std::to_string(plugin.GetFileInfo(path.c_str(), title, nullptr, &info,
                                                        &length_ms, nullptr, nullptr, nullptr));
    all += std::to_string(plugin.Open(L"x.ogg", 0));
    all += std::to_string(plugin.SeekMs(1000)) + std::to_string(plugin.Play());
    while (plugin.GetState() != kStopped) Sleep(1);
    plugin.Stop();
    all += std::to_string(output.pcm().size()) + std::to_string(plugin.Close(0, 0));
    return all + std::to_string(length_ms) + Utf8(title);
  });
}

TEST_F(LibraryFaults, WindowsMedia) {
  WmaInput& plugin = Get<WmaInput>(kFeatureWma);
  const std::wstring path = folder_.Path(L"three.wma");
  Sweep([&] {
    wchar_t title[kMaxText] = L"";
    MediaInfo info = {};
    uint32_t length_ms = 0;
    std::string all = std::to_string(plugin.GetFileInfo(path.c_str(), title, nullptr, &info,
                                                        &length_ms, nullptr, nullptr, nullptr));
    all += Utf8(title) + std::to_string(plugin.Open(path.c_str(), 0));
    plugin.GetDisplayTitle(title);
    plugin.Stop();
    return all + Utf8(title);
  });
}

TEST_F(LibraryFaults, Catalog) {
  Catalog& catalog = Get<Catalog>(kFeatureCatalog);
  static std::string sent;
  catalog.SetHostCallback(
      [](const wchar_t* path, HostWord) {
        sent += path && path != CatalogEndOfList() ? Utf8(path) : ";";
      },
      1);
  const std::vector<Step> steps = {
      {0, ID_RESCAN},        {0, ID_CHECK_ALL},      {0, ID_ADD_CHECKED}, {1, ID_FIRST_ORDER},
      {1, ID_LAST_ORDER},    {1, ID_CHECK_ALL},      {1, ID_ADD_CHECKED}, {1, ID_EDIT_TAG},
      {2, ID_SELECT_ALL},    {2, ID_MOVE_UP},        {2, ID_PLAY},        {2, ID_ENQUEUE},
      {2, ID_SAVE_PLAYLIST}, {2, ID_REMOVE_SELECTED}};
  Sweep([&] {
    sent.clear();
    const WindowsUser user(steps);
    return std::to_string(catalog.ShowCatalog(host_, parent_)) + sent;
  });
}

}  // namespace
}  // namespace kelvo
