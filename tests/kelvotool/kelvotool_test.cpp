#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "tests/support/asf_builder.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/zip_builder.h"
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
       "list.m3u\ninner.pls\ninner.pls\n\x1Ap",
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

TEST_F(KelvotoolTest, MendsListsFromTheDevicesOtherFolders) {
  const std::string root = "kelvotool_test/";
  for (const char* file :
       {"Card/Rock/one.mp3", "Card/Pop/two.mp3", "Card/Rock/two.mp3", "Lists/x.mp3",
        "Card/Pop/three.mp3", "Card/Rock/three.mp3", "Card/inner.m3u"}) {
    std::filesystem::create_directories(std::filesystem::path(root + file).parent_path());
    Write(file, "");
  }
  const struct {
    const char* name;
    std::string list, mended, want;
  } kCases[] = {
      // What is found, and what is no file, stays byte for byte.
      {"a.m3u", "#EXTM3U\r\n\\card\\rock\\ONE.mp3\n\nhttp://h/x\r\nx.mp3", "", "exit 0"},
      {"b.m3u", "#EXTINF:1,A\r\none.mp3\r\nD:\\Mus\\pop\\TWO.mp3\nx.mp3\nsub/x.mp3\ninner.m3u",
       "#EXTINF:1,A\r\n\\Card\\Rock\\one.mp3\r\n\\Card\\Pop\\two.mp3\nx.mp3\nx.mp3\n"
       "\\Card\\inner.m3u",
       "\\Lists\\b.m3u:2: not found: \\Lists\\one.mp3\n\ttaken: \\Card\\Rock\\one.mp3\n"
       "\\Lists\\b.m3u:3: not found: D:\\Mus\\pop\\TWO.mp3\n\ttaken: \\Card\\Pop\\two.mp3\n"
       "\tof this name: \\Card\\Rock\\two.mp3\n"
       "\\Lists\\b.m3u:5: not found: \\Lists\\sub/x.mp3\n\ttaken: \\Lists\\x.mp3\n"
       "\\Lists\\b.m3u:6: not found: \\Lists\\inner.m3u\n\ttaken: \\Card\\inner.m3u\n"
       "written: kelvotool_test\\Lists\\b (mended).m3u\nexit 0"},
      {"c.m3u", "\\gone\\three.mp3\n\\gone\\four.mp3\n", "",
       "\\Lists\\c.m3u:1: not found: \\gone\\three.mp3\n\tof this name: \\Card\\Pop\\three.mp3\n"
       "\tof this name: \\Card\\Rock\\three.mp3\n"
       "\\Lists\\c.m3u:2: not found: \\gone\\four.mp3\nexit 1"},
      {"d.pls", "[playlist]\nfile1=x.mp3\nTitle1=one=1\nFILE2=\\one.mp3\r\n",
       "[playlist]\nfile1=\\Lists\\x.mp3\nTitle1=one=1\nFILE2=\\Card\\Rock\\one.mp3\r\n",
       "\\Lists\\d.pls:2: not found: x.mp3\n\ttaken: \\Lists\\x.mp3\n"
       "\\Lists\\d.pls:4: not found: \\one.mp3\n\ttaken: \\Card\\Rock\\one.mp3\n"
       "written: kelvotool_test\\Lists\\d (mended).pls\nexit 0"},
      {"e.asx", "<asx>\n <Ref href = \"one.mp3\" /> <b>\n</asx>",
       "<asx>\n <Ref href = \"\\Card\\Rock\\one.mp3\" /> <b>\n</asx>",
       "\\Lists\\e.asx:2: not found: \\Lists\\one.mp3\n\ttaken: \\Card\\Rock\\one.mp3\n"
       "written: kelvotool_test\\Lists\\e (mended).asx\nexit 0"},
  };
  for (const auto& c : kCases) {
    const std::string name = std::string("Lists/") + c.name;
    std::string mended = name;
    mended.insert(mended.rfind('.'), " (mended)");
    Write(name, c.list);
    EXPECT_EQ(Run("repair --device " + root + " " + root + name), c.want);
    EXPECT_EQ(ReadBack(name), c.list);
    EXPECT_EQ(ReadBack(mended), c.mended);
    if (c.mended.empty()) continue;
    EXPECT_NE(Run("repair " + root + name + " --device " + root).find("is there already"),
              std::string::npos);
    EXPECT_NE(Run("repair --force --device " + root + " " + root + name).find("written"),
              std::string::npos);
    EXPECT_EQ(Run("lint --device " + root + " '" + root + mended + "'"), "exit 0");
  }
}

