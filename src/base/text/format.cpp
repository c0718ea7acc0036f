#include "base/text/format.h"

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
  void Put(wchar_t c, size_t times) noexcept {
    while (times-- > 0) Put(c);
  }
  void Put(const wchar_t* text) noexcept {
    while (*text) Put(*text++);
  }

 private:
  wchar_t* dst_;
  size_t left_;
};

struct Specifier {
  bool zeros;    // fill up with zeros, not with blanks
  size_t width;  // at least so many characters
  wchar_t kind;  // the letter; 0 when the format ends before it
};

// Reads what follows a '%' and leaves *at on the letter, or on the end.
Specifier ReadSpecifier(const wchar_t** at) noexcept {
  constexpr size_t kMostDigits = 2;
  Specifier specifier = {};
  specifier.zeros = **at == L'0';
  if (specifier.zeros) ++*at;
  for (size_t i = 0; i < kMostDigits && **at >= L'0' && **at <= L'9'; ++i) {
    specifier.width = specifier.width * 10 + static_cast<size_t>(*(*at)++ - L'0');
  }
  specifier.kind = **at;
  return specifier;
}

bool Fits(const Specifier& specifier, const FormatArgument& argument) noexcept {
  switch (specifier.kind) {
    case L's':
      return argument.is_text() && !specifier.zeros;
    case L'd':
    case L'i':
    case L'u':
      return !argument.is_text();
    default:
      return false;
  }
}

void PutText(Output& out, const wchar_t* text, size_t width) noexcept {
  size_t length = 0;
  while (length < width && text[length] != 0) ++length;
  out.Put(L' ', width - length);
  out.Put(text);
}

void PutNumber(Output& out, int32_t number, const Specifier& specifier) noexcept {
  const bool negative = specifier.kind != L'u' && number < 0;
  uint32_t rest = static_cast<uint32_t>(number);
  if (negative) rest = 0 - rest;
  wchar_t digits[10];  // the last one first
  size_t count = 0;
  do {
    digits[count++] = static_cast<wchar_t>(L'0' + rest % 10);
    rest /= 10;
  } while (rest > 0);
  const size_t length = count + (negative ? 1 : 0);
  const size_t fill = specifier.width > length ? specifier.width - length : 0;
  if (!specifier.zeros) out.Put(L' ', fill);
  if (negative) out.Put(L'-');
  if (specifier.zeros) out.Put(L'0', fill);
  while (count > 0) out.Put(digits[--count]);
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
    const Specifier specifier = ReadSpecifier(&format);
    if (argument == arguments.end() || !Fits(specifier, *argument)) {
      *dst = 0;
      return false;
    }
    if (argument->is_text()) {
      PutText(out, argument->text(), specifier.width);
    } else {
      PutNumber(out, argument->number(), specifier);
    }
    ++argument;
  }
  return true;
}

}  // namespace kelvo
