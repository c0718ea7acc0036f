#include "tests/languages/lint/mnemonics.h"

#include <windows.h>

namespace kelvo::test {

std::wstring WithoutMnemonic(const std::wstring& text) {
  std::wstring drawn;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;
    drawn += text[i];
  }
  return drawn;
}

wchar_t MnemonicOf(const std::wstring& text) {
  for (size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != L'&') continue;
    wchar_t letter = text[++i];
    if (letter == L'&') continue;
    CharUpperBuffW(&letter, 1);
    return letter;
  }
  return 0;
}

}  // namespace kelvo::test
