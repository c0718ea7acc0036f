#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/oracles/effects_model.h"
#include "tests/support/asf_builder.h"
#include "tests/support/id3v1_tag.h"
#include "tools/kelvotool/effects_check.h"

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
  static std::string Run(const std::string& arguments, const std::string& before = "") {
    FILE* pipe = popen((before + "./kelvotool " + arguments + " 2>&1").c_str(), "r");
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
}

TEST_F(KelvotoolTest, SavesOverPlaylistsOnlyAndWhole) {
  const std::string out = "kelvotool: kelvotool_test\\";
  Write("empty.m3u", "\r\ngone.mp3\n");
  const struct {
    const char *arguments, *want, *file, *bytes;
  } kCases[] = {
      {"no/out.m3u a.mp3", "no\\out.m3u: cannot be created\nexit 1", "no", ""},
      {"plain.mp3 a.mp3", "plain.mp3: not a playlist of this format; --force replaces it\nexit 1",
       "plain.mp3", "audio"},
      {"old.m3u none.mp3 plain.mp3", "none.mp3: no such file\nexit 1", "old.m3u", "old"},
      {"old.m3u empty.m3u", "empty.m3u: a playlist that gives no entries; lint may say why\nexit 1",
       "old.m3u", "old"},
      {"old.m3u plain.mp3", "exit 0", "old.m3u", "#EXTM3U:\r\nkelvotool_test\\plain.mp3\r\n"},
      {"--force broken.ogg plain.mp3", "exit 0", "broken.ogg",
       "#EXTM3U:\r\nkelvotool_test\\plain.mp3\r\n"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.arguments);
    Write("old.m3u", "old");
    std::string line = "save", word;
    std::istringstream words(c.arguments);
    while (words >> word) line += word == "--force" ? " --force" : " kelvotool_test/" + word;
    EXPECT_EQ(Run(line), (*c.want == 'e' && c.want[1] == 'x' ? "" : out) + c.want);
    EXPECT_EQ(ReadBack(c.file), c.bytes);
  }
}

// A full disk is a failure, whatever is written to it.
TEST_F(KelvotoolTest, FailsWhenItsOutputCannotBeWritten) {
  for (const char* verb :
       {"tags kelvotool_test/a.mp3", "playlist kelvotool_test/list.m3u", "--help"}) {
    EXPECT_EQ(Run(std::string(verb) + " >/dev/full"), "exit 1") << verb;
  }
  Write("old.m3u", "old");
  EXPECT_EQ(Run("save kelvotool_test/old.m3u kelvotool_test/a.mp3", "trap '' XFSZ; ulimit -f 0; "),
            "kelvotool: kelvotool_test\\old.m3u: cannot be written\nexit 1");
  EXPECT_EQ(ReadBack("old.m3u"), "old");
}

TEST_F(KelvotoolTest, TellsWhyLinesAreDropped) {
  const std::string n259(259, 'n'), m254 = std::string(254, 'm') + ".mp3";
  const struct {
    const char* name;
    std::string bytes, want;  // of each line "NUMBER: WHY: TEXT"
  } kCases[] = {
      {"list.m3u", "#EXTM3U\r\n\r\na.mp3\r\nkelvotool_test\\sub\\c.wma\r\ninner.pls\r\n\x1A", ""},
      {"list.m3u",
       "a.txt\nhttp://h/radio\nsub/c.wma\nnone.mp3\nnone.pls\nkelvotool_test\\sub\\..\\a.mp3\n"
       "list.m3u\ninner.pls\ninner.pls\n\x1Aplain.mp3\n",
       "1: no kind: a.txt\n2: a URL: http://h/radio\n"
       "3: forward slashes do not separate folders: sub/c.wma\n4: no such file: none.mp3\n"
       "5: no such file: none.pls\n"
       "6: \"..\" is not resolved: kelvotool_test\\sub\\..\\a.mp3\n"
       "7: a list inside itself: list.m3u\n9: what follows is behind an end-of-text character: \n"},
      {"list.m3u", "\n" + n259 + "no.mp3\n" + n259 + "\n" + m254 + "\n",
       "2: longer than 259 characters, read in pieces: " + n259 + "\n2: no such file: no.mp3\n" +
           "3: longer than 259 characters, read in pieces: " + n259 +
           "\n4: longer than a path may be: " + m254 + "\n"},
      {"list.pls",
       "[playlist]\nTitle1=A\nFile1 = a.mp3\n File1=a.mp3\nFilea=1\nFile=3\nFile1\n"
       "File1=kelvotool_test\\a.mp3\nFile2=\nFile4=a.mp3\n",
       "3: blanks around the key: File1 = a.mp3\n4: blanks around the key:  File1=a.mp3\n"
       "5: not of the form FileN=PATH: Filea=1\n6: not of the form FileN=PATH: File=3\n"
       "7: not of the form FileN=PATH: File1\n"
       "9: without a value: File2=\n10: not the next number: File4=a.mp3\n"},
      {"list.asx",
       "<asx>\n<ref  href=\"a.mp3\"/>\n<EntryRef href=\"a.mp3\"/>\n"
       "<ref href=\"a.mp3\"/><REF href=\"a.mp3\"/>\n",
       "2: not of the form <ref href=\"...\">: <ref  href=\"a.mp3\"/>\n"
       "3: not of the form <ref href=\"...\">: <EntryRef href=\"a.mp3\"/>\n"
       "4: only the first reference of a line is taken: "
       "<ref href=\"a.mp3\"/><REF href=\"a.mp3\"/>\n"},
  };
  for (const auto& c : kCases) {
    Write(c.name, c.bytes);
    std::string want, line;
    std::istringstream lines(c.want);
    while (std::getline(lines, line)) {
      want += std::string("kelvotool_test\\") + c.name + ":" + line + "\n";
    }
    EXPECT_EQ(Run(std::string("lint kelvotool_test/") + c.name),
              want + (want.empty() ? "exit 0" : "exit 1"));
  }
  EXPECT_EQ(Run("lint kelvotool_test/none.m3u kelvotool_test/a.mp3"),
            "kelvotool: kelvotool_test\\none.m3u: cannot be opened\n"
            "kelvotool: kelvotool_test\\a.mp3: not a playlist\nexit 1");
  // A list with a whole path says whole paths, or what it says depends on the current folder.
  Write("list.pls", "File1=kelvotool_test\\a.mp3\n");
  EXPECT_NE(Run("lint $PWD/kelvotool_test/list.pls").find(":1: a relative path: File1="),
            std::string::npos);
}

