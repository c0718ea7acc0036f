#pragma once

#include <windows.h>

#include "tests/languages/lint/findings.h"

namespace kelvo::test {

// The string tables: every text there, terminated, with the built-in one's specifiers, and short
// enough for where it is shown.
void LintStrings(HMODULE built_in, HMODULE language, Findings* findings);

}  // namespace kelvo::test
