// From the catalog to the music, and on from there after a new start; and the same program as a
// process of its own.
#include <filesystem>
#include <sstream>

#include "res/resource_ids.h"
#include "tests/host/windows/player_driver.h"
#include "tests/host/windows/recordings.h"
#include "tests/support/media_files.h"
#include "tests/support/ogg_files.h"

namespace velmora::test {
namespace {

constexpr char kFirstSong[] = "1. The Ring Buffers - Eight Bars";
constexpr wchar_t kSession[] = L"velmora.session";

// The song's sound without effects from a place on, as long as the recording goes.
void ExpectSongFrom(const std::vector<int16_t>& recorded, uint32_t seconds) {
  const std::vector<char> pcm = kelvo::test::DecodeDirectly(
      kelvo::test::ReadMedia("sample.ogg"), seconds > 0 ? int64_t{44100} * seconds : -1);
  ASSERT_GT(recorded.size(), 44100u);
  ASSERT_LE(recorded.size(), pcm.size() / 2);
  EXPECT_EQ(memcmp(recorded.data(), pcm.data(), recorded.size() * 2), 0) << "from " << seconds;
}

class PlayerSession : public testing::Test {
 protected:
  // The time and the title of the newest bookmark; "" before it is written.
  std::pair<uint32_t, std::string> FirstBookmark() const {
    std::string bytes = folder_.Read(L"bookmarks.dat");
    bytes.erase(std::remove(bytes.begin(), bytes.end(), '\0'), bytes.end());
    std::istringstream lines(bytes);
    std::string path, seconds, title;
    std::getline(lines, path) && std::getline(lines, seconds) && std::getline(lines, title);
    return {static_cast<uint32_t>(atoi(seconds.c_str())), title.substr(0, title.find('\r'))};
  }
  Session Kept() const { return ParseSession(folder_.Read(kSession)); }

