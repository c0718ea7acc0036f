// From the catalog to the music, and on from there after a new start.
#include <gtest/gtest.h>

#include "host/player/session.h"
#include "host/player/views/equalizer_view.h"
#include "res/resource_ids.h"
#include "tests/player/program/catalog_user.h"
#include "tests/player/program/expected_sound.h"
#include "tests/player/program/recordings.h"
#include "tests/support/media_files.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

using kelvo::test::ReadMedia;

constexpr char kFirstSong[] = "1. The Ring Buffers - Eight Bars";

struct Bookmark {
  std::string path;
  uint32_t position_s = 0;
  std::string title;
};

// While a file is read nobody may write it: it must be there before it is looked into.
bool IsWritten(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) && data.nFileSizeLow > 0;
}

// The first one of the file.
Bookmark FirstBookmark(const Installed& installed) {
  std::string bytes = installed.folder().Read(L"bookmarks.dat");
  std::string lines[3];
  size_t line = 0;
  for (size_t i = 0; i + 1 < bytes.size() && line < 3; i += 2) {
    if (bytes[i] == '\n') {
      ++line;
    } else if (bytes[i] != '\r') {
      lines[line] += bytes[i];
    }
  }
  return {lines[0], static_cast<uint32_t>(atoi(lines[1].c_str())), lines[2]};
}

Session KeptSession(const Installed& installed) {
  return ParseSession(installed.folder().Read(L"velmora.session"));
}

TEST(ProgramSession, FromTheCatalogToTheMusicAndBackToTheSamePlace) {
  const Installed installed;
  const Recordings recordings(installed, false);
  const std::wstring words = L"player --device V:\\";
  const Blocks blocks = DecodeOgg(ReadMedia("sample.ogg"));
  EqualizerState settings;
  uint32_t bookmark_s = 0;
  {
    PlayerProcess player;
    ASSERT_TRUE(player.Start(installed, words));
    CatalogUser catalog(player);
    ASSERT_TRUE(catalog.Open());
    constexpr WPARAM kByAlbum = 40029;
    player.Send(catalog.page(), WM_COMMAND, kByAlbum);
    ASSERT_TRUE(catalog.CheckTopNode(L"Fixed Point"));
    catalog.Press(ID_ADD_CHECKED);
    catalog.GoTo(CatalogUser::kCurrent);
    ASSERT_TRUE(player.WaitFor("the album in the current playlist", [&] {
      return player.Send(GetDlgItem(catalog.page(), IDC_LIST), LVM_GETITEMCOUNT) == 2;
    }));
    catalog.Press(ID_PLAY);
    ASSERT_TRUE(player.WaitForSong(kFirstSong));
    catalog.Close();

    ASSERT_TRUE(recordings.WaitForMore(player, 1));
    player.Click(player.equalizer(), 27, 24);  // on
    player.Click(player.equalizer(), 85, kGainSlider.start);
    settings.on = true;
    settings.bands[0] = 0;
    ASSERT_TRUE(recordings.WaitForMore(player, 1));
    player.Do(kCommandBookmarkAdd);
    ASSERT_TRUE(player.WaitFor("the bookmark", [&] {
      return IsWritten(installed.Path(L"bookmarks.dat")) && !FirstBookmark(installed).title.empty();
    }));
    bookmark_s = FirstBookmark(installed).position_s;
    player.Click(player.playlist(), 268, 7);  // its close button
    player.Click(player.main(), 224, 96);     // repeat
    ASSERT_TRUE(recordings.WaitForSamples(player, 1, 2 * 44100 * (bookmark_s + 2)));
    ASSERT_EQ(player.playlist(), nullptr);
    ASSERT_TRUE(player.Quit());
  }
  SoundCheck check({});
  check.Begin(recordings.Read(1));
  EqualizerState only_on;
  only_on.on = true;
  check.Expect(only_on);
  check.Expect(settings);
  check.PlayUntilQuit(blocks);
  recordings.Delete();

  const Session session = KeptSession(installed);
  EXPECT_EQ(session.tracks.size(), 2u);
  EXPECT_TRUE(session.repeat);
  EXPECT_TRUE(session.equalizer_window.open);
  EXPECT_FALSE(session.playlist_window.open);
  const Bookmark last = FirstBookmark(installed);
  EXPECT_EQ(last.title, "(Last Played) The Ring Buffers - Eight Bars");
  EXPECT_GT(last.position_s, bookmark_s);
  {
    PlayerProcess player;
    ASSERT_TRUE(player.Start(installed, words));
    ASSERT_TRUE(player.WaitForSong(kFirstSong));
    EXPECT_NE(player.equalizer(), nullptr);
    EXPECT_EQ(player.playlist(), nullptr);
    ASSERT_TRUE(recordings.WaitForMore(player, 1));

    player.Do(kCommandBookmarks);
    const HWND dialog = player.WaitForWindow(L"#32770", L"Velmora Bookmarks");
    ASSERT_TRUE(dialog);
    const HWND list = GetDlgItem(dialog, IDC_BOOKMARK_LIST);
    EXPECT_EQ(player.Send(list, LVM_GETITEMCOUNT), 1) << "what was played last has been taken out";
    player.Key(list, VK_HOME);
    ASSERT_TRUE(player.WaitFor("the selected bookmark", [&] {
      return player.Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED) == 0;
    }));
    player.Send(dialog, WM_COMMAND, IDM_BOOKMARK_PLAY);
    ASSERT_TRUE(recordings.WaitForMore(player, 2));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(player.WaitFor("the end of the bookmarks", [&] { return !IsWindow(dialog); }));
    ASSERT_TRUE(player.Quit());
  }
  const Blocks resumed = DecodeOgg(ReadMedia("sample.ogg"), last.position_s * 1000);
  const Blocks marked = DecodeOgg(ReadMedia("sample.ogg"), bookmark_s * 1000);
  const Samples second = recordings.Read(2);
  SoundCheck restarted(settings);
  restarted.Begin(recordings.Read(1));
  restarted.PlaySome(resumed, marked[0], &second);
  restarted.PlayUntilQuit(marked);

  const Session again = KeptSession(installed);
  EXPECT_EQ(again.tracks.size(), 1u) << "the bookmark has replaced the list";
  EXPECT_TRUE(again.repeat);
  EXPECT_TRUE(again.equalizer.on);
  EXPECT_EQ(again.equalizer.bands[0], 0);
}

}  // namespace
}  // namespace velmora::test
