// A skin, decoded: what the views draw with.
#pragma once

#include <kelvo/skin_reader.h>

#include <string>

#include "host/player/skin/bitmap.h"

namespace velmora {

constexpr int kVisualColours = 24;

// Places in Skin::visual_colours.
enum : int {
  kVisualBackground = 0,
  kVisualDots = 1,
  kVisualSpectrumTop = 2,   // down to 17
  kVisualWaveLoudest = 22,  // 18 is the colour of the middle
  kVisualWaveMiddle = 18,
  kVisualPeaks = 23,
};

struct PlaylistStyle {
  Colour text = 0x00FF00;
  Colour current = 0xFFFFFF;
  Colour background = 0;
  Colour selected = 0x0000C6;  // background of selected rows
  std::string font = "Arial";
};

struct Skin {
  // By the number of the skin file; places of text files are empty. kSkinNumbersEx is empty for
  // most skins: it replaces kSkinNumbers where it exists.
  Bitmap images[kelvo::kSkinVolume + 1];
  Colour visual_colours[kVisualColours] = {};
  PlaylistStyle playlist;

  const Bitmap& image(kelvo::SkinFile file) const { return images[file]; }
};

}  // namespace velmora
