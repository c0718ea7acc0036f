// Archives as skins are packed, and those made to do harm, which end in no block.
#include <gtest/gtest.h>

#include <vector>

#include "skins/skin_feature.h"
#include "tests/support/faults.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::Le;
using test::ZipBuilder;
using test::ZipMember;

// "<content>", or "none".
std::string ReadMember(const std::string& zip) {
  MemorySource source(zip.data(), zip.size());
  const SkinBlock block = ReadFromSkinArchive(source, "main.bmp");
  if (!block.data()) return block.size() == 0 ? "none" : "a size without a block";
  return "<" + std::string(static_cast<const char*>(block.data()), block.size()) + ">";
}

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
      "",          "x",           std::string("\0\r\n\x1A", 4), std::string(100000, 'z'),
      Noise(4092), Noise(100001), "PK\x05\x06 PK\x06\x07"};
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
  // Where no comment ends with the file, the last end is it.
  EXPECT_EQ(ReadMember(zip.Bytes("no") + "more"), "<content>");
  EXPECT_EQ(ReadMember(end + zip.Bytes("cut").substr(0, zip.Bytes().size() + 2)), "<content>");
  EXPECT_EQ(ReadMember(zip.Bytes() + end + "more"), "none");
}

TEST(ArchiveSkinTest, ReadsOtherExtraFieldsAndWideSizes) {
  ZipMember member{"main.bmp", "content"};
  member.extra = "\x55\x54" + Le(5, 2) + "\x01time";
  EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes()), "<content>") << "other extra fields";

  // Sizes in the 64-bit extra field.
  member = {"main.bmp", "content", false};
  member.extra = Le(1, 2) + Le(16, 2) + Le(7, 8) + Le(7, 8);
  member.size = member.packed_size = 0xFFFFFFFF;
  EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes64()), "<content>");
}

// Small, with every kind of record.
std::string Sample() {
  ZipMember extra{"MAIN.BMP", "shadowed"};
  extra.extra = "\x55\x54" + Le(5, 2) + "\x01time";
  return ZipBuilder()
      .Add(extra)
      .Add({"s/main.bmp", "x", false})
      .Add({"main.bmp", Noise(300)})
      .Bytes();
}

TEST(ArchiveSkinTest, EveryTruncationGivesNothingAndEveryChangeNothingElse) {
  const std::string zip = Sample(), want = "<" + Noise(300) + ">";
  ASSERT_EQ(ReadMember(zip), want);
  test::SweepTruncations(zip, [](const std::string& cut) { ASSERT_EQ(ReadMember(cut), "none"); });
  for (size_t at = 0; at < zip.size(); ++at) {
    for (int change : {0x01, 0x80, 0xFF}) {
      std::string changed = zip;
      changed[at] = static_cast<char>(changed[at] ^ change);
      const std::string got = ReadMember(changed);
      ASSERT_TRUE(got == "none" || got == "<shadowed>" || got == "<x>" || got == want) << at;
    }
  }
}

constexpr size_t kLimit = 16u << 20;

TEST(ArchiveSkinTest, TheLimitIsSixteenMegabytes) {
  for (size_t over : {0u, 1u}) {
    const std::string content(kLimit + over, 'b');
    EXPECT_TRUE(ReadMember(ZipBuilder().Add({"main.bmp", content, false}).Bytes()) ==
                (over ? "none" : "<" + content + ">"));
  }
}

// The checksum is that of the bytes that the size names, so only the rest gives the lie away.
TEST(ArchiveSkinTest, AMemberThatHoldsMoreOrLessThanItClaimsGivesNothing) {
  const std::string content = "content of a skin";
  for (bool deflated : {false, true}) {
    for (size_t claimed = 0; claimed <= content.size() + 1; ++claimed) {
      const std::string part = content.substr(0, claimed);
      ZipMember member{"main.bmp", content, deflated};
      member.size = static_cast<int64_t>(claimed);
      member.crc =
          crc32(0, reinterpret_cast<const Bytef*>(part.data()), static_cast<uInt>(part.size()));
      EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes()),
                claimed == content.size() ? "<" + content + ">" : "none")
          << claimed;
    }
    ZipMember longer{"main.bmp", content, deflated};
    longer.packed_size = 100;
    EXPECT_EQ(ReadMember(ZipBuilder().Add(longer).Add({"z", std::string(90, 'z')}).Bytes()),
              "none");
  }
}

}  // namespace
}  // namespace kelvo
