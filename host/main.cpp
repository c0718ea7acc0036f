// The reference host: shows how a program loads the library and drives its features. It knows the
// library by include/kelvo/ alone.
#include <windows.h>

#include <shellapi.h>

#include "host/console.h"
#include "host/info_command.h"
#include "host/library.h"
#include "host/play_command.h"

namespace {

constexpr wchar_t kUsage[] =
    L"usage: velmora play [OPTIONS] FILE...   play files (.ogg, .wma)\n"
    L"         --wav OUT          to a WAV file\n"
    L"         --eq V,V,V,V,V,V,V,V,V,V\n"
    L"                            ten bands, low to high: 0 boosts, 14 is the middle, 27 cuts\n"
    L"         --preamp V         before the bands: 0 boosts, 13 leaves the level, 27 cuts\n"
    L"         --bass 0..4        strength of the bass\n"
    L"       velmora info FILE...              tell what files say about themselves\n"
    L"       velmora version                   tell the library's version\n";

int Complain(const wchar_t* what, const wchar_t* which) {
  velmora::PrintError(L"velmora: %ls%ls\n%ls", what, which, kUsage);
  return 1;
}

int PlayCommand(const velmora::Library& library, const std::vector<std::wstring>& words) {
  velmora::PlayOptions options;
  for (size_t i = 0; i < words.size(); ++i) {
    if (words[i].compare(0, 2, L"--") != 0) {
      options.files.push_back(words[i]);
      continue;
    }
    const std::wstring option = words[i];
    if (++i == words.size()) return Complain(L"no value for ", option.c_str());
    if (option == L"--wav") {
      options.wav_path = words[i];
    } else if (!options.sound.Take(option, words[i])) {
      return Complain(L"wrong option ", (option + L" " + words[i]).c_str());
    }
  }
  if (options.files.empty()) return Complain(L"no file to play", L"");
  return velmora::Play(library, options);
}

int InfoCommand(const velmora::Library& library, const std::vector<std::wstring>& words) {
  if (words.empty()) return Complain(L"no file to look at", L"");
  return velmora::ShowInfo(library, words);
}

int VersionCommand(const velmora::Library& library) {
  std::wstring text = library.Get<const wchar_t>(kelvo::kFeatureVersionText);
  for (wchar_t& c : text) {
    if (c == L'\r') c = L'\n';
  }
  velmora::Print(L"%ls\n", text.c_str());
  return 0;
}

}  // namespace

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> words(arguments + (count > 1 ? 2 : 1), arguments + count);
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
  if (command == L"play") return PlayCommand(library, words);
  if (command == L"info") return InfoCommand(library, words);
  if (command == L"version") return VersionCommand(library);
  velmora::PrintError(L"%ls", kUsage);
  return 1;
}
