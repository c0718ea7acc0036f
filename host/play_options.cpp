#include "host/command.h"
#include "host/console.h"
#include "host/play_command.h"

namespace velmora {

bool ParsePlayOptions(const Words& words, PlayOptions* options) {
  for (size_t i = 0; i < words.size(); ++i) {
    if (words[i] == L"--wav" && i + 1 < words.size()) {
      options->wav_path = words[++i];
    } else if (words[i].compare(0, 2, L"--") == 0) {
      PrintError(L"velmora: unknown option %ls\n", words[i].c_str());
      return false;
    } else {
      options->files.push_back(words[i]);
    }
  }
  return true;
}

int PlayCommand(const Library& library, const Words& words) {
  PlayOptions options;
  if (!ParsePlayOptions(words, &options)) return 1;
  if (options.files.empty()) {
    PrintError(L"usage: velmora play [--wav OUT] FILE...\n");
    return 1;
  }
  return Play(library, options);
}

}  // namespace velmora
