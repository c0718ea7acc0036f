#include <gtest/gtest.h>

#include "base/memory/heap.h"
#include "catalog/media/id3v1.h"
#include "catalog/tag_editor/tag_edit.h"
#include "tests/oracles/cases.h"
#include "tests/oracles/id3v1_model.h"
#include "tests/support/memory_files.h"
#include "tests/support/wide_text.h"

namespace kelvo::oracle {
namespace {

using test::Utf8;
using test::Wide;

std::string Whole(const TagField& field) {
  return {field, sizeof(field)};
}

std::string FieldBytes(Dice& dice, size_t length) {
  std::string bytes = dice.Row(" |  |\0|\0\0\0\0|T|TAG|a|b c|\xE9|\xDF", 14);
  while (bytes.size() < length) bytes += dice.OneIn(2) ? ' ' : dice.OneIn(4) ? 'x' : '\0';
  return bytes.substr(0, length);
}

std::string Typed(Dice& dice, size_t most) {
  return dice.Row("a|b c| |\xE9|0123456789", 6).substr(0, most);
}

void Compare(Dice& dice) {
  const std::string path = dice.Word("\\d\\a.mp3|a.mp3|\\\xE9.mp3|\\x\\|b|");
  std::string file = FieldBytes(dice, dice.Roll(140));
  if (!dice.OneIn(4)) file += "TAG" + FieldBytes(dice, 124) + static_cast<char>(dice.Roll(256));
  if (dice.OneIn(8)) file += FieldBytes(dice, dice.Roll(3));
  if (dice.OneIn(8)) file.resize(dice.Roll(131));

  test::MemoryFiles files;
  const uint32_t attributes = dice.OneIn(2) ? kAttributeNormal : kAttributeReadOnly;
  files.Put("\\f.mp3", file, attributes);
  MediaEntry entry;
  ASSERT_TRUE(entry.path.Assign(L"\\f.mp3"));
  const auto want = ReadId3v1Model(file);
  ASSERT_EQ(ReadId3v1(files, &entry), want.has_value());
  ASSERT_EQ(static_cast<bool>(entry.tag), want.has_value());
  if (want) {
    ASSERT_EQ(Whole(entry.tag->title), want->title);
    ASSERT_EQ(Whole(entry.tag->artist), want->artist);
    ASSERT_EQ(Whole(entry.tag->album), want->album);
    ASSERT_EQ(Whole(entry.tag->genre), want->genre);
  }
  ASSERT_TRUE(entry.path.Assign(Wide(ToUtf8(path))));
  char title[kTextCapacity];
  TagField field;
  TitleText(entry, title);
  ASSERT_EQ(title, TitleModel(want, path));
  ArtistText(entry, field);
  ASSERT_EQ(field, TextOrUnknown(want, &Id3v1Texts::artist));
  AlbumText(entry, field);
  ASSERT_EQ(field, TextOrUnknown(want, &Id3v1Texts::album));
  GenreText(entry, field);
  ASSERT_EQ(field, TextOrUnknown(want, &Id3v1Texts::genre));

  ASSERT_TRUE(entry.path.Assign(L"\\f.mp3"));
  if (dice.OneIn(4)) entry.tag.Reset();
  if (dice.OneIn(8)) entry.tag.Reset(HeapNew<TagBlock>());  // of another time
  for (int round = 0; round < 2; ++round) {
    TagEdit edit;
    edit.Load(files, entry);
    TagEditorModel model(file, static_cast<bool>(entry.tag));
    TagTexts shown;
    edit.Show(&shown);
    const EditorTexts texts = model.Shown();
    ASSERT_EQ(Utf8(shown.title), ToUtf8(texts.title));
    ASSERT_EQ(Utf8(shown.artist), ToUtf8(texts.artist));
    ASSERT_EQ(Utf8(shown.album), ToUtf8(texts.album));
    ASSERT_EQ(Utf8(shown.year), ToUtf8(texts.year));
    ASSERT_EQ(Utf8(shown.track), texts.track);
    ASSERT_EQ(Utf8(shown.comment), ToUtf8(texts.comment));

    const EditorTexts typed = {Typed(dice, 30),
                               Typed(dice, 30),
                               Typed(dice, 30),
                               Typed(dice, 4),
                               dice.Word("||0|7|12|300|x|1x|256"),
                               Typed(dice, 30)};
    const auto type = [](const std::string& text, wchar_t* to, size_t capacity) {
      CopyWide(to, capacity, Wide(ToUtf8(text)));
    };
    type(typed.title, shown.title, 31);
    type(typed.artist, shown.artist, 31);
    type(typed.album, shown.album, 31);
    type(typed.year, shown.year, 5);
    type(typed.track, shown.track, 12);
    type(typed.comment, shown.comment, 31);
    const uint32_t genre = dice.OneIn(4) ? 0xFFFFFFFF : dice.Roll(148);
    edit.Build(shown, genre);
    ASSERT_TRUE(edit.Write(files, L"\\f.mp3"));
    file = model.Update(file, typed, genre);
    ASSERT_EQ(files.Find("\\f.mp3")->bytes, file);
    ASSERT_EQ(files.Find("\\f.mp3")->attributes, attributes);
    entry.tag.Reset();
    ASSERT_TRUE(ReadId3v1(files, &entry));
  }
}

TEST(Oracle, Id3v1) {
  ForCases(3000, Compare);
}

}  // namespace
}  // namespace kelvo::oracle
