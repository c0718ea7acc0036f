// velmora player: the player with its windows.
#include <windows.h>

#include <shlobj.h>

#include "host/command.h"
#include "host/one_instance.h"
#include "host/player/settings.h"
#include "host/player/windows/player_app.h"
#include "host/system.h"
#include "host/wave_output.h"

namespace velmora {
namespace {

std::wstring MusicFolder() {
  wchar_t path[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_MYMUSIC, nullptr, SHGFP_TYPE_CURRENT, path);
  return path;
}

// Started by a click, a console program gets a console of its own where the system does not heed
// its manifest. The player does not need it.
void LeaveOwnConsole() {
  DWORD processes[2];
  if (GetConsoleProcessList(processes, 2) == 1) FreeConsole();
}

}  // namespace

int PlayerCommand(const Library& library, const Words& words) {
  LeaveOwnConsole();
  PlayerOptions options;
  options.session = SessionPath();
  Request request;
  auto word = words.begin();
  if (words.size() >= 2 && *word == L"--device") {
    request.device = FullPath(word[1]);
    word += 2;
  }
  // The catalog's device becomes the current folder.
  for (; word != words.end(); ++word) request.files.push_back(FullPath(*word));
  OneInstance instance(options.session);
  switch (instance.Ask(request)) {
    case OneInstance::Answer::kFirst:
      break;
    case OneInstance::Answer::kTaken:
      return 0;
    case OneInstance::Answer::kOtherDevice:
      PrintError(
          L"velmora: the player that runs has another folder for its catalog, which it keeps\n");
      return 0;
    case OneInstance::Answer::kNone:
      PrintError(L"velmora: the player that runs does not answer\n");
      return 1;
  }
  options.files = request.files;
  options.device = request.device.empty() ? MusicFolder() : request.device;
  PlayerApp app(library, options);
  if (!WaveOutput::HasDevice()) PrintError(L"velmora: no sound device: nothing will be heard\n");
  return app.Run();
}

}  // namespace velmora
