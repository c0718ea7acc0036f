// Formatting with a format text that may come from a language library: a format that asks for other
// arguments than are given, or for more, is refused, so a broken translation cannot read wild
// memory.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <initializer_list>

namespace kelvo {

class FormatArgument {
 public:
  FormatArgument(int32_t number) noexcept : number_(number) {}   // NOLINT: implicit
  FormatArgument(const wchar_t* text) noexcept : text_(text) {}  // NOLINT: implicit
  bool is_text() const noexcept { return text_ != nullptr; }
  int32_t number() const noexcept { return number_; }
  const wchar_t* text() const noexcept { return text_; }

 private:
  const wchar_t* text_ = nullptr;
  int32_t number_ = 0;
};

// Understands %d, %i, %u, %s and %%, and widths: %5d and %5s fill up with blanks, %02d with zeros.
// True when the format's specifiers are those of the first arguments, in their order; otherwise
// *dst is the empty text. What does not fit in `capacity` characters is cut off; dst is always
// terminated.
bool FormatWide(wchar_t* dst, size_t capacity, const wchar_t* format,
                std::initializer_list<FormatArgument> arguments) noexcept;

}  // namespace kelvo
