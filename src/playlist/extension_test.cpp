#include "playlist/extension_test.h"

#include "base/text/wide.h"

namespace kelvo {

int32_t PlaylistExtension(const wchar_t* path) noexcept {
  const size_t length = WideLength(path);
  if (length < 4) return -1;
  const wchar_t* end = path + length - 4;
  return CompareNoCase(end, L".m3u") == 0 || CompareNoCase(end, L".pls") == 0 ? 3 : -1;
}

}  // namespace kelvo
