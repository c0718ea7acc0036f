// language: what translators must know of a language library.
#include "base/files/file_system.h"
#include "base/text/wide.h"
#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/language_lint.h"

namespace kelvo::tool {
namespace {

[[nodiscard]] bool LoadResources(const wchar_t* path, PeResources* resources) noexcept {
  OpenFile<FileReader> file = SystemFiles().OpenRead(path, Share::kRead);
  if (!file) {
    PrintError(path, "cannot be opened");
  } else if (!resources->Load(*file)) {
    PrintError(path, "not a library for Windows");
  } else {
    return true;
  }
  return false;
}

// The library that lies beside a translation of it.
void LibraryBeside(const wchar_t* path, wchar_t (&library)[kTextCapacity]) noexcept {
  CopyWide(library, kTextCapacity, path, static_cast<size_t>(FileNameOf(path) - path));
  // A path that is too long is none that can be opened.
  static_cast<void>(AppendWide(library, kTextCapacity, L"Kelvo.dll"));
}

int CheckLanguages(const Arguments& arguments) noexcept {
  int result = 0;
  for (const wchar_t* path : arguments) {
    wchar_t beside[kTextCapacity];
    LibraryBeside(path, beside);
    const wchar_t* const library = arguments.library ? arguments.library : beside;
    const bool is_library = EqualNoCase(path, library);
    PeResources built_in, language;
    if (!LoadResources(library, &built_in) || (!is_library && !LoadResources(path, &language))) {
      result = 1;
      continue;
    }
    const PeResources& checked = is_library ? built_in : language;
    Findings findings(path);
    LintLanguage(built_in, checked, &findings);
    const bool measured = MeasureLanguage(built_in, checked, &findings);
    Print(Stream::kOut, path);
    Print(Stream::kOut, ": ");
    PrintNumber(Stream::kOut, findings.count());
    Print(Stream::kOut, measured ? " findings\n" : " findings; widths are measured on Windows\n");
    if (findings.count() > 0) result = 1;
  }
  return result;
}

}  // namespace

const Command kLanguageCommand = {
    L"language",
    "  language [--library KELVO.DLL] FILE...\n"
    "                         what is missing or cannot be used in language libraries, and, on\n"
    "                         Windows, which texts have no room on the device's screen; compared\n"
    "                         with the built-in texts of KELVO.DLL, by default the one beside "
    "FILE\n",
    1,
    kAnyNumber,
    kLibrary,
    0,
    CheckLanguages};

}  // namespace kelvo::tool
