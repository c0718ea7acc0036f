// Files, folders and playlists on their way into a player's list, and a list on its way into a
// file.
#include <stdio.h>

#include "host/player/adding.h"
#include "host/player/playlist_files.h"
#include "tests/player/rig.h"
#include "tests/support/installation_folder.h"

namespace velmora {
namespace {

using kelvo::test::InstallationFolder;
using test::Rig;

std::wstring Titles(const Player& player) {
  std::wstring titles;
  for (const Track& track : player.tracks()) titles += track.title + L" ";
  return titles;
}

TEST(PlayerFiles, PlaylistsAreReadWithThoseInThem) {
  const InstallationFolder folder;
  folder.Write(L"outer.m3u", "#EXTM3U\r\nb.ogg\r\ninner.pls\r\nsong.mp3\r\nouter.m3u\r\na.wma\r\n");
  folder.Write(L"inner.pls", "[playlist]\r\nFile1=C:\\x.ogg\r\nFile2=C:\\y.mp3\r\nFile4=z.ogg\r\n");
  folder.Write(L"third.asx", "<asx><entry><ref href = \"c.OGG\"/></entry></asx>");
  Rig rig;
  Adding adding(rig.player);
  adding.Start({folder.Path(L"outer.m3u"), folder.Path(L"third.ASX"), folder.Path(L"text.txt")},
               false);
  while (adding.Step()) {
  }
  EXPECT_EQ(Titles(rig.player), L"b x a c ");
  EXPECT_EQ(rig.player.tracks()[0].path, folder.Path(L"b.ogg"));
  EXPECT_EQ(rig.player.tracks()[1].path, L"C:\\x.ogg");
  EXPECT_EQ(adding.left_out(), 3u);

  EXPECT_FALSE(rig.player.Add({folder.Path(L"none.m3u")}));
  folder.Write(L"sub.ogg", "");
  EXPECT_TRUE(rig.player.Add({folder.path()})) << "playlists in a folder would name files twice";
  EXPECT_EQ(Titles(rig.player), L"b x a c sub ");
}

TEST(PlayerFiles, AListIsSavedAsItIsReadAgain) {
  const InstallationFolder folder;
  const std::wstring path = folder.Path(L"saved.m3u");
  std::vector<Track> tracks(3);
  tracks[0] = {L"C:\\one.ogg", L"Artist - A - B"};
  tracks[1] = {L"C:\\\x4E2D.ogg", L"no artist"};
  tracks[2] = {L"C:\\two.wma", L"two"};
  folder.Write(L"saved.m3u", "an old one, and a longer one than what comes in its place now");
  const WrittenPlaylist result = WritePlaylist(path, tracks);
  EXPECT_TRUE(result.written);
  EXPECT_EQ(result.lost_names, 1u);
  EXPECT_EQ(folder.Read(L"saved.m3u"),
            "#EXTM3U:\r\n#EXTINF:-1,Artist - A - B\r\nC:\\one.ogg\r\nC:\\?.ogg\r\nC:\\two.wma\r\n");
  std::vector<std::wstring> found;
  EXPECT_EQ(ReadPlaylist(path, &found), 0u);
  EXPECT_EQ(found.size(), 3u);
  EXPECT_FALSE(WritePlaylist(folder.Path(L"none\\saved.m3u"), tracks).written);
}

TEST(PlayerFiles, ALargeFolderIsAddedStepByStep) {
  const InstallationFolder folder;
  for (int i = 1; i <= 450; ++i) {
    folder.Write((L"track_" + std::to_wstring(i) + L".ogg").c_str(), "");
  }
  Rig rig;
  rig.player.Add({L"C:\\before.ogg"});
  Adding adding(rig.player);
  EXPECT_FALSE(adding.Step()) << "nothing to do";
  adding.Start({folder.Path(L"none.txt")}, true);
  EXPECT_FALSE(adding.Step());
  EXPECT_EQ(Titles(rig.player), L"before ") << "nothing found: the list stays";
  EXPECT_EQ(adding.left_out(), 1u);

  adding.Start({folder.path()}, true);
  adding.Start({L"C:\\behind.ogg"}, false);
  size_t steps = 0, replaced = 0;
  bool more = true;
  while (more) {
    more = adding.Step();
    ++steps;
    replaced += adding.replaced();
  }
  EXPECT_GT(steps, 4u);
  EXPECT_EQ(replaced, 1u);
  EXPECT_EQ(adding.added(), 451u);
  ASSERT_EQ(rig.player.tracks().size(), 451u);
  EXPECT_EQ(rig.player.tracks()[9].title, L"track_10");
  EXPECT_EQ(rig.player.tracks()[450].title, L"behind");

  adding.Start({folder.path()}, false);
  while (adding.added() == 0) ASSERT_TRUE(adding.Step());
  adding.Stop();
  EXPECT_FALSE(adding.active());
  EXPECT_GT(rig.player.tracks().size(), 451u) << "what was found stays";
  EXPECT_LT(rig.player.tracks().size(), 901u);
}

}  // namespace
}  // namespace velmora
