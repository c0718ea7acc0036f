#pragma once

#include <windows.h>

#include <vector>

#include "host/library.h"

namespace velmora {

constexpr LANGID kEnglish = 1033;  // built into the library

// English, and the languages whose libraries lie beside the program and which the system can name,
// by their numbers.
std::vector<LANGID> FindLanguages();

// The user's choice; English when there is none.
LANGID ChosenLanguage();
// Stores the choice and switches the library to it; false when it cannot be stored.
bool ChooseLanguage(const Library& library, LANGID language);

}  // namespace velmora
