// The sample files that scripts/make_media.sh writes; tests run in build/<preset>/bin.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace kelvo::test {

inline std::string MediaPath(const std::string& name) {
  return "..\\..\\media\\" + name;
}

inline std::vector<char> ReadMedia(const std::string& name) {
  std::vector<char> bytes;
  FILE* file = fopen(("../../media/" + name).c_str(), "rb");
  if (!file) {
    ADD_FAILURE() << "no sample " << name << "; run scripts/make_media.sh";
    return bytes;
  }
  char chunk[4096];
  while (const size_t got = fread(chunk, 1, sizeof(chunk), file)) {
    bytes.insert(bytes.end(), chunk, chunk + got);
  }
  fclose(file);
  return bytes;
}

}  // namespace kelvo::test
