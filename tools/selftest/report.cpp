#include "tools/selftest/report.h"

namespace kelvo::selftest {

void Report::Add(const char* ascii) noexcept {
  while (*ascii != 0 && length_ < kCapacity) text_[length_++] = *ascii++;
}

void Report::Add(uint32_t number) noexcept {
  char digits[11];
  size_t at = sizeof(digits) - 1;
  digits[at] = 0;
  do {
    digits[--at] = static_cast<char>('0' + number % 10);
    number /= 10;
  } while (number != 0);
  Add(digits + at);
}

void Report::AddHex(uint32_t number) noexcept {
  char digits[9] = {};
  for (int i = 7; i >= 0; --i, number >>= 4) digits[i] = "0123456789ABCDEF"[number & 15];
  Add(digits);
}

void Report::Add(const wchar_t* text) noexcept {
  for (; *text != 0 && length_ < kCapacity; ++text) {
    // The version text's two lines are one here.
    text_[length_++] = *text == '\r'                ? '/'
                       : *text < ' ' || *text > '~' ? '?'
                                                    : static_cast<char>(*text);
  }
}

}  // namespace kelvo::selftest
