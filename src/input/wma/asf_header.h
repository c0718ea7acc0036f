// Media information out of the header of an ASF (Windows Media) file; docs/formats/asf-header.md.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "base/bytes/byte_source.h"
#include "base/text/wide.h"
#include "kelvo/media_info.h"

namespace kelvo {

// A header is a file header and objects. Both begin with a GUID, in the byte order of files, and a
// 64-bit size that includes what it stands in; the file header goes on with a 32-bit count of the
// objects and two bytes.
using AsfGuid = uint8_t[16];
inline constexpr size_t kAsfObjectBytes = sizeof(AsfGuid) + 8;
inline constexpr size_t kAsfHeaderBytes = kAsfObjectBytes + 6;
inline constexpr AsfGuid kAsfHeader = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                       0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
inline constexpr AsfGuid kAsfFileProperties = {0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                               0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
inline bool IsAsfObject(const uint8_t* bytes, const AsfGuid& guid) noexcept {
  return memcmp(bytes, guid, sizeof(guid)) == 0;
}

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

// True when the source begins with an ASF header; a header that breaks off gives what came before.
// When false (no such header, or no memory), *out is all zero and empty. `path` is only used for
// the display title. Reads no more than the file has bytes.
[[nodiscard]] bool ReadAsfInfo(ByteSource& source, const wchar_t* path, AsfInfo* out) noexcept;

}  // namespace kelvo
