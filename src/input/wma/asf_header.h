// Media information out of the header of an ASF (Windows Media) file; docs/formats/asf-header.md.
#pragma once

#include <stdint.h>

#include "base/bytes/byte_source.h"
#include "base/text/wide.h"
#include "kelvo/media_info.h"

namespace kelvo {

// The track number of a file that names none.
inline constexpr int32_t kNoAsfTrack = 100000;

struct AsfInfo {
  wchar_t display_title[kTextCapacity];  // "author - title", or the file's bare name without both
  wchar_t title[kTextCapacity];
  wchar_t author[kTextCapacity];
  wchar_t album[kTextCapacity];
  MediaInfo format;  // the sample rate is the kHz number of the codec description
  uint32_t length_ms;
  uint32_t sdk_version;  // the number that "WMFSDKVersion" begins with
};

void ClearAsfInfo(AsfInfo* info) noexcept;

// True when the source begins with an ASF header; a header that breaks off gives what came before.
// When false (no such header, or no memory), *out is all zero and empty. `path` is only used for
// the display title. Reads no more than the file has bytes.
[[nodiscard]] bool ReadAsfInfo(ByteSource& source, const wchar_t* path, AsfInfo* out) noexcept;

}  // namespace kelvo
