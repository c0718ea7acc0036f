#include <gtest/gtest.h>

#include <vector>

#include "tests/skins/archive_text.h"
#include "tests/support/faults.h"
#include "tests/support/memory_files.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::ReadMember;
using test::ZipBuilder;
using test::ZipMember;

TEST(ArchiveSkinTest, TakesTheBestMatch) {
  const struct {
    const char* name;
    std::vector<std::string> members;  // the content is the index
    const char* want;
  } cases[] = {
      {"exact", {"text.bmp", "main.bmp"}, "<1>"},
      {"without case", {"MAIN.BMP"}, "<0>"},
      {"exact beats case", {"Main.bmp", "main.bmp"}, "<1>"},
      {"in a folder", {"Skin/main.bmp"}, "<0>"},
      {"behind a backslash", {"Skin\\MAIN.BMP"}, "<0>"},
      {"case beats folder", {"skin/main.bmp", "MAIN.bmp"}, "<1>"},
      {"exact beats all", {"s/main.bmp", "MAIN.BMP", "main.bmp"}, "<2>"},
      {"case in a folder is no rank of its own", {"s/MAIN.bmp", "s/main.bmp"}, "<0>"},
      {"first of equal names", {"main.bmp", "main.bmp"}, "<0>"},
      {"first without case", {"MAIN.bmp", "main.BMP"}, "<0>"},
      {"first folder", {"a/main.bmp", "b/main.bmp"}, "<0>"},
      {"a name that only leads out", {"../main.bmp"}, "<0>"},
      {"two folders", {"a/b/main.bmp"}, "none"},
      {"two folders, mixed", {"a\\b/main.bmp", "..\\../main.bmp"}, "none"},
      {"a folder of that name", {"main.bmp/"}, "none"},
      {"in a folder of that name", {"main.bmp/x.bmp"}, "none"},
      {"part of a name", {"xmain.bmp", "main.bmpx", "main.bm"}, "none"},
      {"no members", {}, "none"},
      {"a long name first", {std::string(60000, 'n'), "main.bmp"}, "<1>"},
      {"a long folder", {std::string(300, 'n') + "/main.bmp"}, "none"},
  };
  for (const auto& c : cases) {
    ZipBuilder zip;
    for (size_t i = 0; i < c.members.size(); ++i) zip.Add({c.members[i], std::to_string(i)});
    EXPECT_EQ(ReadMember(zip.Bytes()), c.want) << c.name;
  }
}

std::string Noise(size_t bytes) {
  std::string noise(bytes, '\0');
  uint32_t state = 1;
  for (char& c : noise) c = static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
  return noise;
}

TEST(ArchiveSkinTest, ReadsContentsOfAllKinds) {
  const std::string contents[] = {
      "",           "x",           std::string("\0\r\n\x1A", 4), std::string(100000, 'z'),
      Noise(16384), Noise(100001), "PK\x05\x06 PK\x06\x07"};
  for (const std::string& content : contents) {
    for (int form = 0; form < 4; ++form) {
      ZipMember member{"main.bmp", content, (form & 1) != 0};
      member.streamed = (form & 2) != 0;
      ZipBuilder zip;
      zip.Add({"a", Noise(3000)}).Add(member).Add({"z", "after"});
      const std::string want = "<" + content + ">";
      EXPECT_TRUE(ReadMember(zip.Bytes()) == want) << content.size() << ", form " << form;
      EXPECT_TRUE(ReadMember(zip.Bytes(std::string(65000, 'c'))) == want) << "with a comment";
      EXPECT_TRUE(ReadMember(Noise(5000) + zip.Bytes()) == want) << "behind other data";
      EXPECT_TRUE(ReadMember(zip.Bytes64()) == want) << "with a 64-bit directory";
    }
  }
}

