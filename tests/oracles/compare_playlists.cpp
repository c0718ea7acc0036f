#include <gtest/gtest.h>

#include "playlist/playlist_files.h"
#include "tests/oracles/playlist_model.h"
#include "tests/support/fake_information.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"

namespace kelvo::oracle {
namespace {

using test::Utf8;
using test::Wide;

constexpr uint32_t kLists = 6;

// List i may name those behind it, so that every expansion ends.
std::string ListName(uint32_t i) {
  static const char* const kExtensions[] = {".m3u", ".pls", ".asx"};
  return std::to_string(i) + kExtensions[i % 3];
}
std::string ListFolder(uint32_t i) {
  return i % 2 ? "\\"
               : "\\Mus\xEF"
                 "c\\";
}

std::string SomeName(Dice& dice, uint32_t list) {
  const std::string names[] = {"a.mp3",
                               "A.MP3",
                               "b.ogg",
                               "c.wma",
                               "d.asf",
                               "e.Mp2",
                               "no.mp3",
                               "a.mp3 ",
                               "x.txt",
                               "mp3",
                               "s\\a.mp3",
                               "\\a.mp3",
                               "..\\a.mp3",
                               "\xE9.mp1",
                               ".ogg",
                               "",
                               "\\Mus\xEF"
                               "c\\b.ogg",
                               "\\MUS\xCF"
                               "C\\c.wma",
                               std::string(200 + dice.Roll(70), 'n') + ".mp3"};
  if (list + 1 >= kLists || dice.OneIn(2)) return dice.Of(names);
  const uint32_t other = list + 1 + dice.Roll(kLists - list - 1);
  return (dice.OneIn(3) ? "" : ListFolder(other)) + ListName(other);
}

std::string SomeLine(Dice& dice, uint32_t list, int* key) {
  const std::string name = SomeName(dice, list);
  const std::string spoilers[] = {
      "#", "[", " ", std::string(1, '\0'), "\"", "\\", "\r", "\x1A", "<ref href", "File1=", "x"};
  std::string line;
  switch (list % 3) {
    case 0:
      line = name;
      break;
    case 1: {
      const std::string keys[] = {"File", "file", "FILE", "File", "Fil"};
      *key += dice.OneIn(12) ? 2 : dice.OneIn(6) ? 0 : 1;
      line = dice.Of(keys) + std::to_string(*key) + (dice.OneIn(10) ? " =" : "=") + name;
      break;
    }
    default: {
      const std::string tags[] = {"<ref href=\"",  "<REF HREF = \"", "<Entry><Ref Href=\"",
                                  "<ref  href=\"", "<ref href='",    "\"q\" <ref href \""};
      const std::string ends[] = {"\"/>", "\"/> \\", "\"", "", "\" \"\\b.ogg\""};
      line = dice.Of(tags) + name + dice.Of(ends);
    }
  }
  if (dice.OneIn(8))
    line.insert(dice.Roll(static_cast<uint32_t>(line.size()) + 1), dice.Of(spoilers));
  if (dice.OneIn(10)) line = std::string(dice.Roll(290), dice.OneIn(4) ? '\0' : 'x') + line;
  return line + (dice.OneIn(3) ? "\r\n" : "\n");
}

void Compare(Dice& dice) {
  test::MemoryFiles files;
  test::FakeInformation information;
  PlaylistModel model;
  const auto put = [&](const std::string& path, const std::string& bytes) {
    files.Put(ToUtf8(path), bytes);
    model.files[Folded(path)] = bytes;
  };
  put("\\a.mp3", test::Id3v1Tag("T\r\n", std::string(30, 'f'), "L", 8));
  for (const char* name : {"a.mp3", "e.mp2", "b.ogg", "c.wma", "d.asf", "\xE9.mp1", ".ogg"}) {
    put("\\Mus\xEF"
        "c\\" +
            std::string(name),
        dice.OneIn(2) ? "" : test::Id3v1Tag("Title", "", "", 255, ' '));
  }
  put("s\\a.mp3", "");
  const std::string pieces[] = {"Ogg", " ", "\xE9", std::string(10, 'l'), "\n"};
  for (const char* path : {"\\Mus\xEF"
                           "c\\b.ogg",
                           "\\Mus\xEF"
                           "c\\c.wma"}) {
    const Id3v1Texts texts = {dice.Row(pieces, 6), dice.Row(pieces, 6), "L",
                              dice.Row(pieces, 3).substr(0, 31)};
    model.information[path] = texts;
    information.known[ToUtf8(path)] = {ToUtf8(texts.title), ToUtf8(texts.artist), texts.album,
                                       ToUtf8(texts.genre)};
  }
  information.wma_available = model.wma_available = !dice.OneIn(5);
  for (uint32_t i = 0; i < kLists; ++i) {
    if (dice.OneIn(12)) continue;
    std::string text;
    int key = 0;
    for (uint32_t lines = dice.Roll(8); lines > 0; --lines) text += SomeLine(dice, i, &key);
    if (dice.OneIn(4) && !text.empty()) text.pop_back();
    put(ListFolder(i) + ListName(i), text);
  }

  EntryList list;
  const uint32_t from = dice.Roll(3);
  const std::string path = ListFolder(from) + ListName(from);
  AddPath({files, information, nullptr}, Wide(ToUtf8(path)), &list);
  model.AddPath(path);
  ASSERT_EQ(list.size(), model.list.size());
  for (size_t i = 0; i < list.size(); ++i) {
    const auto& want = model.list[i];
    ASSERT_EQ(Utf8(list[i].path.c_str()), ToUtf8(want.path));
    ASSERT_EQ(list[i].item, 1u);
    ASSERT_EQ(static_cast<bool>(list[i].tag), want.tag.has_value());
    if (!want.tag) continue;
    ASSERT_EQ(std::string(list[i].tag->title, sizeof(TagBlock)),
              want.tag->title + want.tag->artist + want.tag->album + want.tag->genre);
  }
  ASSERT_EQ(files.open_now, 0);
  ASSERT_TRUE(WriteM3u(files, L"\\out.m3u", list));
  ASSERT_EQ(files.Find("\\out.m3u")->bytes, model.WriteM3u());
}

TEST(Oracle, Playlists) {
  ForCases(2000, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
