#pragma once

#include <string>

namespace bench {

// Runs a program of the device with one word for its command line, the library beside it, in a
// system that has files in memory and nothing else. Prints the file of that name that it has
// written and returns its exit code.
int RunProgram(const std::string& library, const std::string& program, const std::string& report);

}  // namespace bench
