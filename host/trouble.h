// Why a file cannot be played: what can be seen of it from outside, once a plug-in has refused it.
#pragma once

#include <string>

namespace velmora {

class Library;

enum class Trouble {
  kNone,
  kMissing,     // there is no such file
  kFolder,      // a folder, not a file
  kUnreadable,  // the system refuses it
  kEmpty,       // without a byte
  kOtherKind,   // of no kind that is played
  kNotOffered,  // the library lacks the plug-in, or that its player control
  kName,        // Windows Media with letters that the system's code page lacks
  kDamaged,     // not what its name says
};

// What is wrong with a file that a plug-in refused. One that looks sound from outside is damaged.
Trouble TroubleOf(const Library& library, const std::wstring& path);

// In words that follow the file's name and a colon.
std::wstring Describe(Trouble trouble);

}  // namespace velmora
