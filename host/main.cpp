// The reference host: shows how a program loads the library and drives its features. It knows the
// library by include/kelvo/ alone.
#include <windows.h>

#include <shellapi.h>

#include "host/command.h"
#include "host/library.h"
#include "host/system.h"

namespace {

constexpr wchar_t kUsage[] =
    L"usage: velmora [FILE...]                  open the player, with files or folders to play\n"
    L"       velmora player [--device DIR] [FILE...]\n"
    L"                                          the same, with the catalog's folder\n"
    L"       velmora play [OPTIONS] FILE...     play files (.ogg, .wma), or all in folders\n"
    L"         --wav OUT          to a WAV file, OUT-2.wav and so on for the next ones\n"
    L"         --eq NAME          a preset of the folder presets\n"
    L"         --eq V,V,V,V,V,V,V,V,V,V\n"
    L"                            ten bands, low to high: 0 boosts, 14 is the middle, 27 cuts\n"
    L"         --preamp V         before the bands: 0 boosts, 13 leaves the level, 27, which is\n"
    L"                            used without this option, leaves room for the bands\n"
    L"         --bass 0..4        strength of the bass\n"
    L"       velmora info FILE...               what files say about themselves\n"
    L"       velmora version                    the library's version\n"
    L"       velmora check [OPTIONS] DLL        whether a library does what the contract says\n"
    L"         --ogg FILE         play this file, too\n"
    L"         --wma FILE         and this one\n"
    L"         --windows          show the library's windows, for moments\n";

int VersionCommand(const velmora::Library& library, const velmora::Words&) {
  const auto* version = library.Get<const wchar_t>(kelvo::kFeatureVersionText);
  if (!version) return 1;
  std::wstring text = version;
  for (wchar_t& c : text) {
    if (c == L'\r') c = L'\n';
  }
  velmora::Print(L"%ls\n", text.c_str());
  return 0;
}

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

constexpr struct {
  const wchar_t* name;
  velmora::Command run;
} kCommands[] = {
    {L"player", velmora::PlayerCommand},
    {L"play", velmora::PlayCommand},
    {L"info", velmora::InfoCommand},
    {L"version", VersionCommand},
};

}  // namespace

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  const velmora::Words all(arguments + 1, arguments + count);
  LocalFree(arguments);
  const std::wstring command = all.empty() ? L"" : all[0];
  if (command == L"--help" || command == L"help") {
    velmora::Print(L"%ls", kUsage);
    return 0;
  }
  if (command == L"check") {
    return velmora::CheckCommand(velmora::Words(all.begin() + 1, all.end()));
  }
  velmora::RegisterInstallation();
  const velmora::Library library;
  if (!library.loaded()) {
    velmora::PrintError(L"velmora: Kelvo.dll cannot be loaded\n");
    return 1;
  }
  for (const auto& known : kCommands) {
    if (command == known.name) {
      return known.run(library, velmora::Words(all.begin() + 1, all.end()));
    }
  }
  if (all.empty() || Exists(command)) return velmora::PlayerCommand(library, all);
  std::vector<std::wstring> names;
  for (const auto& known : kCommands) names.push_back(known.name);
  names.push_back(L"check");
  velmora::PrintError(L"velmora: there is no command or file %ls%ls (velmora --help)\n",
                      command.c_str(), velmora::DidYouMean(command, names).c_str());
  return 1;
}
