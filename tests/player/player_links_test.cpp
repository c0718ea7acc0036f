// What ties the player to the library's other features, and to its own files.
#include <kelvo/bookmarks.h>

#include <algorithm>

#include "base/windows/unique_handle.h"
#include "host/player/bookmark_link.h"
#include "host/player/catalog_link.h"
#include "host/player/preset_bank.h"
#include "host/player/settings.h"
#include "tests/player/rig.h"
#include "tests/support/installation_folder.h"
#include "tests/support/language_value.h"

namespace velmora {
namespace {

using kelvo::test::InstallationFolder;
using test::Media;
using test::Rig;
using test::UseSink;

TEST(PlayerLinks, BookmarksPlayAndEnqueue) {
  UseSink(L"silence", false);
  const InstallationFolder folder;
  Rig rig;
  BookmarkLink link(test::TheLibrary(), rig.player);
  EXPECT_FALSE(link.AddCurrent()) << "nothing plays";
  rig.player.Add({Media(L"sample.ogg"), Media(L"sample.wma")});
  ASSERT_TRUE(rig.player.PlayTrack(0, 3000));
  EXPECT_TRUE(link.AddCurrent());
  const std::string kept = folder.Read(L"bookmarks.dat");
  EXPECT_NE(kept.find(std::string("E\0i\0g\0h\0t\0", 10)), std::string::npos);
  SetFileAttributesW(folder.Path(L"bookmarks.dat").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(link.AddCurrent()) << "not into the file";
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
  SetFileAttributesW(folder.Path(L"bookmarks.dat").c_str(), FILE_ATTRIBUTE_NORMAL);

  ASSERT_TRUE(rig.player.PlayTrack(1));
  link.OnPlayBookmark(1, 0);
  EXPECT_EQ(rig.player.tracks().size(), 3u);
  EXPECT_EQ(rig.player.status().current, 1u) << "enqueued: what plays goes on";
  link.OnPlayBookmark(0, 0);
  EXPECT_EQ(rig.player.tracks().size(), 3u) << "the list stays";
  EXPECT_EQ(rig.player.status().current, 0u);
  EXPECT_GE(rig.player.status().position_ms, 2900u);
  rig.player.Remove({0, 2});
  link.OnPlayBookmark(0, 0);
  EXPECT_EQ(rig.player.tracks().size(), 2u) << "what it lacks is added";
  EXPECT_EQ(rig.player.status().current, 1u);
  auto* const bookmarks = test::TheLibrary().Get<kelvo::Bookmarks>(kelvo::kFeatureBookmarks);
  for (const int32_t wild : {-5, 4294971, 0x7FFFFFFF}) {  // 4294971000 is 3704 in 32 bits
    bookmarks->UpdateBookmark(0, rig.player.open_path().c_str(), wild, L"");
    link.OnPlayBookmark(0, 0);
    EXPECT_LT(rig.player.status().position_ms, 3000u) << wild;
  }
  for (const LPARAM nobody : {-1, 1, 99}) link.OnPlayBookmark(0, nobody);
  EXPECT_EQ(rig.player.tracks().size(), 2u);
  EXPECT_EQ(rig.player.status().state, PlayState::kPlaying);
}

TEST(PlayerLinks, ResumesWhereItWasLeft) {
  UseSink(L"silence", false);
  const InstallationFolder folder;
  for (const bool listed : {true, false}) {
    {
      Rig rig;
      BookmarkLink link(test::TheLibrary(), rig.player);
      link.SavePlace();
      EXPECT_FALSE(link.ResumePlace()) << "nothing had been playing";
      rig.player.Add({Media(L"tone_8000_mono.ogg"), Media(L"sample.wma")});
      ASSERT_TRUE(rig.player.PlayTrack(1, 4500));
      rig.player.TogglePause();
      link.SavePlace();
    }
    Rig rig;
    BookmarkLink link(test::TheLibrary(), rig.player);
    if (listed) rig.player.Add({Media(L"sample.ogg"), Media(L"sample.wma")});
    ASSERT_TRUE(link.ResumePlace());
    EXPECT_EQ(rig.player.status().current, listed ? 1u : 0u);
    EXPECT_EQ(rig.player.tracks().size(), listed ? 2u : 1u);
    EXPECT_GE(rig.player.status().position_ms, 4000u);
    EXPECT_FALSE(link.ResumePlace()) << "taken";
    link.SavePlace();
    rig.player.Stop();
    link.SavePlace();
    EXPECT_FALSE(link.ResumePlace()) << "nothing plays any more";
  }
}

// Sends what a test tells it to, as the catalog does while its sheet is open.
class ScriptedCatalog final : public kelvo::Catalog {
 public:
  std::vector<const wchar_t*> script;
  kelvo::CatalogCallback function = nullptr;
  kelvo::HostWord cookie = 0;

  void SetHostCallback(kelvo::CatalogCallback f, kelvo::HostWord c) noexcept override {
    function = f;
    cookie = c;
  }
  int32_t ShowCatalog(kelvo::ModuleHandle, kelvo::WindowHandle) noexcept override {
    for (const wchar_t* path : script) function(path, cookie);
    return 1;
  }
  void Destroy(uint32_t) noexcept override {}
};

TEST(PlayerLinks, CatalogReplacesOrAppends) {
  UseSink(L"silence", false);
  Rig rig;
  ScriptedCatalog catalog;
  wchar_t before[MAX_PATH], after[MAX_PATH];
  GetCurrentDirectoryW(MAX_PATH, before);
  const auto full = [&](const wchar_t* name) {
    return std::wstring(before) + L"\\..\\..\\media\\" + name;
  };
  const std::wstring ogg = full(L"sample.ogg"), wma = full(L"sample.wma");
  const wchar_t* const end = kelvo::CatalogEndOfList();
  rig.player.Add({Media(L"tone_8000_mono.ogg")});
  ASSERT_TRUE(rig.player.PlayTrack(0));
  {
    CatalogLink nowhere(&catalog, rig.player, L"no such folder");
    catalog.script = {kelvo::kCatalogClearList, end};
    EXPECT_FALSE(nowhere.available());
    nowhere.Show(nullptr, nullptr);
    EXPECT_EQ(rig.player.tracks().size(), 1u);
  }
  EXPECT_EQ(catalog.function, nullptr) << "nobody is called that is gone";

  {
    CatalogLink link(&catalog, rig.player, L"C:\\");
    ASSERT_TRUE(link.available());
    catalog.script = {ogg.c_str(), end};
    link.Show(nullptr, nullptr);
    EXPECT_EQ(rig.player.tracks().size(), 2u);
    EXPECT_EQ(rig.player.status().current, 0u) << "enqueued: what plays goes on";

    EXPECT_EQ(rig.player.TakeNotice(), L"1 added");

    catalog.script = {kelvo::kCatalogClearList, wma.c_str(), L"\\a.mp3", ogg.c_str(), end};
    link.Show(nullptr, nullptr);
    EXPECT_EQ(rig.player.TakeNotice(), L"2 added, 1 left out: neither .ogg nor .wma");
    link.OnPlay();
    EXPECT_EQ(rig.player.tracks().size(), 2u);
    EXPECT_EQ(rig.player.status().title, L"The Ring Buffers - Sixteen Strings");

    catalog.script = {kelvo::kCatalogClearList, end};
    link.Show(nullptr, nullptr);
    link.OnPlay();
    EXPECT_EQ(rig.player.status().state, PlayState::kStopped) << "nothing was checked";
  }
  GetCurrentDirectoryW(MAX_PATH, after);
  EXPECT_STREQ(after, before);
}

TEST(PlayerLinks, SessionRestoresThePlayer) {
  const InstallationFolder folder;
  const std::wstring path = folder.Path(L"velmora.session");
  EXPECT_EQ(LoadSession(path).volume, 100) << "a first start";
  Session session;
  session.skin = "skins\\blue.zip";
  session.tracks = {"Z:\\music\\\xE2\x82\xAC \xC3\xA4.ogg", "Z:\\b.wma"};
  session.current = 1;
  session.volume = 40;
  session.balance = -30;
  session.shuffle = true;
  session.equalizer.bands[3] = 2;
  for (const char* when : {"first", "over the old one"}) {
    EXPECT_TRUE(SaveSession(path, session)) << when;
  }
  EXPECT_FALSE(SaveSession(folder.Path(L"none\\velmora.session"), session));
  Rig rig;
  rig.player.Add({L"Z:\\gone.ogg"});
  RestorePlayer(LoadSession(path), &rig.player);
  EXPECT_EQ(rig.player.tracks()[0].path, L"Z:\\music\\\u20AC \u00E4.ogg");
  EXPECT_EQ(rig.player.status().state, PlayState::kStopped);
  Session kept;
  kept.skin = session.skin;
  KeepPlayer(rig.player, &kept);
  EXPECT_EQ(PrintSession(kept), PrintSession(session));
}

TEST(PlayerLinks, PresetsAreLoadedAndDeleted) {
  const InstallationFolder folder;
  PresetBank bank(test::TheLibrary(), folder.path());
  EXPECT_TRUE(bank.List().empty());
  CreateDirectoryW(folder.Path(L"presets").c_str(), nullptr);
  const std::string name_field(20, '\0');
  folder.Write(L"presets\\Loud.eqf", name_field + std::string("\5\0\1\2\3\4\5\6\7\10\33", 11));
  folder.Write(L"presets\\wild.eqf", name_field + std::string(11, '\34'));
  folder.Write(L"presets\\a.b.eqf", name_field + std::string(11, '\1'));
  const std::vector<std::wstring> names = bank.List();
  ASSERT_EQ(names.size(), 3u);
  const auto index_of = [&](const wchar_t* name) {
    return static_cast<size_t>(std::find(names.begin(), names.end(), name) - names.begin());
  };
  EqualizerState state;
  state.on = true;
  state.bass = 2;
  EXPECT_FALSE(bank.Load(index_of(L"wild"), &state)) << "28 is no slider position";
  EXPECT_FALSE(bank.Load(3, &state));
  EXPECT_EQ(state.preamp, EqualizerState().preamp);
  ASSERT_TRUE(bank.Load(index_of(L"Loud"), &state));
  EXPECT_EQ(state.preamp, 5);
  EXPECT_EQ(state.bands[9], 27);
  EXPECT_TRUE(state.on);
  EXPECT_EQ(state.bass, 2);

  EXPECT_EQ(bank.WhyNotSaved(), L"");
  EXPECT_EQ(bank.List().size(), 3u) << "nothing is left behind";
  EXPECT_NE(PresetBank(test::TheLibrary(), folder.Path(L"none")).WhyNotSaved(), L"");
  EXPECT_FALSE(bank.Delete(index_of(L"a"))) << "its file is not a.eqf";
  EXPECT_FALSE(bank.Delete(3));
  EXPECT_TRUE(bank.Delete(index_of(L"Loud")));
  EXPECT_EQ(bank.List().size(), 2u);
}

// The menu offers those that the system has a name for: none of the ones made for tests.
TEST(PlayerLinks, LanguagesBesideTheProgram) {
  kelvo::test::LanguageValue value;
  EXPECT_EQ(ChosenLanguage(), kEnglish);
  kelvo::UniqueFile others[3];
  const wchar_t* const names[] = {L"kv_mui.12.dll", L"kv_mui.GGGG.dll", L"kv_mui.04070.dll"};
  for (int i = 0; i < 3; ++i) {
    others[i].Reset(CreateFileW(names[i], GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  }
  ASSERT_TRUE(GetFileAttributesW(L"kv_mui.0503.dll") != INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(FindLanguages(),
            (std::vector<LANGID>{kEnglish, 0x0407, 0x040C, 0x0411, 0x0415, 0x0419, 0x0C0A}));

  const auto* const version = test::TheLibrary().Get<const wchar_t>(kelvo::kFeatureVersionText);
  const std::wstring english = version;
  for (const LANGID language : FindLanguages()) EXPECT_TRUE(HasLettersOf(language)) << language;
  EXPECT_FALSE(HasLettersOf(0x0439)) << "nothing is known of Hindi's letters";
  ASSERT_TRUE(ChooseLanguage(test::TheLibrary(), 0x0407));
  EXPECT_EQ(ChosenLanguage(), 0x0407);
  EXPECT_NE(test::TheLibrary().Get<const wchar_t>(kelvo::kFeatureVersionText), english);
  ASSERT_TRUE(ChooseLanguage(test::TheLibrary(), kEnglish));
  EXPECT_EQ(test::TheLibrary().Get<const wchar_t>(kelvo::kFeatureVersionText), english);
}

}  // namespace
}  // namespace velmora
