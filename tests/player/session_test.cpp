#include "host/player/session.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

Session Sample() {
  Session session;
  session.volume = 73;
  session.balance = -12;
  session.shuffle = true;
  session.repeat = true;
  session.equalizer.on = true;
  session.equalizer.preamp = 4;
  session.equalizer.bass = 3;
  for (size_t i = 0; i < kEqualizerBands; ++i) session.equalizer.bands[i] = static_cast<uint8_t>(i);
  session.skin = "Z:\\skins\\a=b \xC3\xA4.zip";
  session.double_size = true;
  session.remaining_time = true;
  session.visual = 2;
  session.main_window = {false, -40, 12, 0, 0};
  session.equalizer_window = {true, 1, 2, 0, 0};
  session.playlist_window = {true, 3, 4, 275, 232};
  session.tracks = {"Z:\\music\\one.ogg", "Z:\\=\\\xE2\x82\xAC.wma"};
  session.current = 1;
  return session;
}

TEST(Session, ComesBackAsItWasKept) {
  const std::string text = PrintSession(Sample());
  EXPECT_EQ(PrintSession(ParseSession(text)), text);
  const Session back = ParseSession(text);
  EXPECT_EQ(back.volume, 73);
  EXPECT_EQ(back.balance, -12);
  EXPECT_TRUE(back.shuffle && back.repeat && back.double_size && back.equalizer.on);
  EXPECT_TRUE(back.remaining_time);
  EXPECT_EQ(back.visual, 2);
  EXPECT_EQ(back.equalizer.bands[9], 9);
  EXPECT_EQ(back.skin, Sample().skin);
  EXPECT_EQ(back.main_window.x, -40);
  EXPECT_EQ(back.playlist_window.height, 232);
  EXPECT_EQ(back.tracks, Sample().tracks);
  EXPECT_EQ(back.current, 1u);
}

TEST(Session, LinesWithoutSenseChangeNothing) {
  const std::string first_start = PrintSession(Session());
  const char* const lines[] = {"",
                               "volume",
                               "volume=",
                               "volume=101",
                               "volume=-1",
                               "volume=5x",
                               "volume= 5",
                               "volume=+5",
                               "volume=99999999999999999999",
                               "volume=-",
                               "VOLUME=5",
                               "balance=-101",
                               "shuffle=2",
                               "shuffle=yes",
                               "preamp=28",
                               "bass=5",
                               "bands=1,2,3",
                               "bands=1,2,3,4,5,6,7,8,9,10,11",
                               "bands=1,2,3,4,5,6,7,8,9,28",
                               "bands=,,,,,,,,,",
                               "main_window=1,2,3",
                               "main_window=2,0,0,0,0",
                               "main_window=1,40000,0,0,0",
                               "main_window=1,0,0,-1,0",
                               "track=",
                               "current=5",
                               "current=-1",
                               "nonsense=1",
                               "=",
                               "==volume=5",
                               "\xFF\xFE\x00"};
  for (const char* line : lines) {
    EXPECT_EQ(PrintSession(ParseSession(line)), first_start) << line;
    EXPECT_EQ(PrintSession(ParseSession(std::string(line) + "\r\nvolume=7")),
              PrintSession(ParseSession("volume=7\r\n")))
        << line << ": the next line counts all the same";
  }
  EXPECT_EQ(ParseSession("track=" + std::string(5000, 'a')).tracks.size(), 0u);
  EXPECT_EQ(ParseSession("skin=" + std::string(5000, 'a')).skin, "");
}

TEST(Session, AnyCutIsReadable) {
  const std::string text = PrintSession(Sample());
  for (size_t length = 0; length <= text.size(); ++length) {
    const Session session = ParseSession(text.substr(0, length));
    EXPECT_TRUE(session.tracks.empty() ? session.current == 0
                                       : session.current < session.tracks.size());
    EXPECT_LE(session.volume, 100);
  }
}

TEST(Session, TracksAreBounded) {
  std::string text;
  for (size_t i = 0; i < kMaxSessionTracks + 10; ++i) text += "track=a\n";
  EXPECT_EQ(ParseSession(text).tracks.size(), kMaxSessionTracks);
}

}  // namespace
}  // namespace velmora