TEST_F(KelvotoolTest, MendsOnlyWhatItCanReadAndWrite) {
  Write("gone.m3u", "gone.mp3\n");
  Write("sub/gone.mp3", "");
  const struct {
    const char *arguments, *want;
  } kCases[] = {
      {"kelvotool_test/none.m3u", "kelvotool: \\none.m3u: cannot be opened\nexit 1"},
      {"kelvotool_test/a.mp3", "kelvotool: kelvotool_test\\a.mp3: not a playlist\nexit 1"},
      {"elsewhere.m3u", "kelvotool: elsewhere.m3u: not in the device's folder\nexit 1"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(Run(std::string("repair --device kelvotool_test ") + c.arguments), c.want);
  }
  EXPECT_NE(
      Run("repair --device kelvotool_test kelvotool_test/gone.m3u", "trap '' XFSZ; ulimit -f 0; ")
          .find("gone (mended).m3u: cannot be written\n"),
      std::string::npos);
  EXPECT_EQ(ReadBack("gone (mended).m3u"), "");
}

// A bitmap of 24 bits and black pixels.
std::string Bmp(unsigned width, unsigned height) {
  using test::Le;
  const size_t bytes = (width * 3 + 3) / 4 * 4 * height;
  return "BM" + Le(54 + bytes, 4) + Le(0, 4) + Le(54, 4) + Le(40, 4) + Le(width, 4) +
         Le(height, 4) + Le(1, 2) + Le(24, 2) + std::string(24, '\0') + std::string(bytes, '\0');
}

TEST_F(KelvotoolTest, ShowsWhatIsTakenOfASkin) {
  test::ZipMember secret = {"posbar.bmp", "x"}, damaged = {"volume.bmp", "x"};
  test::ZipMember packed = {"numbers.bmp", "x"}, large = {"text.bmp", "x"};
  secret.flags = 1;
  damaged.crc = 1;
  packed.method = 12;
  large.size = (16 << 20) + 1;
  Write("s.zip", test::ZipBuilder()
                     .Add({"Skin/MAIN.BMP", Bmp(275, 116)})
                     .Add({"Skin/pledit.bmp", Bmp(280, 185)})
                     .Add({"eqmain.bmp", Bmp(275, 315).substr(0, 9000)})
                     .Add({"cbuttons.bmp", "no bitmap"})
                     .Add({"ViscoLor.txt", "1,2,3\nno\n4,5,6\n"})
                     .Add(secret)
                     .Add(damaged)
                     .Add(packed)
                     .Add(large)
                     .Bytes());
  const std::string want =
      "1\tbalance.bmp\t-\t-\tmissing\n"
      "2\tcbuttons.bmp\tcbuttons.bmp\t9\trefused: not a bitmap that can be read\n"
      "3\teq_ex.bmp\t-\t-\tmissing\n"
      "4\teqmain.bmp\teqmain.bmp\t9000\t275 x 315, 24 bits; refused: its pixels are missing\n"
      "5\tmain.bmp\tSkin/MAIN.BMP\t96102\t275 x 116, 24 bits\n"
      "6\tmonoster.bmp\t-\t-\tmissing\n"
      "7\tnumbers.bmp\tnumbers.bmp\t-\trefused: packed with another method than deflate\n"
      "8\tnums_ex.bmp\t-\t-\tmissing\n9\tplaypaus.bmp\t-\t-\tmissing\n"
      "10\tpledit.bmp\tSkin/pledit.bmp\t155454\t280 x 185, 24 bits; smaller than 280 x 186: the "
      "rest "
      "is not drawn\n"
      "11\tpledit.txt\t-\t-\tmissing\n"
      "12\tposbar.bmp\tposbar.bmp\t-\trefused: encrypted\n"
      "13\tshufrep.bmp\t-\t-\tmissing\n"
      "14\ttext.bmp\ttext.bmp\t-\trefused: larger than 16 MiB\n"
      "15\ttitlebar.bmp\t-\t-\tmissing\n"
      "16\tviscolor.txt\tViscoLor.txt\t15\t2 of 24 colours\n"
      "17\tvolume.bmp\tvolume.bmp\t-\trefused: damaged, or the archive contradicts itself\n"
      "exit 1";
  EXPECT_EQ(Run("skin kelvotool_test/s.zip"), want);
  // In a folder, in any case; what is only missing is no fault.
  Write("sub/Main.BMP", Bmp(275, 116));
  const std::string folder = Run("skin kelvotool_test/sub/");
  EXPECT_NE(folder.find("5\tmain.bmp\tMain.BMP\t96102\t275 x 116, 24 bits\n"), std::string::npos);
  EXPECT_NE(folder.find("exit 0"), std::string::npos) << folder;
  EXPECT_NE(Run("skin kelvotool_test/a.mp3").find("a.mp3: not a skin\n"), std::string::npos);
  EXPECT_EQ(Run("skin none"), "kelvotool: none: no such folder or archive\nexit 1");
}

TEST_F(KelvotoolTest, ChecksTheEffectsLinkedIn) {
  const std::string count = std::to_string(tool::kEffectsStepCount);
  EXPECT_EQ(Run("effects"),
            "effects: " + count + " of " + count + " blocks are as recorded\nexit 0");
}

TEST(EffectsVectors, TellAnyOtherObject) {
  struct Idle final : EffectsProcessor {
    void Destroy(uint32_t) noexcept override {}
    void SetBassMode(int32_t) noexcept override {}
    void EnableEqualizer(int32_t) noexcept override {}
    void SetEqualizer(int32_t, const int32_t*) noexcept override {}
    int32_t ProcessEqualizer(int16_t**, int32_t) noexcept override { return 0; }
    void ProcessBass(int16_t**, int32_t) noexcept override {}
  } idle;
  size_t first_wrong = 9;
  EXPECT_LT(tool::CheckEffects(idle, &first_wrong), tool::kEffectsStepCount);
  EXPECT_EQ(first_wrong, 0u);
}

TEST_F(KelvotoolTest, ExplainsItself) {
  const std::string help = Run("--help");
  for (const char* command :
       {"tags", "playlist", "save", "lint", "repair", "skin", "language", "effects"}) {
    const std::string own = Run(std::string(command) + " --help");
    EXPECT_NE(help.find(own.substr(0, own.find("\n\n"))), std::string::npos) << command;
    EXPECT_NE(own.find(" 2 for wrong usage.\nexit 0"), std::string::npos) << command;
  }
  for (const char* wrong :
       {"", "tags", "save kelvotool_test/out.m3u", "lint --device .", "repair a.m3u",
        "tags --force a.mp3", "effects a b", "lint a.m3u --device", "frobnicate x", "help"}) {
    const std::string output = Run(wrong);
    EXPECT_EQ(output.substr(output.size() - 6), "exit 2") << wrong;
    EXPECT_NE(output.find("--help"), std::string::npos) << wrong;
  }
}

}  // namespace
}  // namespace kelvo
