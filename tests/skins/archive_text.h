#pragma once

#include <string>

#include "base/bytes/memory_source.h"
#include "skins/archive_skin.h"

namespace kelvo::test {

inline std::string Content(const SkinBlock& block) {
  if (!block.data()) return block.size() == 0 ? "none" : "a size without a block";
  return "<" + std::string(static_cast<const char*>(block.data()), block.size()) + ">";
}

// "<content>", or "none".
inline std::string ReadMember(const std::string& zip, const char* name = "main.bmp") {
  MemorySource source(zip.data(), zip.size());
  return Content(ReadFromSkinArchive(source, name));
}

}  // namespace kelvo::test
