#include "playlist/extension_test.h"

#include "base/text/wide.h"

namespace kelvo {

int32_t PlaylistExtension(const wchar_t* path) noexcept {
  const size_t length = WideLength(path);
  if (length < 4) return -1;
  const wchar_t* end = path + length - 4;
  return EqualAsciiNoCase(end, L".m3u") || EqualAsciiNoCase(end, L".pls") ? 3 : -1;
}

}  // namespace kelvo
