#include "catalog/media/tag_block.h"

#include <string.h>

#include "base/text/ansi.h"

namespace kelvo {

void TrimField(char* bytes, size_t length) noexcept {
  while (length > 0 && (bytes[length - 1] == ' ' || bytes[length - 1] == 0)) bytes[--length] = 0;
}

void CopyToField(const wchar_t* text, TagField& field) noexcept {
  memset(field, 0, sizeof(field));
  WideToAnsi(text, kTagFieldBytes - 1, field, kTagFieldBytes - 2, nullptr);
}

}  // namespace kelvo
