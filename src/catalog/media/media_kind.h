#pragma once

#include <stdint.h>

namespace kelvo {

// What a file is, decided by the three letters behind the point. Other parts of the library use the
// numbers as they stand.
enum class MediaKind : int32_t {
  kNone = -1,
  kM3u = 1,
  kMpeg = 2,
  kOgg = 3,
  kPls = 4,
  kWma = 5,
  kAsx = 6,
};

MediaKind MediaKindOf(const wchar_t* path) noexcept;

}  // namespace kelvo
