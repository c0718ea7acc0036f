#include "base/text/format.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

class Output {
 public:
  Output(wchar_t* dst, size_t capacity) noexcept : dst_(dst), left_(capacity - 1) { *dst = 0; }
  void Put(wchar_t c) noexcept {
    if (left_ == 0) return;
    --left_;
    *dst_++ = c;
    *dst_ = 0;
  }
  void Put(const wchar_t* text) noexcept {
    while (*text) Put(*text++);
  }

 private:
  wchar_t* dst_;
  size_t left_;
};

void PutNumber(Output& out, int32_t number, size_t width) noexcept {
  wchar_t digits[12];
  size_t length = FormatDecimal(digits, number);
  const wchar_t* text = digits;
  if (number < 0 && length < width) {
    out.Put(*text++);
    --length;
    --width;
  }
  for (; length < width; --width) out.Put(L'0');
  out.Put(text);
}

}  // namespace

bool FormatWide(wchar_t* dst, size_t capacity, const wchar_t* format,
                std::initializer_list<FormatArgument> arguments) noexcept {
  Output out(dst, capacity);
  const FormatArgument* argument = arguments.begin();
  for (; *format; ++format) {
    if (*format != L'%') {
      out.Put(*format);
      continue;
    }
    ++format;
    if (*format == L'%') {
      out.Put(L'%');
      continue;
    }
    size_t width = 0;
    if (format[0] == L'0' && format[1] >= L'1' && format[1] <= L'9') {
      width = static_cast<size_t>(format[1] - L'0');
      format += 2;
    }
    const bool fits =
        argument != arguments.end() && ((*format == L's' && width == 0 && argument->is_text()) ||
                                        (*format == L'd' && !argument->is_text()));
    if (!fits) {
      *dst = 0;
      return false;
    }
    if (argument->is_text()) {
      out.Put(argument->text());
    } else {
      PutNumber(out, argument->number(), width);
    }
    ++argument;
  }
  if (argument == arguments.end()) return true;
  *dst = 0;
  return false;
}

}  // namespace kelvo
