// Archives made to do harm: each ends in no block, quickly.
#include <gtest/gtest.h>

#include "tests/skins/archive_text.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::ReadMember;
using test::ZipBuilder;
using test::ZipMember;

constexpr size_t kLimit = 16u << 20;

ZipMember Honest(bool deflated = true) {
  return {"main.bmp", "some content, some content, some content", deflated};
}

TEST(HostileArchiveTest, LyingHeadersGiveNothing) {
  const struct {
    const char* name;
    void (*lie)(ZipMember*);
  } lies[] = {
      {"encrypted", [](ZipMember* m) { m->flags = 1; }},
      {"strongly encrypted", [](ZipMember* m) { m->flags = 0x41; }},
      {"checksum", [](ZipMember* m) { m->crc = 0x12345678; }},
      {"checksum of nothing", [](ZipMember* m) { m->crc = 0; }},
      {"bzip2", [](ZipMember* m) { m->method = 12; }},
      {"deflate64", [](ZipMember* m) { m->method = 9; }},
      {"unknown method", [](ZipMember* m) { m->method = 0xFFFF; }},
      {"other method", [](ZipMember* m) { m->method = m->deflated ? 0 : 8; }},
      {"size one too large", [](ZipMember* m) { m->size = int64_t(m->content.size()) + 1; }},
      {"size one too small", [](ZipMember* m) { m->size = int64_t(m->content.size()) - 1; }},
      {"size 0", [](ZipMember* m) { m->size = 0; }},
      {"size just over the limit", [](ZipMember* m) { m->size = kLimit + 1; }},
      {"size at the limit", [](ZipMember* m) { m->size = kLimit; }},
      {"size 4 GB", [](ZipMember* m) { m->size = 0xFFFFFFFF; }},
      {"packed size 0", [](ZipMember* m) { m->packed_size = 0; }},
      {"packed size 1", [](ZipMember* m) { m->packed_size = 1; }},
      {"other name in front of the data", [](ZipMember* m) { m->local_name = "other"; }},
      {"64-bit size beyond the limit",
       [](ZipMember* m) {
         m->size = 0xFFFFFFFF;
         m->extra = ZipBuilder::Number(1, 2) + ZipBuilder::Number(8, 2) +
                    ZipBuilder::Number(0x100000000u + m->content.size(), 8);
       }},
      {"64-bit field cut off",
       [](ZipMember* m) {
         m->size = 0xFFFFFFFF;
         m->extra = ZipBuilder::Number(1, 2);
       }},
  };
  for (bool deflated : {false, true}) {
    ASSERT_NE(ReadMember(ZipBuilder().Add(Honest(deflated)).Bytes()), "none");
    for (const auto& c : lies) {
      ZipMember member = Honest(deflated);
      c.lie(&member);
      EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes()), "none") << c.name;
      EXPECT_EQ(ReadMember(ZipBuilder().Add(member).Bytes64()), "none") << c.name << ", 64 bits";
    }
  }
}

TEST(HostileArchiveTest, ADamagedBestMatchIsNotReplacedByAWorseOne) {
  ZipMember damaged = Honest();
  damaged.crc = 1;
  EXPECT_EQ(ReadMember(ZipBuilder().Add({"MAIN.BMP", "x"}).Add(damaged).Bytes()), "none");
}

TEST(HostileArchiveTest, TheLimitIsSixteenMegabytes) {
  for (size_t over : {0u, 1u}) {
    const std::string zip =
        ZipBuilder().Add({"main.bmp", std::string(kLimit + over, 'b'), false}).Bytes();
    MemorySource source(zip.data(), zip.size());
    EXPECT_EQ(ReadFromSkinArchive(source, "main.bmp").size(), over ? 0 : kLimit);
  }
}

TEST(HostileArchiveTest, ABombThatClaimsLittleGivesNothing) {
  ZipMember bomb{"main.bmp", std::string(kLimit / 4, 'b')};
  bomb.size = 1000;
  const std::string zip = ZipBuilder().Add(bomb).Bytes();
  ASSERT_LT(zip.size(), 5000u);
  EXPECT_EQ(ReadMember(zip), "none");
}

// The checksum is that of the bytes that the size names, so only the rest gives the lie away.
TEST(HostileArchiveTest, AMemberThatHoldsMoreOrLessThanItClaimsGivesNothing) {
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

TEST(HostileArchiveTest, OverlappingMembersAreReadOneByOne) {
  const ZipMember first{"aaaa.bmp", "shared"};
  ZipBuilder two;
  two.Add(first).AddSecondName("main.bmp", first);
  EXPECT_EQ(ReadMember(two.Bytes()), "<shared>");
  EXPECT_EQ(ReadMember(two.Bytes(), "aaaa.bmp"), "<shared>");
}

TEST(HostileArchiveTest, DirectoriesThatLieAreSearchedAsFarAsTheyGo) {
  ZipBuilder zip;
  zip.Add({"other", "x"}).Add(Honest());
  const std::string want = "<" + Honest().content + ">";
  EXPECT_EQ(ReadMember(zip.Bytes("", 0)), "none");
  EXPECT_EQ(ReadMember(zip.Bytes("", 1)), "none") << "the second one is not counted";
  EXPECT_EQ(ReadMember(zip.Bytes("", 65534)), want);
  EXPECT_EQ(ReadMember(zip.Bytes("", 65534), "text.bmp"), "none");
  EXPECT_EQ(ReadMember(zip.Bytes("", 65535), "text.bmp"), "none");
  EXPECT_EQ(ReadMember(zip.Bytes64(~0ull, 0), "text.bmp"), "none");
  EXPECT_EQ(ReadMember(zip.Bytes64(2, ~0ull)), "none");
  EXPECT_EQ(ReadMember(zip.Bytes64(2, ~0ull - 100)), "none");
  EXPECT_EQ(ReadMember(zip.Bytes64(2, 1ull << 63)), "none");
}

TEST(HostileArchiveTest, EndlessDirectoriesAreLeftAfter65535) {
  ZipBuilder zip;
  zip.Add({"n", "", false}).Repeat(65533).Add(Honest());
  EXPECT_EQ(ReadMember(zip.Bytes64()), "<" + Honest().content + ">");
  zip = ZipBuilder();
  zip.Add({"n", "", false}).Repeat(65534).Add(Honest());
  EXPECT_EQ(ReadMember(zip.Bytes64()), "none");
}

TEST(HostileArchiveTest, OtherFilesAreNoArchives) {
  const std::string end = ZipBuilder().Bytes();
  const std::string cases[] = {"",
                               "P",
                               "PK\x03\x04",
                               std::string(70000, 'P'),
                               std::string(1000, '\0'),
                               end,
                               end + end,
                               end.substr(0, 21),
                               "Rar!\x1A\x07" + std::string(100, 'r')};
  for (const std::string& bytes : cases) EXPECT_EQ(ReadMember(bytes), "none") << bytes.size();
}

}  // namespace
}  // namespace kelvo