TEST_F(KelvotoolTest, ReadsADevicesListsByItsOwnPathsAndInAnyCase) {
  Write("sub/list.m3u", "\\SUB\\C.wma\nc.WMA\n\\A.mp3\n\\sub\\none.mp3\nkelvotool_test\\a.mp3\n");
  const std::string want =
      "\\sub\\list.m3u:4: no such file: \\sub\\none.mp3\n"
      "\\sub\\list.m3u:5: a relative path: kelvotool_test\\a.mp3\n";
  for (const char* root : {"kelvotool_test", "kelvotool_test/", "$PWD/kelvotool_test"}) {
    EXPECT_EQ(Run(std::string("lint --device ") + root + " " + root + "/sub/list.m3u"),
              want + "exit 1")
        << root;
  }
  EXPECT_EQ(Run("lint --device kelvotool_test/sub kelvotool_test/list.m3u"),
            "kelvotool: kelvotool_test\\list.m3u: not in the device's folder\nexit 1");
}

TEST_F(KelvotoolTest, ChecksTheEffectsLinkedIn) {
  const std::string count = std::to_string(tool::kEffectsStepCount);
  EXPECT_EQ(Run("effects"),
            "effects: " + count + " of " + count + " blocks are as recorded\nexit 0");
}

// What is recorded comes from the literal model, not from the product.
TEST(EffectsVectors, AreTheModelsAndTellAnyOther) {
  struct Model final : EffectsProcessor {
    void Destroy(uint32_t) noexcept override {}
    void SetBassMode(int32_t mode) noexcept override { model.SetBassMode(mode); }
    void EnableEqualizer(int32_t enabled) noexcept override { model.enabled = enabled; }
    void SetEqualizer(int32_t preamp, const int32_t* bands) noexcept override {
      model.SetEqualizer(preamp, bands);
    }
    int32_t ProcessEqualizer(int16_t** samples, int32_t bytes) noexcept override {
      return model.ProcessEqualizer(*samples, bytes);
    }
    void ProcessBass(int16_t** samples, int32_t bytes) noexcept override {
      model.ProcessBass(*samples, bytes);
    }
    test::ReferenceEffects model;
  } right, wrong;
  size_t first_wrong = 0;
  EXPECT_EQ(tool::CheckEffects(right, &first_wrong), tool::kEffectsStepCount);
  EXPECT_EQ(first_wrong, tool::kEffectsStepCount);
  wrong.model.equalizer[0][0].out[1] = 1 << 20;
  EXPECT_LT(tool::CheckEffects(wrong, &first_wrong), tool::kEffectsStepCount);
  EXPECT_EQ(first_wrong, 5u) << "until bands are set, they contribute nothing";
}

TEST_F(KelvotoolTest, ExplainsItself) {
  const std::string help = Run("--help");
  EXPECT_NE(help.find("lint [--device FOLDER] LIST..."), std::string::npos);
  EXPECT_NE(help.find("exit 0"), std::string::npos);
  for (const char* wrong :
       {"", "tags", "save kelvotool_test/out.m3u", "lint --device .", "frobnicate x", "help"}) {
    const std::string output = Run(wrong);
    EXPECT_EQ(output.substr(output.size() - 6), "exit 2") << wrong;
    EXPECT_NE(output.find("--help"), std::string::npos) << wrong;
  }
}

}  // namespace
}  // namespace kelvo
