// The reference host: shows how a program loads the library and drives its features. It knows the
// library by include/kelvo/ alone.
#include <windows.h>

#include <shellapi.h>

#include "host/console.h"
#include "host/library.h"
#include "host/play_command.h"

namespace {

constexpr wchar_t kUsage[] =
    L"usage: velmora play [--wav OUT] FILE...   play files (to a WAV file with --wav)\n"
    L"       velmora version                    tell the library's version\n";

int PlayCommand(const velmora::Library& library, const std::vector<std::wstring>& words) {
  velmora::PlayOptions options;
  for (size_t i = 0; i < words.size(); ++i) {
    if (words[i] == L"--wav" && i + 1 < words.size()) {
      options.wav_path = words[++i];
    } else if (words[i].compare(0, 2, L"--") == 0) {
      velmora::PrintError(L"velmora: unknown option %ls\n%ls", words[i].c_str(), kUsage);
      return 1;
    } else {
      options.files.push_back(words[i]);
    }
  }
  if (options.files.empty()) {
    velmora::PrintError(L"velmora: no file to play\n%ls", kUsage);
    return 1;
  }
  return velmora::Play(library, options);
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
  if (command == L"version") return VersionCommand(library);
  velmora::PrintError(L"%ls", kUsage);
  return 1;
}
