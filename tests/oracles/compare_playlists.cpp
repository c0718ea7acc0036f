#include <gtest/gtest.h>

#include "playlist/playlist_files.h"
#include "tests/oracles/cases.h"
#include "tests/oracles/playlist_model.h"
#include "tests/support/fake_information.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

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
  return i % 2 ? "\\" : "\\Mus\xEF\\";
}

std::string SomeName(Dice& dice, uint32_t list, const std::string& long_name) {
  if (dice.OneIn(20)) return long_name;
  const std::string name = dice.Word(
      "a.mp3|A.MP3|b.ogg|c.wma|d.asf|e.Mp2|no.mp3|a.mp3 "
      "|x.txt|mp3|s\\a.mp3|\\a.mp3|..\\a.mp3|\xE9.mp1|"
      ".ogg||\\Mus\xEF\\b.ogg|\\MUS\xCF\\c.wma");
  if (list + 1 >= kLists || dice.OneIn(2)) return name;
  const uint32_t other = list + 1 + dice.Roll(kLists - list - 1);
  return (dice.OneIn(3) ? "" : ListFolder(other)) + ListName(other);
}

std::string SomeLine(Dice& dice, uint32_t list, const std::string& long_name, int* key) {
  const std::string name = SomeName(dice, list, long_name);
  std::string line;
  switch (list % 3) {
    case 0:
      line = name;
      break;
    case 1: {
      *key += dice.OneIn(12) ? 2 : dice.OneIn(6) ? 0 : 1;
      line = dice.Word("File|file|FILE|File|Fil") + std::to_string(*key) +
             (dice.OneIn(10) ? " =" : "=") + name;
      break;
    }
    default: {
      line = dice.Word(
                 "<ref href=\"|<REF HREF = \"|<Entry><Ref Href=\"|<ref  href=\"|<ref href='|\"q\" "
                 "<ref href \"") +
             name + dice.Word("\"/>|\"/> \\|\"||\" \"\\b.ogg\"");
    }
  }
  if (dice.OneIn(8))
    line.insert(dice.Roll(static_cast<uint32_t>(line.size()) + 1),
                dice.Word("#|[| |\0|\"|\\|\r|\x1A|<ref href|File1=|x"));
  if (dice.OneIn(10)) line = std::string(256 + dice.Roll(6), dice.OneIn(4) ? '\0' : 'x') + line;
  return line + (dice.OneIn(3) ? "\r\n" : "\n");
}

void Compare(Dice& dice) {
  test::MemoryFiles files;
  test::FakeInformation information;
  PlaylistModel model;
  std::map<std::string, std::string> contents;
  model.find = [&](const std::string& path) -> std::optional<std::string> {
    const auto found = contents.find(Folded(path));
    if (found == contents.end()) return {};
    return found->second;
  };
  const auto put = [&](const std::string& path, const std::string& bytes) {
    files.Put(ToUtf8(path), bytes);
    contents[Folded(path)] = bytes;
  };
  put("\\a.mp3", test::Id3v1Tag("T\r\n", std::string(30, 'f'), "L", 8));
  for (const char* name : {"a.mp3", "e.mp2", "b.ogg", "c.wma", "d.asf", "\xE9.mp1", ".ogg"}) {
    put("\\Mus\xEF\\" + std::string(name),
        dice.OneIn(2) ? "" : test::Id3v1Tag("Title", "", "", 255, ' '));
  }
  put("s\\a.mp3", "");
  for (const char* path : {"\\Mus\xEF\\b.ogg", "\\Mus\xEF\\c.wma"}) {
    const Id3v1Texts texts = {dice.Row("Ogg| |\xE9|llllllllll|\n", 6),
                              dice.Row("Ogg| |\xE9|llllllllll|\n", 6), "L",
                              dice.Row("Ogg| |\xE9|llllllllll", 3).substr(0, 31)};
    model.information[path] = texts;
    information.known[ToUtf8(path)] = {ToUtf8(texts.title), ToUtf8(texts.artist), texts.album,
                                       ToUtf8(texts.genre)};
  }
  information.wma_available = model.wma_available = !dice.OneIn(5);
  const std::string long_name = std::string(246 + dice.Roll(13), 'n') + ".mp3";
  for (const uint32_t i : {0, 1}) {
    if ((ListFolder(i) + long_name).size() < 260) put(ListFolder(i) + long_name, "");
  }
  for (uint32_t i = 0; i < kLists; ++i) {
    if (dice.OneIn(12)) continue;
    std::string text;
    int key = 0;
    for (uint32_t lines = dice.Roll(8); lines > 0; --lines)
      text += SomeLine(dice, i, long_name, &key);
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
