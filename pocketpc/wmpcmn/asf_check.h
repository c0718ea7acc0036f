#pragma once

#include "base/bytes/byte_source.h"

namespace kelvo {

// True when the bytes begin with a whole Windows Media header, with its file properties and a
// stream, and a data object behind it. The system's readers do not all survive less: one waits
// forever on a file that is none.
bool IsAsfFile(ByteSource& source) noexcept;

}  // namespace kelvo
