#include <gtest/gtest.h>

#include "bookmarks/bookmarks_feature.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/oracles/bookmarks_model.h"
#include "tests/oracles/cases.h"
#include "tests/support/memory_files.h"

namespace kelvo::oracle {
namespace {

constexpr char kFile[] = "\\V\\bookmarks.dat";

const wchar_t* Text(const Units& units) {
  return reinterpret_cast<const wchar_t*>(units.c_str());
}
Units FromText(const wchar_t* text) {
  Units units;
  for (; *text; ++text) units += static_cast<char16_t>(*text);
  return units;
}

Units SomePath(Dice& dice) {
  return dice.Word(u"\\a|\\b|\\gone||\\\u00e9\u4e16|\\x\r\ny");
}

Units SomeText(Dice& dice) {
  if (dice.OneIn(12)) return Units(250 + dice.Roll(20), u't');
  return dice.Word(u"|one|(Last Played) x|(lAST pLAYED) |(Last Played)|a\rb\n|\xd83d| |-12|7");
}

// Lines that are right, and what may stand among their units.
std::string SomeFile(Dice& dice) {
  Units units;
  const Units oddities[] = {Units(1, u'\0'), u"\ufeff",        u"\r",
                            u"\n",           Units(259, u'l'), Units(300, u' ')};
  for (uint32_t n = dice.Roll(5); n > 0; --n) {
    for (const Units& line :
         {SomePath(dice), dice.Word(u"0|90|-7| 12x|abc|+5|99999999999|-99999999999|2147483647|\t3"),
          SomeText(dice)}) {
      units += line + (dice.OneIn(2) ? dice.Word(u"\rX|\n|\r\r\n||\r\n|\r\n") : u"\r\n");
      if (dice.OneIn(12))
        units.insert(dice.Roll(static_cast<uint32_t>(units.size()) + 1), dice.Of(oddities));
    }
  }
  std::string bytes;
  for (const char16_t unit : units)
    bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  if (dice.OneIn(3)) bytes.resize(dice.Roll(static_cast<uint32_t>(bytes.size()) + 1));
  return bytes;
}

void Compare(Dice& dice) {
  test::MemoryFiles files;
  test::FixedFolder folder;
  BookmarksFeature feature(files, folder, nullptr);
  BookmarksModel model;
  files.PutFolder("\\V");
  for (const char* path : {"\\a", "\\b"}) files.Put(path, "");
  model.existing = {u"\\", u"\\a", u"\\b"};
  files[kFile] = model.file = SomeFile(dice);
  model.Load();
  ASSERT_EQ(feature.LoadBookmarks(), static_cast<int32_t>(model.list.size()));
  ASSERT_EQ(files.last_share, Share::kNone);
  for (uint32_t step = 0; step < 8; ++step) {
    const auto index = static_cast<int32_t>(dice.Roll(7)) - 1;
    const auto position = static_cast<int32_t>(dice.Roll(200)) - 20;
    const Units path = dice.OneIn(12) ? Units(255 + dice.Roll(9), u'p') : SomePath(dice);
    const Units text = SomeText(dice);
    wchar_t path_out[kMaxText] = L"-", text_out[kMaxText] = L"-";
    int32_t position_out = -99;
    switch (dice.Roll(8)) {
      case 0:
        ASSERT_NE(feature.AddBookmark(Text(path), position, text.empty() ? nullptr : Text(text)),
                  0);
        model.Add(path, position, text);
        break;
      case 1:
        feature.UpdateBookmark(index, path.empty() ? nullptr : Text(path), position, Text(text));
        model.Update(index, path, position, text);
        break;
      case 2:
        feature.SetLastPlayed(Text(path), position, Text(text));
        model.SetLastPlayed(path, position, text);
        break;
      case 3: {
        const BookmarkOf first = model.list.empty() ? BookmarkOf{u"-", u"", -99} : model.list[0];
        ASSERT_EQ(feature.TakeLastPlayed(path_out, &position_out) != 0, model.TakeLastPlayed());
        ASSERT_EQ(FromText(path_out), first.path);
        ASSERT_EQ(position_out, first.position_s);
        break;
      }
      case 4:
      case 5: {  // the window's commands, which begin with a load
        BookmarkStore store(files, folder);
        store.Load();
        model.Load();
        if (dice.OneIn(3)) {
          store.RemoveDead();
          model.RemoveDead();
        } else {
          store.Remove(index);
          model.Remove(index);
        }
        ASSERT_EQ(feature.LoadBookmarks(), static_cast<int32_t>(model.list.size()));
        model.Load();
        break;
      }
      case 6:
        model.Load();
        ASSERT_EQ(feature.LoadBookmarks(), static_cast<int32_t>(model.list.size()));
        break;
      default:
        if (model.existing.erase(u"\\a")) {
          files.Delete(L"\\a");
        } else {
          model.existing.insert(u"\\a");
          files.Put("\\a", "");
        }
    }
    ASSERT_EQ(files[kFile], model.file) << "step " << step;
    for (int32_t i = -1; i <= static_cast<int32_t>(model.list.size()); ++i) {
      position_out = -99;
      ASSERT_EQ(feature.GetBookmark(i, path_out, text_out, &position_out) != 0, model.Exists(i))
          << i << " step " << step << " '" << test::Utf8(path_out) << "'";
      if (!model.Has(i)) {
        ASSERT_EQ(position_out, -99);
        continue;
      }
      const BookmarkOf& want = model.list[static_cast<size_t>(i)];
      ASSERT_EQ(FromText(path_out), want.path) << "step " << step;
      ASSERT_EQ(FromText(text_out), want.description);
      ASSERT_EQ(position_out, want.position_s);
    }
  }
  ASSERT_EQ(files.open_now, 0);
}

TEST(Oracle, Bookmarks) {
  ForCases(800, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
