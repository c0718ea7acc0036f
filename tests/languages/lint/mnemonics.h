#pragma once

#include <string>

namespace kelvo::test {

// The text as it is drawn: "&Open" as "Open", "&&" as "&".
std::wstring WithoutMnemonic(const std::wstring& text);

// The letter that chooses an item or a control, in upper case; 0 when there is none.
wchar_t MnemonicOf(const std::wstring& text);

}  // namespace kelvo::test
