#include "base/files/c_file.h"

#include "base/native/utf8.h"
#include "base/text/wide.h"

namespace kelvo {

FILE* OpenCFile(const wchar_t* path) noexcept {
  char utf8[kTextCapacity * 3];
  WideToUtf8(path, utf8, sizeof(utf8));
  for (char* c = utf8; *c; ++c) {
    if (*c == '\\') *c = '/';
  }
  return fopen(utf8, "rb");
}

}  // namespace kelvo
