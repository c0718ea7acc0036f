#pragma once

#include <ostream>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"

namespace velmora::test {

// A pixel of a skin's bitmap.
struct Origin {
  int file, x, y;
};

inline bool operator==(const Origin& a, const Origin& b) {
  return a.file == b.file && a.x == b.x && a.y == b.y;
}

inline std::ostream& operator<<(std::ostream& out, const Origin& o) {
  return out << "file " << o.file << " at " << o.x << "," << o.y;
}

// A skin in which every pixel tells where it comes from.
inline Skin MakeTracedSkin(bool better_numbers) {
  Skin skin;
  for (int file = kelvo::kSkinBalance; file <= kelvo::kSkinVolume; ++file) {
    if (file == kelvo::kSkinNumbersEx && !better_numbers) continue;
    Bitmap image(344, 440);
    for (int y = 0; y < image.height; ++y) {
      for (int x = 0; x < image.width; ++x) {
        image.Row(y)[x] = static_cast<Colour>(file << 18 | y << 9 | x);
      }
    }
    skin.images[file] = image;
  }
  for (int i = 0; i < kVisualColours; ++i) {
    skin.visual_colours[i] = 0xFF0000u + static_cast<Colour>(i);
  }
  return skin;
}

inline const Skin& TracedSkin(bool better_numbers = true) {
  static const Skin with = MakeTracedSkin(true);
  static const Skin without = MakeTracedSkin(false);
  return better_numbers ? with : without;
}

inline Origin OriginOf(const Canvas& canvas, Point p) {
  const Colour c = canvas.picture().At(p.x, p.y);
  return {static_cast<int>(c >> 18), static_cast<int>(c & 511), static_cast<int>(c >> 9 & 511)};
}

}  // namespace velmora::test
