#pragma once

#include <string_view>

#include "host/player/skin/skin.h"

namespace velmora {

// Where the files of one skin come from.
class SkinFiles {
 public:
  // The file's bytes; false when the skin lacks it.
  virtual bool Read(kelvo::SkinFile file, std::string* bytes) = 0;

 protected:
  ~SkinFiles() = default;
};

// Reads a skin file by file: what it lacks, or has in a form that cannot be read, is the base's.
Skin LoadSkin(SkinFiles& files, const Skin& base);

// Whether these are the files of a skin at all: one of its bitmaps can be read.
bool IsSkin(SkinFiles& files);

// The two text files of a skin. Both are written by hand and read leniently.

// viscolor.txt: lines of red, green, blue, anything; one line a colour. Lines without three numbers
// are skipped, colours that the text lacks stay as they are.
void ReadVisualColours(std::string_view text, Colour (&colours)[kVisualColours]);

// pledit.txt: lines NAME=VALUE, colours as #RRGGBB. What is missing or makes no sense stays.
void ReadPlaylistStyle(std::string_view text, PlaylistStyle* style);

}  // namespace velmora
