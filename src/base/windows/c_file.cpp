#include "base/files/c_file.h"

namespace kelvo {

FILE* OpenCFile(const wchar_t* path) noexcept {
  return _wfopen(path, L"rb");
}

}  // namespace kelvo