TEST(ArchiveSkinTest, FindsTheEndBehindWhatOnlyLooksLikeIt) {
  ZipBuilder zip;
  zip.Add({"main.bmp", "content"});
  const std::string end = ZipBuilder().Bytes();
  const std::string locator = "PK\x06\x07" + std::string(16, '\0');
  const std::string longest(0xFFFF - 22, 'c');
  for (const std::string& comment :
       {std::string("PK\x05\x06"), end + " ", "x" + end + "PPPP", locator + end + "PK",
        end + std::string(5000, 'P'), longest + end.substr(0, 20) + "xx", longest + "c"}) {
    EXPECT_EQ(ReadMember(zip.Bytes(comment)), "<content>") << comment.size();
  }
  EXPECT_EQ(ReadMember(zip.Bytes() + "more"), "none") << "no end is at the end";
  EXPECT_EQ(ReadMember(zip.Bytes("cut").substr(0, zip.Bytes().size() + 2)), "none");
}

TEST(ArchiveSkinTest, ReadsOtherExtraFieldsAndWideSizes) {
  ZipMember member{"main.bmp", "content"};
  member.extra = "\x55\x54" + ZipBuilder::Number(5, 2) + "\x01time";
  EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes()), "<content>") << "other extra fields";

  // Sizes in the 64-bit extra field.
  member = {"main.bmp", "content", false};
  member.extra = ZipBuilder::Number(1, 2) + ZipBuilder::Number(16, 2) + ZipBuilder::Number(7, 8) +
                 ZipBuilder::Number(7, 8);
  member.size = member.packed_size = 0xFFFFFFFF;
  EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes64()), "<content>");
}

// Small, with every kind of record.
std::string Sample() {
  ZipMember extra{"MAIN.BMP", "shadowed"};
  extra.extra = "\x55\x54" + ZipBuilder::Number(5, 2) + "\x01time";
  return ZipBuilder()
      .Add(extra)
      .Add({"s/main.bmp", "x", false})
      .Add({"main.bmp", Noise(300)})
      .Bytes();
}

TEST(ArchiveSkinTest, EveryTruncationGivesNothing) {
  const std::string zip = Sample();
  ASSERT_EQ(ReadMember(zip), "<" + Noise(300) + ">");
  for (size_t bytes = 0; bytes < zip.size(); ++bytes) {
    ASSERT_EQ(ReadMember(zip.substr(0, bytes)), "none") << bytes;
  }
}

TEST(ArchiveSkinTest, EveryChangedByteGivesTheContentOrAnotherMemberOrNothing) {
  const std::string good = Sample();
  for (size_t at = 0; at < good.size(); ++at) {
    for (int change : {0x01, 0x80, 0xFF}) {
      std::string zip = good;
      zip[at] = static_cast<char>(zip[at] ^ change);
      const std::string got = ReadMember(zip);
      ASSERT_TRUE(got == "none" || got == "<shadowed>" || got == "<x>" ||
                  got == "<" + Noise(300) + ">")
          << at;
    }
  }
}

TEST(ArchiveSkinTest, EveryFailingReadGivesNothing) {
  test::MemoryFiles files;
  ZipBuilder zip;
  for (int i = 0; i < 100; ++i) zip.Add({"other " + std::to_string(i), "x"});
  files["z"] = zip.Add({"main.bmp", Noise(40000)}).Bytes();
  const long reads = test::Sweep([&](long n) {
    files.FailAfter(n, false, "read");
    OpenFile<FileReader> file = files.OpenRead(L"z", Share::kRead);
    const SkinBlock block = ReadFromSkinArchive(*file, "main.bmp");
    EXPECT_EQ(block.size(), block.data() ? 40000u : 0u);
    return !block.data();
  });
  EXPECT_GT(reads, 9);
}

TEST(ArchiveSkinTest, EveryFailingAllocationGivesNothing) {
  const std::string zip = Sample();
  MemorySource source(zip.data(), zip.size());
  int successes = 0;
  for (bool done = false; !done; ++successes) {
    test::HeapFaults faults(successes);
    const SkinBlock block = ReadFromSkinArchive(source, "main.bmp");
    done = !faults.triggered();
    // Out of memory while searching for the 64-bit directory, it goes on with the plain one.
    ASSERT_TRUE(done || successes == 1 || !block.data()) << successes;
  }
  EXPECT_GE(successes, 8) << "stream, archive, buffers, inflate's two, the block";
}

}  // namespace
}  // namespace kelvo
