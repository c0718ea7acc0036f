// Any bytes as a skin archive: a block within the limit, or nothing.
#include <stdlib.h>

#include "base/bytes/memory_source.h"
#include "skins/skin_feature.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const char* name : {"main.bmp", "pledit.txt"}) {
    kelvo::MemorySource source(data, size);
    const kelvo::SkinBlock block = kelvo::ReadFromSkinArchive(source, name);
    if (block.data() ? block.size() > kelvo::kMostSkinBytes : block.size() != 0) abort();
  }
  return 0;
}
