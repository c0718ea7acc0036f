#include "base/memory/heap_text.h"

#include <string.h>

#include "base/text/wide.h"

namespace kelvo {

bool HeapText::Assign(const wchar_t* text) noexcept {
  return Assign(text, WideLength(text));
}

bool HeapText::Assign(const wchar_t* text, size_t length) noexcept {
  if (length >= static_cast<size_t>(-1) / sizeof(wchar_t)) return false;
  wchar_t* copy = static_cast<wchar_t*>(HeapAllocate((length + 1) * sizeof(wchar_t)));
  if (!copy) return false;
  memcpy(copy, text, length * sizeof(wchar_t));
  copy[length] = 0;
  HeapFree(std::exchange(text_, copy));
  return true;
}

bool HeapText::Reserve(size_t length) noexcept {
  if (text_ && length <= WideLength(text_)) return true;
  if (length >= static_cast<size_t>(-1) / sizeof(wchar_t)) return false;
  wchar_t* grown = static_cast<wchar_t*>(HeapResize(text_, (length + 1) * sizeof(wchar_t)));
  if (!grown) return false;
  if (!text_) grown[0] = 0;
  text_ = grown;
  return true;
}

void HeapText::Overwrite(const wchar_t* text, size_t length) noexcept {
  memcpy(text_, text, length * sizeof(wchar_t));
  text_[length] = 0;
}

}  // namespace kelvo
