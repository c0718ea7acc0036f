// One command a file; commands.cpp lists them.
#pragma once

#include <stddef.h>

#include "base/files/file_system.h"

namespace kelvo::tool {

// What follows the command's name, options taken out. A path names a file of this machine.
struct Arguments {
  const wchar_t* const* paths;
  size_t count;
  bool forced;             // --force
  const wchar_t* device;   // --device FOLDER, or null
  const wchar_t* library;  // --library FILE, or null

  const wchar_t* const* begin() const noexcept { return paths; }
  const wchar_t* const* end() const noexcept { return paths + count; }
};

// Options, as bits.
inline constexpr unsigned kForce = 1, kDevice = 2, kLibrary = 4;

struct Command {
  const wchar_t* name;
  const char* help;  // what --help shows of it
  size_t least_paths, most_paths;
  unsigned options;                                 // which there are
  unsigned required;                                // and which must be there
  int (*run)(const Arguments& arguments) noexcept;  // gives the exit code, 0 or 1
};

inline constexpr size_t kAnyNumber = static_cast<size_t>(-1);

extern const Command kTagsCommand, kPlaylistCommand, kSaveCommand;
extern const Command kLintCommand, kRepairCommand, kSkinCommand, kLanguageCommand, kEffectsCommand;

}  // namespace kelvo::tool
