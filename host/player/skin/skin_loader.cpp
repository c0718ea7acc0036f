#include "host/player/skin/skin_loader.h"

#include "host/player/skin/bmp.h"

namespace velmora {
namespace {

bool IsText(kelvo::SkinFile file) {
  return file == kelvo::kSkinPlaylistText || file == kelvo::kSkinColours;
}

bool ReadImage(SkinFiles& files, kelvo::SkinFile file, Bitmap* image) {
  std::string bytes;
  return files.Read(file, &bytes) &&
         DecodeBmp(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), image);
}

}  // namespace

Skin LoadSkin(SkinFiles& files, const Skin& base) {
  Skin skin = base;
  for (int number = kelvo::kSkinBalance; number <= kelvo::kSkinVolume; ++number) {
    const auto file = static_cast<kelvo::SkinFile>(number);
    if (IsText(file)) continue;
    const bool has = ReadImage(files, file, &skin.images[file]);
    // The two files of digits belong together: the base's better ones must not hide the skin's.
    if (has && file == kelvo::kSkinNumbers) skin.images[kelvo::kSkinNumbersEx] = Bitmap();
  }
  std::string text;
  if (files.Read(kelvo::kSkinColours, &text)) ReadVisualColours(text, skin.visual_colours);
  if (files.Read(kelvo::kSkinPlaylistText, &text)) ReadPlaylistStyle(text, &skin.playlist);
  return skin;
}

bool IsSkin(SkinFiles& files) {
  for (int number = kelvo::kSkinBalance; number <= kelvo::kSkinVolume; ++number) {
    const auto file = static_cast<kelvo::SkinFile>(number);
    Bitmap image;
    if (!IsText(file) && ReadImage(files, file, &image)) return true;
  }
  return false;
}

}  // namespace velmora
