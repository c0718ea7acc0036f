#include <gtest/gtest.h>

#include <map>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin_loader.h"
#include "tests/host/views/bmp_builder.h"

namespace velmora {
namespace {

Bitmap Numbered(int width, int height) {
  Bitmap bitmap(width, height);
  for (size_t i = 0; i < bitmap.pixels.size(); ++i) bitmap.pixels[i] = static_cast<Colour>(i + 1);
  return bitmap;
}

TEST(CanvasTest, DrawsTheCommonPartAndNothingElse) {
  const Bitmap image = Numbered(3, 2);  // 1 2 3 / 4 5 6
  const struct {
    const char* name;
    Rect source;
    Point to;
    std::vector<Colour> want;  // of a canvas of 3 by 2
  } cases[] = {
      {"whole", {0, 0, 3, 2}, {0, 0}, {1, 2, 3, 4, 5, 6}},
      {"a part", {1, 1, 2, 1}, {0, 0}, {5, 6, 0, 0, 0, 0}},
      {"over the left upper corner", {0, 0, 3, 2}, {-1, -1}, {5, 6, 0, 0, 0, 0}},
      {"over the right lower corner", {0, 0, 3, 2}, {2, 1}, {0, 0, 0, 0, 0, 1}},
      {"more than the image has", {2, 1, 100, 100}, {0, 0}, {6, 0, 0, 0, 0, 0}},
      {"left of the image", {-1, 0, 3, 1}, {0, 0}, {0, 1, 2, 0, 0, 0}},
      {"beside the image", {3, 0, 3, 2}, {0, 0}, {0, 0, 0, 0, 0, 0}},
      {"beside the canvas", {0, 0, 3, 2}, {3, 0}, {0, 0, 0, 0, 0, 0}},
      {"nothing", {0, 0, 0, 0}, {0, 0}, {0, 0, 0, 0, 0, 0}},
      {"negative size", {2, 1, -1, -1}, {0, 0}, {0, 0, 0, 0, 0, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Canvas canvas({3, 2});
    canvas.Draw(image, c.source, c.to);
    EXPECT_EQ(canvas.picture().pixels, c.want);
  }
}

TEST(CanvasTest, DifferenceIsTheSmallestRectangle) {
  const Bitmap before(4, 3);
  Bitmap after = before;
  EXPECT_TRUE(Difference(before, after).empty());
  after.Row(1)[1] = 1;
  EXPECT_EQ(Difference(before, after), (Rect{1, 1, 1, 1}));
  after.Row(2)[3] = 1;
  EXPECT_EQ(Difference(before, after), (Rect{1, 1, 3, 2}));
  EXPECT_EQ(Difference(Bitmap(), after), (Rect{0, 0, 4, 3})) << "another size: all of it";
}

// (Damaged texts: tests/hostile/skin_files.cpp.)
TEST(SkinTextsTest, AreReadAsPeopleWriteThem) {
  Colour colours[kVisualColours] = {};
  ReadVisualColours("// a comment\n1,2,3, // dots\r\n\n  16 , 32 ,\t64\n255,255,255", colours);
  EXPECT_EQ(colours[0], 0x010203u);
  EXPECT_EQ(colours[1], 0x102040u);
  EXPECT_EQ(colours[2], 0xFFFFFFu);
  PlaylistStyle style;
  ReadPlaylistStyle(
      "[Text]\r\nNormal=#112233\r\n CURRENT = abcdef\r\nNormalBG=#445566\nSelectedBG=#12345\n"
      "Font= Comic Mono \nmbFG=#010203\n",
      &style);
  EXPECT_EQ(style.text, 0x112233u);
  EXPECT_EQ(style.current, 0xABCDEFu);
  EXPECT_EQ(style.background, 0x445566u);
  EXPECT_EQ(style.selected, PlaylistStyle().selected) << "too short";
  EXPECT_EQ(style.font, "Comic Mono");
}

// A skin in memory.
class MemorySkin final : public SkinFiles {
 public:
  std::map<int, std::string> files;

  bool Read(kelvo::SkinFile file, std::string* bytes) override {
    const auto found = files.find(file);
    if (found == files.end()) return false;
    *bytes = found->second;
    return true;
  }
};

std::string OnePixel(char grey) {
  test::BmpBuilder bmp;
  bmp.width = bmp.height = 1;
  bmp.pixels = std::string(3, grey);
  return bmp.Build();
}

Skin BaseSkin() {
  MemorySkin files;
  for (int i = kelvo::kSkinBalance; i <= kelvo::kSkinVolume; ++i) files.files[i] = OnePixel(1);
  files.files[kelvo::kSkinPlaylistText] = "Normal=#000001\nCurrent=#000001";
  files.files[kelvo::kSkinColours] = "0,0,1\n0,0,1";
  return LoadSkin(files, Skin());
}

TEST(SkinLoaderTest, FileByFileOverTheBase) {
  const Skin base = BaseSkin();
  MemorySkin files;
  files.files[kelvo::kSkinMain] = OnePixel(2);
  files.files[kelvo::kSkinText] = "no bitmap";
  files.files[kelvo::kSkinVolume] = "";
  files.files[kelvo::kSkinPlaylistText] = "Normal=#000002";
  files.files[kelvo::kSkinColours] = "0,0,2";
  const Skin skin = LoadSkin(files, base);
  EXPECT_EQ(skin.image(kelvo::kSkinMain).At(0, 0), 0x020202u);
  EXPECT_EQ(skin.image(kelvo::kSkinText).At(0, 0), 0x010101u);
  EXPECT_EQ(skin.image(kelvo::kSkinVolume).At(0, 0), 0x010101u);
  EXPECT_EQ(skin.playlist.text, 2u);
  EXPECT_EQ(skin.playlist.current, 1u);
  EXPECT_EQ(skin.visual_colours[0], 2u);
  EXPECT_EQ(skin.visual_colours[1], 1u);
}

TEST(SkinLoaderTest, TheBasesBetterDigitsDoNotHideTheSkins) {
  MemorySkin files;
  files.files[kelvo::kSkinNumbers] = OnePixel(2);
  EXPECT_TRUE(LoadSkin(files, BaseSkin()).image(kelvo::kSkinNumbersEx).empty());
  files.files[kelvo::kSkinNumbersEx] = OnePixel(3);
  EXPECT_EQ(LoadSkin(files, BaseSkin()).image(kelvo::kSkinNumbersEx).At(0, 0), 0x030303u);
}

TEST(SkinLoaderTest, OneBitmapMakesASkin) {
  MemorySkin files;
  files.files[kelvo::kSkinPlaylistText] = "Normal=#000002";
  files.files[kelvo::kSkinMain] = "no bitmap";
  EXPECT_FALSE(IsSkin(files));
  files.files[kelvo::kSkinBalance] = OnePixel(2);
  EXPECT_TRUE(IsSkin(files));
}

}  // namespace
}  // namespace velmora
