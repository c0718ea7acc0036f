#pragma once

#include "base/bytes/byte_source.h"
#include "skins/skin_block.h"

namespace kelvo {

// More is no skin file but an attempt to fill the device's memory.
constexpr uint32_t kMostSkinBytes = 16u << 20;

// Reads the member of a zip archive that is called `name`; no block when there is none or when it
// cannot be read and verified: damaged, encrypted, of an unknown method, over kMostSkinBytes, or
// holding more or fewer bytes than it claims.
//
// Skins are packed in many ways, so the best match counts: the exact name at the top level, then
// the name in other letters' case there, then that behind one folder ("/" or "\" between). Of equal
// matches the archive's first one.
SkinBlock ReadFromSkinArchive(ByteSource& archive, const char* name) noexcept;

}  // namespace kelvo
