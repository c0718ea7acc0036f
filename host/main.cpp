// The reference host: shows how a program loads the library and drives its features. It knows the
// library by include/kelvo/ alone.
#include <windows.h>

#include <shellapi.h>

#include "host/command.h"
#include "host/console.h"
#include "host/library.h"

namespace {

constexpr wchar_t kUsage[] =
    L"usage: velmora play [--wav OUT] FILE...   play files (to a WAV file with --wav)\n"
    L"       velmora resume [--wav OUT]         go on where Ctrl-C ended `play`\n"
    L"       velmora bookmarks                  show the bookmarks in their window\n"
    L"       velmora bookmarks --list | --add PATH SECONDS TEXT\n"
    L"       velmora presets [DIR]              list the equalizer presets below DIR\n"
    L"       velmora skin PATH [N [OUT]]        list a skin's files, or write number N to a file\n"
    L"       velmora version                    tell the library's version\n";

int VersionCommand(const velmora::Library& library, const velmora::Words&) {
  std::wstring text = library.Get<const wchar_t>(kelvo::kFeatureVersionText);
  for (wchar_t& c : text) {
    if (c == L'\r') c = L'\n';
  }
  velmora::Print(L"%ls\n", text.c_str());
  return 0;
}

constexpr struct {
  const wchar_t* name;
  velmora::Command run;
} kCommands[] = {
    {L"play", velmora::PlayCommand},           {L"resume", velmora::ResumeCommand},
    {L"bookmarks", velmora::BookmarksCommand}, {L"presets", velmora::PresetsCommand},
    {L"skin", velmora::SkinCommand},           {L"version", VersionCommand},
};

}  // namespace

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  const velmora::Words words(arguments + (count > 1 ? 2 : 1), arguments + count);
  const std::wstring command = count > 1 ? arguments[1] : L"";
  LocalFree(arguments);
  if (command == L"--help" || command == L"help") {
    velmora::Print(L"%ls", kUsage);
    return 0;
  }
  const velmora::Library library;
  if (!library.loaded()) {
    velmora::PrintError(L"velmora: Kelvo.dll cannot be loaded\n");
    return 1;
  }
  for (const auto& known : kCommands) {
    if (command == known.name) return known.run(library, words);
  }
  velmora::PrintError(L"%ls", kUsage);
  return 1;
}
