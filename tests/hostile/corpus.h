// Files that mean harm: each class of them for every format, made from its grammar, and what is to
// be said of each.
#pragma once

#include <string>
#include <vector>

namespace kelvo::hostile {

struct HostileFile {
  const char* name;
  std::string bytes;
  std::string want;  // in the words of answers.cpp
};
using Corpus = std::vector<HostileFile>;

// `song` is a short Ogg Vorbis file, from which the others are made.
Corpus OggFiles(const std::string& song);
Corpus AsfFiles();
Corpus TaggedFiles();
Corpus M3uFiles();
Corpus PlsFiles();
Corpus AsxFiles();
Corpus BookmarkFiles();
Corpus PresetFiles();
Corpus Archives();
Corpus Bitmaps();
Corpus SkinTexts();

}  // namespace kelvo::hostile
