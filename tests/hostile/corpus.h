// Files that mean harm: each class of them for every format, made from its grammar, and what is to
// be said of each.
#pragma once

#include <string>
#include <vector>

#include "tests/support/language_file.h"

namespace kelvo::hostile {

struct HostileFile {
  std::string name;
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
// With the system's word on which of them are libraries, or without.
Corpus LanguageFiles(bool loaded_by_system);
test::Resources WholeLanguage();

}  // namespace kelvo::hostile