  const kelvo::test::InstallationFolder folder_;
  const PlayerOptions options_{{}, L"V:\\", folder_.Path(kSession)};
};

TEST_F(PlayerSession, FromTheCatalogToTheMusicAndBackToTheSamePlace) {
  uint32_t bookmark_s = 0;
  {
    const Recordings recordings(folder_, L"first", false);
    PlayerDriver player(options_);
    const kelvo::test::User& user = player.user();
    player.Start(kCommandCatalog);
    const HWND sheet = user.WaitForWindow(L"Playlist Organizer");
    user.GoTo(1);
    const HWND tree = user.Control(IDC_TREE);
    ASSERT_TRUE(user.Wait("media", [&] { return TreeView_GetCount(tree) > 0; }));
    constexpr int kByAlbum = 40029;
    user.Do(kByAlbum);
    user.TapTree(tree, "Fixed Point", TVHT_ONITEMSTATEICON);
    user.StartTapOnButton(ID_ADD_CHECKED);
    user.Settle();
    user.GoTo(2);
    ASSERT_TRUE(user.Wait("the album in the current playlist",
                          [&] { return ListView_GetItemCount(user.Control(IDC_LIST)) == 2; }));
    user.StartTapOnButton(ID_PLAY);
    ASSERT_TRUE(player.WaitForSong(kFirstSong));
    user.Done();
    ASSERT_TRUE(user.Wait("the end of the catalog", [&] { return !IsWindow(sheet); }));

    ASSERT_TRUE(recordings.WaitForMore(1));
    player.Command(kCommandBookmarkAdd);
    bookmark_s = FirstBookmark().first;
    player.Drag(player.equalizer(), {85, 70}, {85, 38});
    player.Click(player.playlist(), {268, 7});  // its close button
    player.Click(player.main(), {224, 96});     // repeat
    ASSERT_TRUE(recordings.WaitForSamples(1, 2 * 44100 * (bookmark_s + 2)));
    player.Quit();
    ExpectSongFrom(recordings.Read(1), 0);
  }
  const Session session = Kept();
  EXPECT_EQ(session.tracks.size(), 2u);
  EXPECT_TRUE(session.repeat);
  EXPECT_TRUE(session.equalizer_window.open);
  EXPECT_FALSE(session.playlist_window.open);
  const auto [last_s, title] = FirstBookmark();
  EXPECT_EQ(title, "(Last Played) The Ring Buffers - Eight Bars");
  EXPECT_GT(last_s, bookmark_s);
  {
    const Recordings recordings(folder_, L"second", false);
    PlayerDriver player(options_);
    ASSERT_TRUE(player.WaitForSong(kFirstSong));
    EXPECT_TRUE(IsWindowVisible(player.equalizer()));
    EXPECT_FALSE(IsWindowVisible(player.playlist()));
    ASSERT_TRUE(recordings.WaitForMore(1));
    player.Start(kCommandBookmarks);
    const HWND dialog = player.user().WaitForWindow(L"Velmora Bookmarks");
    const HWND list = GetDlgItem(dialog, IDC_BOOKMARK_LIST);
    EXPECT_EQ(ListView_GetItemCount(list), 1) << "what was played last has been taken out";
    player.Key(list, VK_HOME);
    ASSERT_TRUE(player.user().Wait("the selected bookmark", [&] {
      return ListView_GetNextItem(list, -1, LVNI_SELECTED) == 0;
    }));
    SendMessageW(dialog, WM_COMMAND, IDM_BOOKMARK_PLAY, 0);
    ASSERT_TRUE(recordings.WaitForMore(2));
    player.user().Answer(dialog, IDOK);
    player.Quit();
    ExpectSongFrom(recordings.Read(1), last_s);
    ExpectSongFrom(recordings.Read(2), bookmark_s);
  }
  const Session again = Kept();
  EXPECT_EQ(again.tracks.size(), 2u) << "the bookmark is played in the list";
  EXPECT_TRUE(again.repeat);
  EXPECT_EQ(again.equalizer.bands[0], 0);
}

// The program as a process of its own, from a folder where it alone is installed.
class OwnProgram {
 public:
  OwnProgram(const kelvo::test::InstallationFolder& folder, const std::wstring& words) {
    std::wstring command = L"\"" + folder.Path(L"velmora.exe") + L"\" player " + words;
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE said =
        CreateFileW(folder.Path(L"said").c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    &inherited, OPEN_ALWAYS, 0, nullptr);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = said;
    EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &startup, &started_));
    CloseHandle(said);
    CloseHandle(started_.hThread);
  }
  ~OwnProgram() {
    TerminateProcess(started_.hProcess, 99);
    CloseHandle(started_.hProcess);
  }
  DWORD Ended() const {
    DWORD code = ~0u;
    EXPECT_EQ(WaitForSingleObject(started_.hProcess, 60000), WAIT_OBJECT_0);
    GetExitCodeProcess(started_.hProcess, &code);
    return code;
  }
  // Its main window, once that has this title.
  HWND WaitForTitle(const char* title) const {
    HWND window = nullptr;
    EXPECT_TRUE(WaitFor([&] {
      DWORD process = 0;
      do {
        window = FindWindowExW(nullptr, window, L"VelmoraMain", nullptr);
        GetWindowThreadProcessId(window, &process);
      } while (window && process != started_.dwProcessId);
      return window && kelvo::test::User::Text(window).rfind(title, 0) == 0;
    })) << title;
    return window;
  }

 private:
  PROCESS_INFORMATION started_ = {};
};

TEST_F(PlayerSession, TheProgramRunsOnceAndLeavesInGoodOrder) {
  for (const auto& file : std::filesystem::directory_iterator(".")) {
    const std::wstring name = file.path().filename().wstring();
    if (name == L"velmora.exe" || file.path().extension() == L".dll") {
      CopyFileW(name.c_str(), folder_.Path(name).c_str(), FALSE);
    }
  }
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", L"silence");
  const std::wstring tone = Media(L"tone_44100_mono.ogg"), song = Media(L"sample.ogg");
  const OwnProgram first(folder_, L"--device V:\\ " + tone + L" " + song);
  const HWND window = first.WaitForTitle("2. The Ring");
  EXPECT_EQ(OwnProgram(folder_, song).Ended(), 0u);
  first.WaitForTitle(kFirstSong);
  EXPECT_EQ(folder_.Read(L"said").find("another folder"), std::string::npos);
  EXPECT_EQ(OwnProgram(folder_, L"--device C:\\ " + tone + L" " + song + L" " + tone).Ended(), 0u);
  EXPECT_NE(folder_.Read(L"said").find("another folder"), std::string::npos);
  first.WaitForTitle("2. The Ring");
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(first.Ended(), 0u);
  EXPECT_EQ(Kept().tracks.size(), 3u);
}

}  // namespace
}  // namespace velmora::test
