// Looks for faults in a language library, by comparing it with the built-in resources.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kelvo::test {

// One line a fault, in the order of the resources: "string 2001: missing". Both modules may be
// loaded as data files.
std::vector<std::string> LintLanguage(HMODULE built_in, HMODULE language);

}  // namespace kelvo::test
