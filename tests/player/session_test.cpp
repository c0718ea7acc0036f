#include "host/player/session.h"

#include <gtest/gtest.h>

#include <sstream>

namespace velmora {
namespace {

constexpr char kWhole[] =
    "volume=73\nbalance=-12\nshuffle=1\nrepeat=1\nequalizer_on=1\npreamp=4\nbass=3\n"
    "double_size=1\nremaining_time=1\nvisual=2\ncurrent=1\nbands=0,1,2,3,4,5,6,7,8,27\n"
    "main_window=0,-40,12,0,0\nequalizer_window=1,1,2,0,0\nplaylist_window=1,3,4,275,232\n"
    "skin=Z:\\skins\\a=b \xC3\xA4.zip\ntrack=Z:\\music\\one.ogg\ntrack=Z:\\=\\\xE2\x82\xAC.wma\n";

TEST(Session, ComesBackAsItWasKept) {
  EXPECT_EQ(PrintSession(ParseSession(kWhole)), kWhole);
}

TEST(Session, LinesWithoutSenseChangeNothing) {
  const std::string first_start = PrintSession(Session());
  std::istringstream lines(
      "\nvolume\nvolume=\nvolume=101\nvolume=-1\nvolume=5x\nvolume= 5\nvolume=+5\n"
      "volume=99999999999999999999\nvolume=-\nVOLUME=5\nbalance=-101\nshuffle=2\nshuffle=yes\n"
      "preamp=28\nbass=5\nbands=1,2,3\nbands=1,2,3,4,5,6,7,8,9,10,11\n"
      "bands=1,2,3,4,5,6,7,8,9,28\nbands=,,,,,,,,,\nmain_window=1,2,3\nmain_window=2,0,0,0,0\n"
      "main_window=1,40000,0,0,0\nmain_window=1,0,0,-1,0\ntrack=\ncurrent=5\ncurrent=-1\n"
      "nonsense=1\n=\n==volume=5\n\xFF\xFE");
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(PrintSession(ParseSession(line)), first_start) << line;
    EXPECT_EQ(PrintSession(ParseSession(line + "\r\nvolume=7")),
              PrintSession(ParseSession("volume=7\r\n")))
        << line << ": the next line counts all the same";
  }
  EXPECT_EQ(ParseSession("track=" + std::string(5000, 'a')).tracks.size(), 0u);
  EXPECT_EQ(ParseSession("skin=" + std::string(5000, 'a')).skin, "");
}

TEST(Session, AnyCutIsReadable) {
  const std::string text = kWhole;
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
