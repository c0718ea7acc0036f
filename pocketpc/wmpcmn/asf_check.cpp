#include "pocketpc/wmpcmn/asf_check.h"

#include <string.h>

#include "base/bytes/little_endian.h"

namespace kelvo {
namespace {

constexpr size_t kGuidBytes = 16;
using Guid = uint8_t[kGuidBytes];

constexpr Guid kHeader = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                          0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr Guid kData = {0x36, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                        0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr Guid kFileProperties = {0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                  0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
constexpr Guid kStreamProperties = {0x91, 0x07, 0xDC, 0xB7, 0xB7, 0xA9, 0xCF, 0x11,
                                    0x8E, 0xE6, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};

// GUID and size; the header has a count of objects and two more bytes behind them.
constexpr size_t kObjectBytes = kGuidBytes + 8;
constexpr size_t kHeaderBytes = kObjectBytes + 6;
constexpr size_t kFilePropertiesBytes = 104;
constexpr size_t kStreamPropertiesBytes = 78;
constexpr uint32_t kMaxObjects = 10000;

bool Is(const uint8_t* object, const Guid& guid) noexcept {
  return memcmp(object, guid, kGuidBytes) == 0;
}

}  // namespace

bool IsAsfFile(ByteSource& source) noexcept {
  uint8_t object[kHeaderBytes];
  if (source.ReadAt(0, object, kHeaderBytes) != ReadResult::kOk || !Is(object, kHeader)) {
    return false;
  }
  const uint64_t end = LoadU64(object + kGuidBytes);
  const uint32_t count = LoadU32(object + kObjectBytes);
  if (end < kHeaderBytes || end > source.SizeBytes() || count > kMaxObjects) return false;

  bool has_properties = false;
  bool has_stream = false;
  uint64_t at = kHeaderBytes;
  for (uint32_t i = 0; i < count; ++i) {
    if (end - at < kObjectBytes) return false;
    if (source.ReadAt(at, object, kObjectBytes) != ReadResult::kOk) return false;
    const uint64_t bytes = LoadU64(object + kGuidBytes);
    if (bytes < kObjectBytes || bytes > end - at) return false;
    if (Is(object, kFileProperties) && bytes >= kFilePropertiesBytes) has_properties = true;
    if (Is(object, kStreamProperties) && bytes >= kStreamPropertiesBytes) has_stream = true;
    at += bytes;
  }
  return has_properties && has_stream &&
         source.ReadAt(end, object, kObjectBytes) == ReadResult::kOk && Is(object, kData);
}

}  // namespace kelvo
