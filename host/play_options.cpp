#include "host/command.h"
#include "host/console.h"
#include "host/last_played.h"
#include "host/play_command.h"

namespace velmora {

bool ParsePlayOptions(const Words& words, PlayOptions* options) {
  for (size_t i = 0; i < words.size(); ++i) {
    if (words[i].compare(0, 2, L"--") != 0) {
      options->files.push_back(words[i]);
      continue;
    }
    const std::wstring& option = words[i];
    if (i + 1 == words.size()) {
      PrintError(L"velmora: no value for %ls\n", option.c_str());
      return false;
    }
    const std::wstring& value = words[++i];
    if (option == L"--wav") {
      options->wav_path = value;
    } else if (!options->sound.Take(option, value)) {
      PrintError(L"velmora: wrong option %ls %ls\n", option.c_str(), value.c_str());
      return false;
    }
  }
  return true;
}

int PlayCommand(const Library& library, const Words& words) {
  PlayOptions options;
  if (!ParsePlayOptions(words, &options)) return 1;
  if (options.files.empty()) {
    PrintError(L"usage: velmora play [OPTIONS] FILE...\n");
    return 1;
  }
  return Play(library, options);
}

int ResumeCommand(const Library& library, const Words& words) {
  PlayOptions options;
  if (!ParsePlayOptions(words, &options)) return 1;
  if (!options.files.empty()) {
    PrintError(L"usage: velmora resume [OPTIONS]\n");
    return 1;
  }
  std::wstring path;
  if (!TakeLastPlayed(library, &path, &options.start_s)) {
    PrintError(L"velmora: nothing was interrupted\n");
    return 1;
  }
  options.files.push_back(path);
  return Play(library, options);
}

}  // namespace velmora
