// The player's texts in the user's language; their numbers are in host/res/text_ids.h.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

#include "host/res/text_ids.h"

namespace velmora {

// From now on; English for a language that has none.
void UseTexts(LANGID language);

std::wstring Text(int id);
// Each %s is replaced by the next of the values.
std::wstring Text(int id, std::initializer_list<std::wstring> values);
// Of one language; empty when it lacks the text.
std::wstring TextIn(LANGID language, int id);

// A menu item's text with its keys, such as "Ctrl+Shift+B", which are named in the user's language.
std::wstring WithKeys(int id, const std::wstring& keys);

}  // namespace velmora
