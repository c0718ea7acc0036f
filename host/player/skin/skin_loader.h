#pragma once

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

}  // namespace velmora
