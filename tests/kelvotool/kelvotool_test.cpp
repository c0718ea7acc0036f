#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/asf_builder.h"
#include "tests/support/id3v1_tag.h"

namespace kelvo {
namespace {

using test::AsfBuilder;
using test::Id3v1Tag;

class KelvotoolTest : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::remove_all("kelvotool_test");
    std::filesystem::create_directories("kelvotool_test/sub");
    Write("a.mp3", "audio" + Id3v1Tag("Title \xE9", "Artist", "Album", 17));
    Write("plain.mp3", "audio");
    Write("sub/c.wma", AsfBuilder().Description("Wma", "Band").Build());
    Write("broken.ogg", "no stream");
    Write("list.m3u", "#EXTM3U\r\na.mp3\r\nkelvotool_test\\sub\\c.wma\r\ninner.pls\r\n");
    Write("inner.pls", "[playlist]\nFile1=kelvotool_test\\plain.mp3\n");
  }
  void TearDown() override { std::filesystem::remove_all("kelvotool_test"); }

  static void Write(const std::string& name, const std::string& bytes) {
    std::ofstream("kelvotool_test/" + name, std::ios::binary) << bytes;
  }
  static std::string ReadBack(const std::string& name) {
    std::ifstream file("kelvotool_test/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // Output and errors, then "exit N".
  static std::string Run(const std::string& arguments) {
    FILE* pipe = popen(("./kelvotool " + arguments + " 2>&1").c_str(), "r");
    if (!pipe) return "not started";
    std::string output;
    for (int c; (c = fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    return output + "exit " + std::to_string(WEXITSTATUS(pclose(pipe)));
  }
};

TEST_F(KelvotoolTest, ShowsTags) {
  EXPECT_EQ(Run("tags kelvotool_test/a.mp3 kelvotool_test/plain.mp3 kelvotool_test/sub/c.wma "
                "kelvotool_test/broken.ogg"),
            "mpeg\tTitle \u00E9\tArtist\tAlbum\tRock\n"
            "mpeg\tplain.mp3\tUnknown\tUnknown\tUnknown\n"
            "wma\tWma\tBand\tUnknown\tUnknown\n"
            "ogg\tbroken.ogg\tUnknown\tUnknown\tUnknown\n"
            "exit 0");
  EXPECT_EQ(Run("tags kelvotool_test/none.mp3 kelvotool_test/list.m3u kelvotool_test/a.txt"),
            "kelvotool: kelvotool_test\\none.mp3: no such file\n"
            "kelvotool: kelvotool_test\\list.m3u: a playlist, not a media file\n"
            "kelvotool: kelvotool_test\\a.txt: neither a media file nor a playlist\n"
            "exit 1");
}

TEST_F(KelvotoolTest, ExpandsAndSavesPlaylists) {
  const std::string entries =
      "1\tkelvotool_test\\a.mp3\tTitle \u00E9\tArtist\tAlbum\tRock\n"
      "1\tkelvotool_test\\sub\\c.wma\tWma\tBand\tUnknown\tUnknown\n"
      "1\tkelvotool_test\\plain.mp3\tplain.mp3\tUnknown\tUnknown\tUnknown\n"
      "exit 0";
  EXPECT_EQ(Run("playlist kelvotool_test/list.m3u"), entries);
  EXPECT_EQ(Run("save kelvotool_test/out.m3u kelvotool_test/list.m3u"), "exit 0");
  EXPECT_EQ(ReadBack("out.m3u"),
            "#EXTM3U:\r\n#EXTINF:-1,Artist - Title \xE9\r\nkelvotool_test\\a.mp3\r\n"
            "#EXTINF:-1,Band - Wma\r\nkelvotool_test\\sub\\c.wma\r\n"
            "kelvotool_test\\plain.mp3\r\n");
  EXPECT_EQ(Run("playlist kelvotool_test/out.m3u"), entries);
  EXPECT_EQ(Run("save kelvotool_test/no/out.m3u kelvotool_test/a.mp3"),
            "kelvotool: kelvotool_test\\no\\out.m3u: cannot be created\nexit 1");
}

TEST_F(KelvotoolTest, TellsWhyLinesAreDropped) {
  EXPECT_EQ(Run("lint kelvotool_test/list.m3u"), "exit 0");
  Write("list.m3u",
        "a.mp3\n\na.txt\nsub/c.wma\nkelvotool_test\\sub\\..\\a.mp3\nhttp://h/x.mp3\nnone.mp3\n"
        "inner.pls\nloop.asx\n" +
            std::string(300, 'n') + ".mp3\n" + std::string(255, 'm') + ".mp3\n");
  Write("inner.pls", "File1=kelvotool_test\\a.mp3\nFile3=kelvotool_test\\a.mp3\n");
  Write("loop.asx", "<ref href=\"list.m3u\"/>\n<ref  href=\"a.mp3\"/>\n");
  const std::string list = "kelvotool_test\\list.m3u:";
  EXPECT_EQ(Run("lint kelvotool_test/list.m3u"),
            list + "3: no kind: a.txt\n" + list +
                "4: forward slashes do not separate folders: sub/c.wma\n" + list +
                "5: \"..\" is not resolved: kelvotool_test\\sub\\..\\a.mp3\n" + list +
                "6: a URL: http://h/x.mp3\n" + list +
                "7: no such file: none.mp3\n"
                "kelvotool_test\\inner.pls:2: gap in the numbering: File3=kelvotool_test\\a.mp3\n"
                "kelvotool_test\\loop.asx:1: a list inside itself: <ref href=\"list.m3u\"/>\n"
                "kelvotool_test\\loop.asx:2: not of the form <ref href=\"...\">: "
                "<ref  href=\"a.mp3\"/>\n" +
                list + "10: longer than 259 characters, read in pieces: " + std::string(259, 'n') +
                "\n" + list + "10: no such file: " + std::string(41, 'n') + ".mp3\n" + list +
                "11: longer than a path may be: " + std::string(255, 'm') +
                ".mp3\n"
                "exit 1");
  EXPECT_EQ(Run("lint kelvotool_test/none.m3u kelvotool_test/a.mp3"),
            "kelvotool: kelvotool_test\\none.m3u: cannot be opened\n"
            "kelvotool: kelvotool_test\\a.mp3: not a playlist\nexit 1");
}

TEST_F(KelvotoolTest, ExplainsItself) {
  const std::string help = Run("--help");
  EXPECT_NE(help.find("lint LIST..."), std::string::npos);
  EXPECT_NE(help.find("exit 0"), std::string::npos);
  for (const char* wrong : {"", "tags", "save kelvotool_test/out.m3u", "frobnicate x", "help"}) {
    const std::string output = Run(wrong);
    EXPECT_EQ(output.substr(output.size() - 6), "exit 2") << wrong;
    EXPECT_NE(output.find("--help"), std::string::npos) << wrong;
  }
}

}  // namespace
}  // namespace kelvo
