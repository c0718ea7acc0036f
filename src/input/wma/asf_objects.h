// The objects of an ASF header that are read. Each function starts behind the object's 24-byte
// header and leaves the cursor behind what it read, or failed when the object breaks off; values
// that were complete by then are kept.
#pragma once

#include "input/wma/asf_cursor.h"
#include "input/wma/asf_header.h"

namespace kelvo {

void ReadContentDescription(AsfCursor& cursor, AsfInfo* out) noexcept;
void ReadExtendedContent(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept;
void ReadCodecList(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept;

}  // namespace kelvo
